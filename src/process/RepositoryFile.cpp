#include "process/RepositoryFile.h"

#include "records/TextDecoding.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

QString notWritten(const QString &path, const QString &reason)
{
    return QCoreApplication::translate("tillery::RepositoryFile", "%1 could not be written: %2").arg(path, reason);
}

} // namespace

std::variant<RepositoryTextFile, RepositoryFileProblem> readRepositoryTextFile(const QString &repositoryPath,
                                                                               const QString &relativePath)
{
    const QString path = repositoryPath + u'/' + relativePath;
    if (QFileInfo(path).isSymLink())
        return RepositoryFileProblem::isLink;

    QFile file(path);
    if (!file.exists())
        return RepositoryTextFile{path, QString()};
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return RepositoryFileProblem::unreadable;
    const std::optional<QString> text = decodeUtf8(file.readAll());
    if (!text)
        return RepositoryFileProblem::notUtf8;
    return RepositoryTextFile{path, *text};
}

std::optional<QString> replaceTextFile(const QString &path, const QString &text)
{
    return replaceFile(path, text.toUtf8());
}

std::optional<QString> replaceFile(const QString &path, const QByteArray &bytes)
{
    const QFileInfo existing(path);
    QSaveFile file(path);
    file.setDirectWriteFallback(false);
    bool written = file.open(QIODevice::WriteOnly);
    if (written && existing.exists())
        written = file.setPermissions(existing.permissions());
    written = written && file.write(bytes) == bytes.size() && file.commit();
    if (!written)
        return notWritten(path, file.errorString());
    return std::nullopt;
}

std::optional<QString> overwriteFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size() || !file.flush())
        return notWritten(path, file.errorString());
    return std::nullopt;
}

} // namespace tillery
