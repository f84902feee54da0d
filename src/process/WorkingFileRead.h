#pragma once

#include "process/Cancellation.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace tillery {

// Beyond this a working file is not read for showing.
inline constexpr qint64 workingFileShowLimit = 50 * 1024 * 1024;

// What is at a working file's path, read the way a file a repository may
// have planted must be read: a link is never followed (its target is what it
// holds), only a regular file is opened (a device or a pipe could be read
// forever or block forever), and nothing outside the repository is reached.
struct WorkingFileContents {
    enum class Kind {
        regularFile,
        // `bytes` holds the link's target.
        symbolicLink,
        tooLarge,
        // A device, pipe, socket or folder.
        notARegularFile,
        // Missing, outside the repository, or refused by the system.
        unreadable,
    };
    Kind kind = Kind::unreadable;
    QByteArray bytes;
};

// The file's absolute path when the relative path a tool reported stays in
// the repository: not absolute, no "..", and the folder it is in inside the
// repository even when a folder on the way is a link. The file itself may be
// a link; it is not followed.
std::optional<QString> pathInsideRepository(const QString &repositoryPath, const QString &relativePath);

// Reads in pieces and throws CancellationFailure as soon as the check says so.
WorkingFileContents readWorkingFile(const QString &repositoryPath, const QString &relativePath, qint64 sizeLimit,
                                    const CancellationCheck &isCancelled);

} // namespace tillery
