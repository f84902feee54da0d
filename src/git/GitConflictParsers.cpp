#include "git/GitConflictParsers.h"

#include "records/TextDecoding.h"

using namespace Qt::StringLiterals;

namespace tillery::git {

QList<ConflictEntry> parseConflictEntries(QByteArrayView output)
{
    QList<ConflictEntry> entries;
    for (const QByteArray &record : output.toByteArray().split('\0')) {
        const qsizetype tab = record.indexOf('\t');
        const QList<QByteArray> fields = record.first(std::max<qsizetype>(tab, 0)).split(' ');
        if (tab < 0 || fields.size() != 3)
            continue;
        bool isNumber = false;
        const int stage = fields[2].toInt(&isNumber);
        const std::optional<QString> path = decodeUtf8(record.sliced(tab + 1));
        if (!isNumber || stage < 1 || stage > 3 || !path || path->isEmpty())
            continue;
        entries.append({QString::fromLatin1(fields[0]), QString::fromLatin1(fields[1]), stage, *path});
    }
    return entries;
}

QByteArray conflictRestoringIndexInfo(const QList<ConflictEntry> &entries)
{
    QByteArray input;
    QString previousPath;
    for (const ConflictEntry &entry : entries) {
        const QByteArray path = entry.path.toUtf8();
        if (entry.path != previousPath)
            input += "0 " + QByteArray(entry.id.size(), '0') + '\t' + path + '\0';
        previousPath = entry.path;
        input += entry.mode.toLatin1() + ' ' + entry.id.toLatin1() + ' ' + QByteArray::number(entry.stage) + '\t' + path
                 + '\0';
    }
    return input;
}

QStringList parseNames(QByteArrayView output)
{
    QStringList names;
    for (const QByteArray &name : output.toByteArray().split('\0')) {
        if (const std::optional<QString> text = decodeUtf8(name); text && !text->isEmpty())
            names.append(*text);
    }
    return names;
}

MergeToolSettings parseMergeToolSettings(QByteArrayView output)
{
    MergeToolSettings settings;
    const QList<QByteArray> pieces = output.toByteArray().split('\0');
    // Each setting is two pieces: its scope, then its key and value.
    for (qsizetype index = 0; index + 1 < pieces.size(); index += 2) {
        const QByteArray &scope = pieces[index];
        const QString key = decodeUtf8OrEmpty(pieces[index + 1].split('\n').constFirst());
        if (key == u"merge.tool")
            settings.toolChosen = true;
        if (scope == "local" || scope == "worktree")
            settings.repositoryKeys.append(key);
    }
    return settings;
}

} // namespace tillery::git
