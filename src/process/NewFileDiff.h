#pragma once

#include "process/Cancellation.h"

#include <QString>

namespace tillery {

// The diff shown for a file that is not tracked yet: a "new file" header and
// every line of the file as an addition. There is no hunk header and no line
// feed after the last line, so a file that ends with a line feed ends in a
// lone "+". A file that cannot be read or is not UTF-8 text shows one line,
// "+Binary or unreadable file", one larger than the show limit "+File too
// large to show", and a link the path it leads to (it is never followed).
// Throws CancellationFailure when the check reports cancellation.
QString newFileDiff(const QString &repositoryPath, const QString &relativePath, const CancellationCheck &isCancelled);

} // namespace tillery
