#include "process/WorkingFileJournal.h"

#include "process/Failure.h"
#include "process/RepositoryFile.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace tillery::workingFileJournal {

namespace {

QString journalFolder(const QString &metadataFolder)
{
    return metadataFolder + u"/tillery/set-aside"_s;
}

// Written last: while it is missing, no file has been written over yet.
QString listPath(const QString &folder)
{
    return folder + u"/files.json"_s;
}

QByteArray readAll(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw PlatformFailure::unreadableFile(path, file.errorString());
    return file.readAll();
}

void write(const QString &path, const QByteArray &bytes)
{
    if (const std::optional<QString> reason = replaceFile(path, bytes))
        throw PlatformFailure(*reason);
}

} // namespace

void save(const QString &repositoryPath, const QString &metadataFolder, const QStringList &paths)
{
    const QString folder = journalFolder(metadataFolder);
    QDir(folder).removeRecursively();
    if (!QDir().mkpath(folder))
        throw PlatformFailure::folderNotCreated(folder);
    // One file of copies and one list: two waits for the disk, whatever the count.
    QByteArray copies;
    QJsonArray list;
    for (const QString &path : paths) {
        const QByteArray bytes = readAll(QDir(repositoryPath).filePath(path));
        copies += bytes;
        list.append(QJsonObject{{u"path"_s, path}, {u"size"_s, bytes.size()}});
    }
    write(folder + u"/copies"_s, copies);
    write(listPath(folder), QJsonDocument(list).toJson(QJsonDocument::Compact));
}

QStringList restore(const QString &repositoryPath, const QString &metadataFolder)
{
    const QString folder = journalFolder(metadataFolder);
    if (!QFile::exists(folder))
        return {};
    QStringList restored;
    if (QFile::exists(listPath(folder))) {
        const QByteArray copies = readAll(folder + u"/copies"_s);
        qsizetype start = 0;
        for (const QJsonValue &entry : QJsonDocument::fromJson(readAll(listPath(folder))).array()) {
            const QString path = entry[u"path"_s].toString();
            const qsizetype size = entry[u"size"_s].toInteger();
            if (const std::optional<QString> reason =
                    overwriteFile(QDir(repositoryPath).filePath(path), copies.sliced(start, size)))
                throw PlatformFailure(*reason);
            start += size;
            restored.append(path);
        }
    }
    QDir(folder).removeRecursively();
    return restored;
}

} // namespace tillery::workingFileJournal
