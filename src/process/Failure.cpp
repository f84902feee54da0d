#include "process/Failure.h"

#include <QCoreApplication>

namespace tillery {

Failure::Failure(QString description)
    : m_description(std::move(description))
    , m_utf8(m_description.toUtf8())
{
}

CancellationFailure::CancellationFailure()
    : Failure(QCoreApplication::translate("tillery::Failure", "The operation was cancelled."))
{
}

PlatformFailure PlatformFailure::fileWriteUnknown()
{
    return PlatformFailure(QCoreApplication::translate("tillery::Failure", "The file could not be saved."));
}

PlatformFailure PlatformFailure::folderNotCreated(const QString &folder)
{
    return PlatformFailure(
        QCoreApplication::translate("tillery::Failure", "The folder %1 could not be created.").arg(folder));
}

PlatformFailure PlatformFailure::temporaryFolderNotMade(const QString &reason)
{
    return PlatformFailure(
        QCoreApplication::translate("tillery::Failure", "A temporary folder could not be made: %1").arg(reason));
}

PlatformFailure PlatformFailure::unreadableFile(const QString &path, const QString &reason)
{
    return PlatformFailure(
        QCoreApplication::translate("tillery::Failure", "%1 could not be read: %2").arg(path, reason));
}

PlatformFailure PlatformFailure::launchFailed(const QString &executable, const QString &reason)
{
    return PlatformFailure(
        QCoreApplication::translate("tillery::Failure", "%1 could not be started: %2").arg(executable, reason));
}

PlatformFailure PlatformFailure::unreadableJson(const QString &reason, qsizetype offset)
{
    return PlatformFailure(QCoreApplication::translate(
                               "tillery::Failure", "The data could not be read because it is not in the correct format "
                                                   "(%1 at offset %2).")
                               .arg(reason, QString::number(offset)));
}

RepositoryFailure::RepositoryFailure(const QString &path)
    : Failure(QCoreApplication::translate("tillery::Failure", "%1 is not a Mercurial or Git repository.").arg(path))
    , m_path(path)
{
}

RepositoryFailure RepositoryFailure::invalidRepository(const QString &path)
{
    return RepositoryFailure(path);
}

} // namespace tillery
