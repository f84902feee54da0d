#include "process/Failure.h"

using namespace Qt::StringLiterals;

namespace tillery {

Failure::Failure(QString description)
    : m_description(std::move(description))
    , m_utf8(m_description.toUtf8())
{
}

CancellationFailure::CancellationFailure()
    : Failure(u"The operation was cancelled."_s)
{
}

PlatformFailure PlatformFailure::fileWriteUnknown()
{
    return PlatformFailure(u"The file could not be saved."_s);
}

PlatformFailure PlatformFailure::launchFailed(const QString &executable, const QString &reason)
{
    return PlatformFailure(u"%1 could not be started: %2"_s.arg(executable, reason));
}

PlatformFailure PlatformFailure::unreadableJson(const QString &reason, qsizetype offset)
{
    return PlatformFailure(
        u"The data could not be read because it is not in the correct format (%1 at offset %2)."_s.arg(reason).arg(
            offset));
}

RepositoryFailure::RepositoryFailure(const QString &path)
    : Failure(path + u" is not a Mercurial or Git repository."_s)
    , m_path(path)
{
}

RepositoryFailure RepositoryFailure::invalidRepository(const QString &path)
{
    return RepositoryFailure(path);
}

} // namespace tillery
