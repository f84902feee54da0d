#pragma once

#include "process/ToolCommand.h"

namespace tillery::mercurial {

// The queries of a snapshot load, in the order they run.
inline constexpr int historyLimit = 250;

ToolCommand statusCommand();
ToolCommand unresolvedFilesCommand();
ToolCommand historyCommand();
ToolCommand bookmarksCommand();
ToolCommand bookmarkDatesCommand();
ToolCommand currentBranchCommand();
ToolCommand pathsCommand();

} // namespace tillery::mercurial
