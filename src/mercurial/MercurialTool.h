#pragma once

#include "process/RepositoryDetection.h"
#include "process/ToolCommand.h"
#include "process/ToolRunner.h"
#include "records/OperationInProgress.h"
#include "records/WhitespaceChanges.h"

#include <QStringList>

namespace tillery {

// Mercurial as Tillery runs it: how a command runs, and the exact arguments
// of every command.
struct MercurialTool {
    static CommandOutput run(const ToolCommand &command, const std::optional<QString> &directory,
                             const RunControl &control = {})
    {
        return runMercurial(command, directory, control);
    }
    static QString root(const QString &path) { return mercurialRoot(path); }
    // The working copy's parent, and a changeset's first parent.
    static QString workingParent() { return QStringLiteral("."); }
    static QString firstParentOf(const QString &node) { return QStringLiteral("p1(") + node + u')'; }

    // The queries of a snapshot load, in the order they run.
    static constexpr int historyLimit = 250;

    static ToolCommand statusCommand();
    static ToolCommand unresolvedFilesCommand();
    static ToolCommand historyCommand();
    // A page of history: the revset's first `limit` changesets.
    // With copies: each changeset's files copied or renamed, each with its source.
    static ToolCommand historyPageCommand(const QString &revset, int limit, bool withCopies = false);
    static ToolCommand resolveChangesetCommand(const QString &name);
    static ToolCommand bookmarksCommand();
    static ToolCommand bookmarkDatesCommand();
    static ToolCommand currentBranchCommand();
    // The working copy's first parent's id, then on a line of its own its
    // second's (a merge's), each the null id when there is none.
    static ToolCommand workingParentCommand();
    static ToolCommand pathsCommand();

    // Every value travels as one "--option=value" argument or after "--", so
    // that (with hg's strict option parsing) no name, revision or message is
    // ever read as an option.

    // Diffs and contents. Nodes and revisions must have been checked with
    // refuseOptionLike() first; file arguments are made safe with fileArgument().
    static ToolCommand workingDiffCommand(const QString &path, WhitespaceChanges whitespace);
    // Writes the files as the working copy's parent has them into the folder.
    static ToolCommand parentFilesCommand(const QString &folder, const QStringList &paths);
    static ToolCommand changesetFilesCommand(const QString &node);
    static ToolCommand changesetDiffCommand(const QString &node, const QString &path, WhitespaceChanges whitespace);
    static ToolCommand fileContentsCommand(const QString &revision, const QString &path);
    static ToolCommand compareDiffCommand(const QString &target);
    // Every line of the file with its changeset's node, user and date, as JSON.
    static ToolCommand annotateCommand(const QString &revision, const QString &path);

    // Operations. Names must have been checked with refuseOptionLike() first;
    // file arguments are made safe here.
    // An amend with no files changes the message alone.
    static ToolCommand commitCommand(const QStringList &files, const QString &message, const QString &userName,
                                     bool amend);
    static ToolCommand addCommand(const QStringList &files);
    static ToolCommand revertCommand(const QStringList &files);
    static ToolCommand revertAllCommand();
    static ToolCommand shelveCommand(const QString &name);
    static ToolCommand switchCommand(const QString &target);
    static ToolCommand mergeCommand(const QString &target);
    static ToolCommand rebaseCommand(const QString &destination);
    static ToolCommand createBookmarkCommand(const QString &name);
    static ToolCommand renameBookmarkCommand(const QString &oldName, const QString &newName);
    static ToolCommand deleteBookmarkCommand(const QString &name);
    static ToolCommand fetchCommand();
    static ToolCommand pullCommand();
    static ToolCommand pushCommand();
    static ToolCommand cloneCommand(const QString &source, const QString &destination);
    static ToolCommand initCommand(const QString &path);
    static ToolCommand storedDefaultPathCommand();

    // Shelves. Names travel after "--" or as an option's value.
    static ToolCommand shelfNamesCommand();
    static ToolCommand shelfPatchCommand(const QString &name);
    // A restore that conflicts leaves conflict markers (never a merge
    // program) and the unshelve in progress.
    static ToolCommand unshelveCommand(const QString &name, bool keep);
    static ToolCommand deleteShelfCommand(const QString &name);
    // Records files that are gone from the working copy as removed.
    static ToolCommand forgetMissingCommand(const QStringList &files);
    // Untracked files among them go into the shelf too.
    static ToolCommand shelveFilesCommand(const QString &name, const QStringList &files);

    // Conflicts of the operation in progress; file arguments are made safe here.
    static ToolCommand resolveWithToolCommand(const QStringList &files, const QString &tool);
    static ToolCommand markResolvedCommand(const QStringList &files, bool resolved);
    // The merge-tool settings in force, with the file each comes from, as JSON.
    static ToolCommand mergeToolSettingsCommand();
    // Merges the file again with the configured tool.
    static ToolCommand mergeAgainCommand(const QString &file);
    // Goes on with, or abandons, the operation; a merge goes on by its commit.
    static ToolCommand continueCommand(OperationInProgress operation, const QString &message);
    static ToolCommand abortCommand(OperationInProgress operation);

    // Amending and undoing the last commit: the working copy's parent's id
    // and phase, on lines of their own; that parent taken back, its changes
    // returned to the working copy beside the working copy's own.
    static ToolCommand parentPhaseCommand();
    static ToolCommand undoLastCommitCommand();
};

} // namespace tillery
