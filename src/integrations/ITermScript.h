#pragma once

#include <QString>

namespace tillery {

// The AppleScript that opens a new iTerm window in the folder. The path
// travels only as Base64 and is decoded by the shell, so quotes, backslashes
// and other letters can never be read as script or shell text.
QString iTermScript(const QString &repositoryPath);

} // namespace tillery
