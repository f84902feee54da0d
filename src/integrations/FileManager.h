#pragma once

#include <QString>

namespace tillery {

// Shows the file or folder selected in the desktop's file manager: the
// Finder on macOS; on Linux the file manager that answers the freedesktop
// FileManager1 interface, else the folder that holds it, opened. It may wait
// up to 3 seconds for the file manager: call it from a worker thread. False
// when nothing could be shown.
bool revealInFileManager(const QString &path);

} // namespace tillery
