#pragma once

#include "process/ToolCommand.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace tillery::git {

inline constexpr int historyLimit = 250;

// Snapshot queries.
ToolCommand statusCommand();
// Where the core.fsmonitor setting in force comes from ("local\t<program>").
ToolCommand filesystemMonitorScopeCommand();
// The command with the file-system monitor off: a repository's own
// configuration must not make every refresh run a program of its choosing.
ToolCommand withoutFilesystemMonitor(ToolCommand command);
ToolCommand localBranchesCommand();
ToolCommand remoteBranchesCommand();
ToolCommand unpushedCountCommand(const QString &counterpart, const QString &branch);
ToolCommand currentBranchCommand();
ToolCommand verifyHeadCommand();
ToolCommand historyCommand();
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

// Operations. Names must have been checked with refuseOptionLike() first;
// paths are made safe here. The commands that talk to a remote ask for
// "--progress", which git otherwise writes only to a terminal.
struct GitIdentity {
    QString name;
    QString email;
    friend bool operator==(const GitIdentity &, const GitIdentity &) = default;
};
ToolCommand addAllCommand(const QStringList &paths);
ToolCommand commitCommand(const QStringList &paths, const QString &message, const std::optional<GitIdentity> &identity);
ToolCommand trackedFilesCommand();
ToolCommand restoreCommand(const QStringList &paths);
ToolCommand forgetNewFilesCommand(const QStringList &paths);
ToolCommand stashCommand(const QString &message);
ToolCommand createBranchCommand(const QString &name);
ToolCommand renameBranchCommand(const QString &oldName, const QString &newName);
ToolCommand detachCommand();
ToolCommand deleteBranchCommand(const QString &name);
ToolCommand switchCommand(const QString &target);
ToolCommand mergeCommand(const QString &name);
ToolCommand squashMergeCommand(const QString &name);
ToolCommand rebaseCommand(const QString &name);
ToolCommand fetchCommand();
ToolCommand pullCommand();
ToolCommand pushCommand();
ToolCommand publishCommand(const QString &branch);
ToolCommand cloneCommand(const QString &source, const QString &destination);
ToolCommand initCommand(const QString &path);
ToolCommand originUrlCommand();
ToolCommand setOriginCommand(const QString &address);
ToolCommand addOriginCommand(const QString &address);

} // namespace tillery::git
