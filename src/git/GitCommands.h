#pragma once

#include "process/ToolCommand.h"

#include <QString>

namespace tillery::git {

inline constexpr int historyLimit = 250;

// Snapshot queries.
ToolCommand statusCommand();
ToolCommand localBranchesCommand();
ToolCommand remoteBranchesCommand();
ToolCommand unpushedCountCommand(const QString &counterpart, const QString &branch);
ToolCommand currentBranchCommand();
ToolCommand verifyHeadCommand();
ToolCommand historyCommand();
ToolCommand branchTargetsCommand();
ToolCommand tagTargetsCommand();
ToolCommand commitCountCommand();
ToolCommand remotesCommand();
ToolCommand remoteUrlCommand(const QString &remote);
ToolCommand originHeadCommand();
ToolCommand upstreamCommand();

// Diffs and contents. Revisions and branch names must have been checked
// with refuseOptionLike() first; paths go through fileArgument().
ToolCommand workingDiffCommand(const QString &path);
ToolCommand stagedDiffCommand(const QString &path);
ToolCommand commitFilesCommand(const QString &hash);
ToolCommand commitDiffCommand(const QString &hash, const QString &path);
ToolCommand fileContentsCommand(const QString &revision, const QString &path);
ToolCommand compareDiffCommand(const QString &branch);

} // namespace tillery::git
