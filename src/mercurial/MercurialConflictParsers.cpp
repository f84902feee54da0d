#include "mercurial/MercurialConflictParsers.h"

#include "records/LocalizedOrder.h"
#include "records/TextDecoding.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringTokenizer>

using namespace Qt::StringLiterals;

namespace tillery::mercurial {

QStringList parseResolvedPaths(QByteArrayView output)
{
    QStringList paths;
    const QString text = decodeUtf8OrEmpty(output);
    for (const QStringView line : QStringTokenizer(text, u'\n', Qt::SkipEmptyParts)) {
        if (line.startsWith(u"R "_s) && line.size() > 2)
            paths.append(line.sliced(2).toString());
    }
    sortLocalized(paths, [](const QString &path) { return path; });
    return paths;
}

void addUnlistedUnresolved(QList<WorkingFile> &files, const QSet<QString> &unresolvedPaths)
{
    QSet<QString> unlisted = unresolvedPaths;
    for (const WorkingFile &file : files)
        unlisted.remove(file.path);
    if (unlisted.isEmpty())
        return;
    for (const QString &path : unlisted)
        files.append(WorkingFile{path, FileState::unresolved});
    sortLocalized(files, [](const WorkingFile &file) { return file.path; });
}

bool hasSecondParent(QByteArrayView output)
{
    const QString second = decodeUtf8OrEmpty(output).section(u'\n', 1, 1).trimmed();
    return !second.isEmpty() && second.count(u'0') != second.size();
}

MergeToolSettings parseMergeToolSettings(const QByteArray &output, const QString &repositoryRoot)
{
    MergeToolSettings settings;
    const QString root = QDir::cleanPath(repositoryRoot) + u'/';
    for (const QJsonValue &value : QJsonDocument::fromJson(output).array()) {
        const QJsonObject setting = value.toObject();
        const QString name = setting.value(u"name"_s).toString();
        if (name == u"ui.merge" && !setting.value(u"value"_s).toString().isEmpty())
            settings.toolChosen = true;
        // "file:line", or a word such as "--config" for settings of no file.
        const QString source = setting.value(u"source"_s).toString();
        const QString file = QDir::cleanPath(source.left(source.lastIndexOf(u':')));
        if (file.startsWith(root))
            settings.repositoryKeys.append(name);
    }
    return settings;
}

} // namespace tillery::mercurial
