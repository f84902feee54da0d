#include "process/WorkingFileRead.h"

#include "process/Failure.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

using Kind = WorkingFileContents::Kind;

constexpr qsizetype readPieceBytes = 1024 * 1024;

bool isInside(const QString &path, const QString &folder)
{
    return !folder.isEmpty() && (path == folder || path.startsWith(folder + u'/'));
}

} // namespace

std::optional<QString> pathInsideRepository(const QString &repositoryPath, const QString &relativePath)
{
    if (relativePath.isEmpty() || relativePath.startsWith(u'/') || relativePath.split(u'/').contains(u".."_s))
        return std::nullopt;
    // Joined by hand: QDir would take a name that begins with ":" for a resource path.
    const QString path = repositoryPath + u'/' + relativePath;
    const QString root = QFileInfo(repositoryPath).canonicalFilePath();
    const QString folder = QFileInfo(QFileInfo(path).absolutePath()).canonicalFilePath();
    if (!isInside(folder, root))
        return std::nullopt;
    return path;
}

WorkingFileContents readWorkingFile(const QString &repositoryPath, const QString &relativePath, qint64 sizeLimit,
                                    const CancellationCheck &isCancelled)
{
    const std::optional<QString> inside = pathInsideRepository(repositoryPath, relativePath);
    if (!inside)
        return {Kind::unreadable, {}};
    const QByteArray path = QFile::encodeName(*inside);

    struct stat status { };
    if (::lstat(path.constData(), &status) != 0)
        return {Kind::unreadable, {}};
    if (S_ISLNK(status.st_mode)) {
        QByteArray target(qMax<qsizetype>(status.st_size, 0) + 1, Qt::Uninitialized);
        const ssize_t length = ::readlink(path.constData(), target.data(), target.size());
        if (length < 0 || length >= target.size())
            return {Kind::unreadable, {}};
        target.truncate(length);
        return {Kind::symbolicLink, target};
    }
    if (!S_ISREG(status.st_mode))
        return {Kind::notARegularFile, {}};

    // Without blocking, and never through a link that appeared since.
    const int descriptor = ::open(path.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return {Kind::unreadable, {}};
    const auto closeDescriptor = qScopeGuard([descriptor] { ::close(descriptor); });
    if (::fstat(descriptor, &status) != 0)
        return {Kind::unreadable, {}};
    if (!S_ISREG(status.st_mode))
        return {Kind::notARegularFile, {}};
    if (status.st_size > sizeLimit)
        return {Kind::tooLarge, {}};

    QByteArray bytes;
    bytes.reserve(status.st_size);
    QByteArray piece(readPieceBytes, Qt::Uninitialized);
    for (;;) {
        if (isCancelled && isCancelled())
            throw CancellationFailure();
        const ssize_t count = ::read(descriptor, piece.data(), piece.size());
        if (count < 0) {
            if (errno == EINTR)
                continue;
            return {Kind::unreadable, {}};
        }
        if (count == 0)
            break;
        bytes.append(piece.constData(), count);
        // A file that grows while it is read is as good as too large.
        if (bytes.size() > sizeLimit)
            return {Kind::tooLarge, {}};
    }
    return {Kind::regularFile, bytes};
}

} // namespace tillery
