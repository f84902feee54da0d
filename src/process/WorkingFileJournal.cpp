#include "process/WorkingFileJournal.h"

#include "process/Failure.h"
#include "process/RepositoryFile.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

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
        throw PlatformFailure(u"%1 could not be read: %2"_s.arg(path, file.errorString()));
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
        throw PlatformFailure(u"The folder %1 could not be created."_s.arg(folder));
    for (qsizetype index = 0; index < paths.size(); ++index)
        write(folder + u'/' + QString::number(index), readAll(QDir(repositoryPath).filePath(paths[index])));
    write(listPath(folder), QJsonDocument(QJsonArray::fromStringList(paths)).toJson(QJsonDocument::Compact));
}

QStringList restore(const QString &repositoryPath, const QString &metadataFolder)
{
    const QString folder = journalFolder(metadataFolder);
    if (!QFile::exists(folder))
        return {};
    QStringList restored;
    if (QFile::exists(listPath(folder))) {
        const QJsonArray paths = QJsonDocument::fromJson(readAll(listPath(folder))).array();
        for (qsizetype index = 0; index < paths.size(); ++index) {
            const QString path = paths[index].toString();
            write(QDir(repositoryPath).filePath(path), readAll(folder + u'/' + QString::number(index)));
            restored.append(path);
        }
    }
    QDir(folder).removeRecursively();
    return restored;
}

} // namespace tillery::workingFileJournal
