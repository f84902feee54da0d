#include "mercurial/MercurialParsers.h"

#include "process/Failure.h"
#include "process/ToolFailure.h"
#include "records/LocalizedOrder.h"
#include "records/TextDecoding.h"
#include "records/TextSplitting.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringTokenizer>

#include <cmath>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

QDateTime dateFromSeconds(double seconds)
{
    return QDateTime::fromMSecsSinceEpoch(std::llround(seconds * 1000.0), Qt::UTC);
}

QStringList stringsOf(const QJsonValue &value)
{
    QStringList strings;
    if (!value.isArray())
        return strings;
    const QJsonArray array = value.toArray();
    for (const QJsonValue &element : array) {
        if (!element.isString())
            return {};
        strings.append(element.toString());
    }
    return strings;
}

QDateTime dateOf(const QJsonValue &value)
{
    const QJsonArray parts = value.toArray();
    if (parts.isEmpty())
        return dateFromSeconds(0);
    for (const QJsonValue &part : parts) {
        if (!part.isDouble())
            return dateFromSeconds(0);
    }
    return dateFromSeconds(parts.first().toDouble());
}

qint64 integerOf(const QJsonValue &value)
{
    return value.isDouble() ? static_cast<qint64>(value.toDouble()) : 0;
}

QString stringOr(const QJsonValue &value, const QString &fallback)
{
    return value.isString() ? value.toString() : fallback;
}

// The tool's JSON lists: a top-level array whose elements are all objects.
// `shapeError` says what else it was, marked with QT_TRANSLATE_NOOP.
QList<QJsonObject> objectsOf(const QByteArray &output, const char *shapeError)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(output, &error);
    if (error.error != QJsonParseError::NoError)
        throw PlatformFailure::unreadableJson(error.errorString(), error.offset);
    if (!document.isArray())
        throw MercurialFailure::malformedOutput(QCoreApplication::translate("tillery::MercurialParsers", shapeError));

    QList<QJsonObject> objects;
    const QJsonArray array = document.array();
    objects.reserve(array.size());
    for (const QJsonValue &element : array) {
        if (!element.isObject())
            throw MercurialFailure::malformedOutput(
                QCoreApplication::translate("tillery::MercurialParsers", shapeError));
        objects.append(element.toObject());
    }
    return objects;
}

} // namespace

QList<WorkingFile> parseMercurialStatus(QByteArrayView output)
{
    QList<WorkingFile> files;
    qsizetype start = 0;
    while (start < output.size()) {
        qsizetype end = output.indexOf('\0', start);
        if (end < 0)
            end = output.size();
        const QByteArrayView record = output.sliced(start, end - start);
        start = end + 1;
        if (record.size() < 3)
            continue;
        const QString text = decodeUtf8OrEmpty(record);
        if (text.isEmpty())
            continue;
        const std::optional<FileState> state = fileStateFromLetter(QStringView(text).first(1));
        const QString path = text.sliced(2);
        if (!state || path.isEmpty())
            continue;
        files.append(WorkingFile{path, *state});
    }
    sortLocalized(files, [](const WorkingFile &file) { return file.path; });
    return files;
}

namespace mercurial {

QSet<QString> parseUnresolvedPaths(QByteArrayView output)
{
    QSet<QString> paths;
    const QString text = decodeUtf8OrEmpty(output);
    for (const QStringView line : QStringTokenizer(text, u'\n', Qt::SkipEmptyParts)) {
        if (line.front() == u'U')
            paths.insert(line.size() > 2 ? line.sliced(2).toString() : QString());
    }
    return paths;
}

void markUnresolved(QList<WorkingFile> &files, const QSet<QString> &unresolvedPaths)
{
    if (unresolvedPaths.isEmpty())
        return;
    for (WorkingFile &file : files) {
        if (unresolvedPaths.contains(file.path))
            file.state = FileState::unresolved;
    }
}

QString summaryOf(const QString &description)
{
    for (const QStringView line : QStringTokenizer(description, u'\n', Qt::SkipEmptyParts))
        return line.toString();
    return QString();
}

QList<Changeset> parseHistory(const QByteArray &output)
{
    QList<Changeset> history;
    if (output.isEmpty())
        return history;
    const QList<QJsonObject> entries =
        objectsOf(output, QT_TRANSLATE_NOOP("tillery::MercurialParsers", "history is not a JSON array"));
    history.reserve(entries.size());
    const QString unknownAuthor = QCoreApplication::translate("tillery::MercurialParsers", "Unknown", "author");
    for (const QJsonObject &entry : entries) {
        const QJsonValue node = entry.value(u"node"_s);
        if (!node.isString())
            continue;
        Changeset changeset;
        changeset.node = node.toString();
        changeset.description = stringOr(entry.value(u"desc"_s), QString());
        changeset.summary = summaryOf(changeset.description);
        changeset.date = dateOf(entry.value(u"date"_s));
        changeset.revision = integerOf(entry.value(u"rev"_s));
        changeset.author = stringOr(entry.value(u"user"_s), unknownAuthor);
        changeset.branch = stringOr(entry.value(u"branch"_s), u"default"_s);
        changeset.bookmarks = stringsOf(entry.value(u"bookmarks"_s));
        changeset.tags = stringsOf(entry.value(u"tags"_s));
        changeset.files = stringsOf(entry.value(u"files"_s));
        // A root's parent is the null changeset, all zeros.
        changeset.parents = stringsOf(entry.value(u"parents"_s));
        changeset.parents.removeIf([](const QString &parent) { return parent.count(u'0') == parent.size(); });
        history.append(std::move(changeset));
    }
    return history;
}

QHash<QString, QDateTime> parseBookmarkDates(QByteArrayView output)
{
    QHash<QString, QDateTime> dates;
    const QString text = decodeUtf8OrEmpty(output);
    for (const QStringView line : QStringTokenizer(text, u'\n', Qt::SkipEmptyParts)) {
        const qsizetype tab = line.indexOf(u'\t');
        if (tab <= 0)
            continue;
        const QList<QStringView> dateParts = line.sliced(tab + 1).split(u' ', Qt::SkipEmptyParts);
        if (dateParts.isEmpty())
            continue;
        bool parsed = false;
        const double seconds = dateParts.first().toDouble(&parsed);
        if (!parsed || !std::isfinite(seconds))
            continue;
        dates.insert(line.first(tab).toString(), dateFromSeconds(seconds));
    }
    return dates;
}

QList<Bookmark> parseBookmarks(const QByteArray &output, const QHash<QString, QDateTime> &dates)
{
    QList<Bookmark> bookmarks;
    if (output.isEmpty())
        return bookmarks;
    const QList<QJsonObject> entries =
        objectsOf(output, QT_TRANSLATE_NOOP("tillery::MercurialParsers", "bookmarks are not a JSON array"));
    for (const QJsonObject &entry : entries) {
        const QJsonValue name = entry.value(u"bookmark"_s);
        const QJsonValue node = entry.value(u"node"_s);
        if (!name.isString() || !node.isString())
            continue;
        Bookmark bookmark;
        bookmark.name = name.toString();
        bookmark.node = node.toString();
        bookmark.revision = integerOf(entry.value(u"rev"_s));
        bookmark.active = entry.value(u"active"_s).toBool(false);
        if (const auto date = dates.constFind(bookmark.node); date != dates.cend())
            bookmark.date = *date;
        bookmarks.append(std::move(bookmark));
    }
    return bookmarks;
}

FileAnnotation parseAnnotation(const QByteArray &output, const QString &path)
{
    // Mercurial prints a line that is not UTF-8 with stand-ins for its bytes
    // that are not UTF-8 either; nothing else it prints can be.
    if (!decodeUtf8(output))
        return FileAnnotation{FileAnnotation::Content::notUtf8, {}};
    for (const QJsonObject &entry :
         objectsOf(output, QT_TRANSLATE_NOOP("tillery::MercurialParsers", "annotations are not a JSON array"))) {
        if (entry.value(u"path"_s).toString() != path)
            continue;
        if (!entry.contains(u"lines"_s))
            return FileAnnotation{FileAnnotation::Content::binary, {}};
        FileAnnotation annotation;
        const QJsonArray lines = entry.value(u"lines"_s).toArray();
        annotation.lines.reserve(lines.size());
        AnnotatedLine previous;
        for (const QJsonValue &value : lines) {
            const QJsonObject line = value.toObject();
            AnnotatedLine annotated{line.value(u"node"_s).toString(), line.value(u"user"_s).toString(),
                                    static_cast<qint64>(line.value(u"date"_s).toArray().at(0).toDouble()),
                                    withoutLineEnding(line.value(u"line"_s).toString()).toString()};
            // Neighbouring lines mostly come from one changeset: they share its texts.
            if (annotated.node == previous.node)
                annotated.node = previous.node;
            if (annotated.author == previous.author)
                annotated.author = previous.author;
            previous = annotated;
            annotation.lines.append(std::move(annotated));
        }
        return annotation;
    }
    throw MercurialFailure::malformedOutput(
        QCoreApplication::translate("tillery::MercurialParsers", "no annotation of %1").arg(path));
}

QList<QHash<QString, QString>> parseFileCopies(const QByteArray &output)
{
    QList<QHash<QString, QString>> copies;
    for (const QJsonValue entry : QJsonDocument::fromJson(output).array()) {
        QHash<QString, QString> sources;
        const QJsonObject files = entry.toObject().value(u"file_copies"_s).toObject();
        for (auto file = files.begin(); file != files.end(); ++file)
            sources.insert(file.key(), file.value().toString());
        copies.append(sources);
    }
    return copies;
}

QString parseCurrentBranch(QByteArrayView output)
{
    return decodeUtf8OrEmpty(output).trimmed();
}

QString parseWorkingParent(QByteArrayView output)
{
    const QString node = decodeUtf8OrEmpty(output).section(u'\n', 0, 0).trimmed();
    return node.count(u'0') == node.size() ? QString() : node;
}

QMap<QString, QString> parsePaths(QByteArrayView output)
{
    QMap<QString, QString> paths;
    const QString text = decodeUtf8OrEmpty(output);
    for (const QStringView line : QStringTokenizer(text, u'\n', Qt::SkipEmptyParts)) {
        // "name =" with nothing after it names no address.
        const qsizetype equals = line.indexOf(u'=');
        if (equals <= 0 || equals == line.size() - 1)
            continue;
        paths.insert(trimmedSpacesAndTabs(line.first(equals)).toString(),
                     trimmedSpacesAndTabs(line.sliced(equals + 1)).toString());
    }
    return paths;
}

} // namespace mercurial
} // namespace tillery
