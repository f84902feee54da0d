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

// Diffs and contents. File arguments are made safe with fileArgument().
ToolCommand workingDiffCommand(const QString &path);
ToolCommand changesetFilesCommand(const QString &node);
ToolCommand changesetDiffCommand(const QString &node, const QString &path);
ToolCommand fileContentsCommand(const QString &revision, const QString &path);
ToolCommand compareDiffCommand(const QString &target);

} // namespace tillery::mercurial
