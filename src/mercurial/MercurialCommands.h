#pragma once

#include "process/ToolCommand.h"

#include <QStringList>

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

// Every value travels as one "--option=value" argument or after "--", so
// that (with hg's strict option parsing) no name, revision or message is
// ever read as an option.

// Diffs and contents. Nodes and revisions must have been checked with
// refuseOptionLike() first; file arguments are made safe with fileArgument().
ToolCommand workingDiffCommand(const QString &path);
ToolCommand changesetFilesCommand(const QString &node);
ToolCommand changesetDiffCommand(const QString &node, const QString &path);
ToolCommand fileContentsCommand(const QString &revision, const QString &path);
ToolCommand compareDiffCommand(const QString &target);

// Operations. Names must have been checked with refuseOptionLike() first;
// file arguments are made safe here.
ToolCommand commitCommand(const QStringList &files, const QString &message, const QString &userName);
ToolCommand addCommand(const QStringList &files);
ToolCommand revertCommand(const QStringList &files);
ToolCommand revertAllCommand();
ToolCommand shelveCommand(const QString &name);
ToolCommand updateCommand(const QString &target);
ToolCommand mergeCommand(const QString &target);
ToolCommand rebaseCommand(const QString &destination);
ToolCommand createBookmarkCommand(const QString &name);
ToolCommand renameBookmarkCommand(const QString &oldName, const QString &newName);
ToolCommand deleteBookmarkCommand(const QString &name);
ToolCommand pullCommand();
ToolCommand pullAndUpdateCommand();
ToolCommand pushCommand();
ToolCommand cloneCommand(const QString &source, const QString &destination);
ToolCommand initCommand(const QString &path);
ToolCommand storedDefaultPathCommand();

} // namespace tillery::mercurial
