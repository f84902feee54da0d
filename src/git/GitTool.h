#pragma once

#include "process/RepositoryDetection.h"
#include "process/ToolCommand.h"
#include "process/ToolRunner.h"
#include "records/HistoryFilter.h"
#include "records/OperationInProgress.h"
#include "records/WhitespaceChanges.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace tillery {

namespace git {

// Who a commit names as its author.
struct GitIdentity {
    QString name;
    QString email;
    friend bool operator==(const GitIdentity &, const GitIdentity &) = default;
};

} // namespace git

// Git as Tillery runs it: how a command runs, and the exact arguments of
// every command.
struct GitTool {
    static CommandOutput run(const ToolCommand &command, const std::optional<QString> &directory,
                             const RunControl &control = {})
    {
        return runGit(command, directory, control);
    }
    // The standard output of a run that must succeed.
    static QByteArray output(const ToolCommand &command, const QString &directory, const RunControl &control = {})
    {
        return runGit(command, directory, control).standardOutput;
    }
    static QString root(const QString &path) { return gitRoot(path); }
    // The working copy's parent, and a commit's first parent.
    static QString workingParent() { return QStringLiteral("HEAD"); }
    static QString firstParentOf(const QString &node) { return node + u'^'; }

    static constexpr int historyLimit = 250;

    // Snapshot queries.
    static ToolCommand statusCommand();
    // Where the core.fsmonitor setting in force comes from ("local\t<program>").
    static ToolCommand filesystemMonitorScopeCommand();
    // The command with the file-system monitor off: a repository's own
    // configuration must not make every refresh run a program of its choosing.
    static ToolCommand withoutFilesystemMonitor(ToolCommand command);
    static ToolCommand localBranchesCommand();
    static ToolCommand remoteBranchesCommand();
    static ToolCommand unpushedCountCommand(const QString &counterpart, const QString &branch);
    static ToolCommand currentBranchCommand();
    static ToolCommand verifyHeadCommand();
    static ToolCommand historyCommand();
    static ToolCommand tagTargetsCommand();
    // The whole history in the order and form of historyCommand(), narrowed
    // by the filter (or to one resolved commit), for reading page by page.
    static ToolCommand historyStreamCommand(const HistoryFilter &filter, const std::optional<QString> &commit);
    // The commit a hexadecimal prefix names, if exactly one.
    static ToolCommand resolveChangesetCommand(const QString &name);
    static ToolCommand commitCountCommand();
    // Where every ref points, and the file listing a shallow clone's cut-off
    // commits: what the history and the commit count depend on.
    static ToolCommand allRefsCommand();
    static ToolCommand shallowFileCommand();
    static ToolCommand remotesCommand();
    static ToolCommand remoteUrlCommand(const QString &remote);
    static ToolCommand originHeadCommand();
    static ToolCommand upstreamCommand();

    // Diffs and contents. Revisions and branch names must have been checked
    // with refuseOptionLike() first; paths go through fileArgument().
    static ToolCommand workingDiffCommand(const QString &path, WhitespaceChanges whitespace);
    static ToolCommand stagedDiffCommand(const QString &path, WhitespaceChanges whitespace);
    static ToolCommand changesetFilesCommand(const QString &hash);
    static ToolCommand changesetDiffCommand(const QString &hash, const QString &path, WhitespaceChanges whitespace);
    static ToolCommand fileContentsCommand(const QString &revision, const QString &path);
    static ToolCommand compareDiffCommand(const QString &branch);
    // Every line of the file with its commit, in the porcelain format. Blame
    // reads the path literally, never as a pathspec; filters a repository
    // configures ("textconv") are not run.
    static ToolCommand annotateCommand(const QString &revision, const QString &path);

    // Operations. Names must have been checked with refuseOptionLike() first;
    // paths are made safe here. The commands that talk to a remote ask for
    // "--progress", which git otherwise writes only to a terminal.
    // Stages the working files as they are: new, changed or removed.
    static ToolCommand stageFilesCommand(const QStringList &paths);
    // An amend with no paths changes the message alone, whatever is staged.
    static ToolCommand commitCommand(const QStringList &paths, const QString &message,
                                     const std::optional<git::GitIdentity> &identity, bool amend);
    static ToolCommand trackedFilesCommand();
    // Committing chosen changes: through an index of Tillery's own, filled
    // from HEAD (or empty before the first commit), with the chosen versions
    // stored as blobs.
    static ToolCommand readHeadTreeCommand(bool hasHead);
    // The files' entries in HEAD (see parseTreeBlobs).
    static ToolCommand headEntriesCommand(const QStringList &paths);
    // Applies the patch on its standard input to the index only.
    static ToolCommand applyToIndexCommand();
    static ToolCommand commitIndexCommand(const QString &message, const std::optional<git::GitIdentity> &identity,
                                          bool amend);
    // The files the index holds otherwise than HEAD, NUL-separated; exits
    // 128 when there is no HEAD yet.
    static ToolCommand stagedNamesCommand();
    static ToolCommand gitFolderCommand();
    static ToolCommand restoreCommand(const QStringList &paths);
    static ToolCommand forgetNewFilesCommand(const QStringList &paths);
    static ToolCommand stashCommand(const QString &message);
    static ToolCommand createBookmarkCommand(const QString &name);
    static ToolCommand renameBookmarkCommand(const QString &oldName, const QString &newName);
    static ToolCommand detachCommand();
    static ToolCommand deleteBookmarkCommand(const QString &name);
    static ToolCommand switchCommand(const QString &target);
    static ToolCommand mergeCommand(const QString &name);
    static ToolCommand squashMergeCommand(const QString &name);
    static ToolCommand rebaseCommand(const QString &name);
    static ToolCommand fetchCommand();
    static ToolCommand pullCommand();
    static ToolCommand pushCommand();
    static ToolCommand publishCommand(const QString &branch);
    static ToolCommand cloneCommand(const QString &source, const QString &destination);
    static ToolCommand initCommand(const QString &path);
    static ToolCommand originUrlCommand();
    static ToolCommand setOriginCommand(const QString &address);
    static ToolCommand addOriginCommand(const QString &address);

    // Shelves: stash entries. Ids must be full commit ids; paths are made
    // safe here.
    static ToolCommand stashListCommand();
    // Only the ids, one per line: the line of an entry is its n in "stash@{n}".
    static ToolCommand stashIdsCommand();
    // The files of an entry's own changes, and of the untracked files it
    // holds (its third parent; exits 128 when it has none).
    static ToolCommand stashFilesCommand(const QString &id);
    static ToolCommand stashUntrackedFilesCommand(const QString &id);
    static ToolCommand stashDiffCommand(const QString &id, const QString &path);
    static ToolCommand stashUntrackedDiffCommand(const QString &id, const QString &path);
    // Exits 1 when the changes do not apply or conflict.
    static ToolCommand stashApplyCommand(const QString &id);
    // `reference` is the entry's "stash@{n}" at the time.
    static ToolCommand stashDropCommand(const QString &reference);
    static ToolCommand unmergedFilesCommand();
    // Puts HEAD's entries of the files back into the index.
    static ToolCommand unstageCommand(const QStringList &paths);
    static ToolCommand stashFilesPushCommand(const QString &message, const QStringList &paths);

    // Conflicts of the operation in progress. Paths are made safe here.
    // Each file's conflicting entries (stages 1 to 3), and those kept for
    // files whose conflicts were resolved, as "ls-files -z" prints them.
    static ToolCommand unmergedEntriesCommand(const QStringList &paths);
    static ToolCommand resolveUndoCommand(const QStringList &paths = {});
    // Writes index entries from its standard input ("--index-info", -z).
    static ToolCommand indexInfoCommand();
    static ToolCommand checkoutSideCommand(const QStringList &paths, bool ours);
    // Takes the files out of the index and the working copy.
    static ToolCommand removeFilesCommand(const QStringList &paths);
    // Where each merge-tool setting in force comes from ("scope NUL key LF value NUL").
    static ToolCommand mergeToolSettingsCommand();
    static ToolCommand mergeToolCommand(const QString &path);
    // Goes on with, or abandons, a merge, a rebase or a cherry-pick; a merge
    // goes on by its commit, with the message or else its own prepared one.
    static ToolCommand continueCommand(OperationInProgress operation, const QString &message);
    static ToolCommand abortCommand(OperationInProgress operation);
    // Stash restores: the entries' commit ids, newest first; the paths a
    // commit changes from its first parent, and that change as a patch; a
    // commit's third parent, where a stash keeps its untracked files.
    static ToolCommand stashCommitIdsCommand();
    static ToolCommand changedPathsCommand(const QString &commit);
    static ToolCommand changesPatchCommand(const QString &commit, const QStringList &paths);
    static ToolCommand untrackedPartCommand(const QString &stash);
    // Takes a patch from its standard input off the index and the working files.
    static ToolCommand reverseApplyCommand(bool check);
    // The entries of a tree, or of those paths in it (read as they are).
    static ToolCommand treeEntriesCommand(const QString &tree, const QStringList &paths = {});

    // Amending and undoing the last commit: HEAD and its first parent's
    // ids (exits 128 before the first commit); whether HEAD is on the
    // upstream branch (exits 0 when it is, 1 when not, 128 without one), and
    // that branch's name; HEAD moved back to its first parent, the index
    // and the working files kept.
    static ToolCommand headAndParentCommand();
    static ToolCommand headOnUpstreamCommand();
    static ToolCommand upstreamNameCommand();
    static ToolCommand undoLastCommitCommand();
};

} // namespace tillery
