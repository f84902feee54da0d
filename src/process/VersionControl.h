#pragma once

#include "process/Cancellation.h"
#include "process/Failure.h"
#include "process/HistoryPager.h"
#include "process/ToolRunner.h"
#include "records/Annotation.h"
#include "records/Changeset.h"
#include "records/ChosenChanges.h"
#include "records/CommitRequest.h"
#include "records/HistoryFilter.h"
#include "records/KindTraits.h"
#include "records/Repository.h"
#include "records/OperationInProgress.h"
#include "records/RepositorySnapshot.h"
#include "records/Shelf.h"
#include "records/WhitespaceChanges.h"
#include "records/WorkingFile.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace tillery {

// Everything Tillery asks of one kind of repository. The Mercurial and the
// Git backend each implement it once, so that the model never branches on
// the kind for tool work. Implementations are stateless and every call
// blocks (background threads only); failures are thrown. Names, revisions
// and addresses that would be read as an option are refused with
// RefusedInput before anything runs, and file names are passed literally.
class VersionControl {
public:
    virtual ~VersionControl() = default;

    // Made when asked, so that its words follow the language shown.
    virtual KindTraits traits() const = 0;
    RepositoryKind kind() const { return traits().kind; }
    // Why the tool would refuse this as a new bookmark or branch name, in a
    // sentence; nothing when it would take it.
    virtual std::optional<QString> bookmarkNameProblem(const QString &name) const = 0;

    // Changes, history, bookmarks or branches and remotes in one piece.
    virtual RepositorySnapshot loadSnapshot(const QString &repositoryPath) const = 0;
    // The history of all branches, newest first, from the start when a
    // filter narrows it, else after the `shownCount` changesets a snapshot
    // brought (the last of them `lastShown`). Git's ids are resolved with
    // the tool; every filter part reaches it only as the literal it is.
    virtual std::unique_ptr<HistoryPager> historyPager(const QString &repositoryPath, const HistoryFilter &filter,
                                                       const std::optional<Changeset> &lastShown,
                                                       qsizetype shownCount) const = 0;
    // The full id of the changeset a person named: a hash or its prefix, a
    // tag, bookmark or branch (Mercurial also a revision number); nothing
    // when the name names none.
    virtual std::optional<QString> resolveChangeset(const QString &repositoryPath, const QString &name) const = 0;

    // The diffs stop their child and throw CancellationFailure as soon as
    // the check says so. An untracked file gets a "new file" diff made
    // without the tool.
    virtual QString workingDiff(const QString &repositoryPath, const WorkingFile &file,
                                const CancellationCheck &isCancelled,
                                WhitespaceChanges whitespace = WhitespaceChanges::shown) const = 0;
    // The files a changeset touched (a rename under its new name), sorted.
    virtual QList<WorkingFile> changesetFiles(const QString &repositoryPath, const Changeset &changeset) const = 0;
    // Empty when there is no textual diff.
    virtual QString changesetDiff(const QString &repositoryPath, const Changeset &changeset, const QString &path,
                                  const CancellationCheck &isCancelled = {},
                                  WhitespaceChanges whitespace = WhitespaceChanges::shown) const = 0;
    // The bytes of a file as of a changeset; a file the changeset removed is
    // read from its first parent, where it still existed.
    virtual QByteArray fileContents(const QString &repositoryPath, const Changeset &changeset,
                                    const WorkingFile &file) const = 0;
    // The file as the working copy's parent has it.
    virtual QByteArray parentContents(const QString &repositoryPath, const QString &path) const = 0;
    // What the working copy's parent changed since the bookmark or branch;
    // empty when they agree.
    virtual QString compareDiff(const QString &repositoryPath, const QString &target) const = 0;
    // The lines of a file as of a changeset (nothing: the working copy's
    // parent), each with the changeset that last changed it, followed
    // through renames. A file the changeset does not have fails.
    virtual FileAnnotation annotateFile(const QString &repositoryPath, const std::optional<QString> &node,
                                        const QString &path, const CancellationCheck &isCancelled = {}) const = 0;

    // Commits exactly these files, adding untracked ones first; no file
    // commits nothing, except that an amend with none changes the message
    // alone. An amend is refused as rewriteRefusal() says.
    virtual void commit(const QString &repositoryPath, const QList<WorkingFile> &files,
                        const CommitRequest &request) const = 0;
    // Commits the whole files and only the chosen changes of the others; the
    // working copy keeps every byte it had. Refuses (committing nothing) a
    // file whose diff is no longer the one its changes were chosen in.
    virtual void commitChosen(const QString &repositoryPath, const QList<WorkingFile> &wholeFiles,
                              const QList<ChosenChanges> &chosen, const CommitRequest &request) const = 0;
    // Why the working copy's parent may not be amended or undone, in a
    // sentence: there is none yet, or others may have it already (Mercurial's
    // public phase; with Git, it is on the upstream branch). Nothing when it
    // may.
    virtual std::optional<QString> rewriteRefusal(const QString &repositoryPath) const = 0;
    // Takes back the working copy's parent: its changes return to the
    // working copy (Git: staged), which keeps its own changes too. Refused
    // as above.
    virtual void undoLastCommit(const QString &repositoryPath) const = 0;
    // Undoes the chosen changes in the working file, refused as above; the
    // file as it was is kept in a copy under the repository's metadata
    // folder, whose path it returns.
    virtual QString discardChosen(const QString &repositoryPath, const ChosenChanges &chosen) const = 0;
    // Restores tracked files to their committed state (newly added ones
    // become untracked again); never touches untracked ones.
    virtual void discard(const QString &repositoryPath, const QStringList &paths) const = 0;
    virtual void discardAll(const QString &repositoryPath) const = 0;
    // Shelves or stashes every change to tracked files; Git's stash takes
    // untracked files too.
    virtual void stash(const QString &repositoryPath, const QString &name) const = 0;

    // Shelves (Mercurial) and stash entries (Git), listed in the snapshot.
    // The files a shelf holds (untracked ones that went in as added), sorted,
    // and one file's diff in it.
    virtual QList<WorkingFile> shelfFiles(const QString &repositoryPath, const Shelf &shelf) const = 0;
    virtual QString shelfDiff(const QString &repositoryPath, const Shelf &shelf, const QString &path,
                              const CancellationCheck &isCancelled = {}) const = 0;
    // Puts a shelf's changes back into the working copy; without `keep` it
    // goes too, but only once they are back. A restore that conflicts leaves
    // the tool's own conflict state (see the snapshot's operation) and the
    // shelf in the list.
    virtual void restoreShelf(const QString &repositoryPath, const Shelf &shelf, bool keep) const = 0;
    virtual void deleteShelf(const QString &repositoryPath, const Shelf &shelf) const = 0;
    // Shelves or stashes only these files (untracked ones too) under the name.
    virtual void shelveFiles(const QString &repositoryPath, const QString &name,
                             const QList<WorkingFile> &files) const = 0;

    // Conflicts of the operation in progress. Each file takes one side
    // whole and is marked resolved.
    virtual void resolveWithSide(const QString &repositoryPath, const QStringList &paths, ConflictSide side) const = 0;
    virtual void markResolved(const QString &repositoryPath, const QStringList &paths, bool resolved) const = 0;
    // Runs the merge tool the person configured for the tool on the file
    // (never through a shell); returns when the tool is closed.
    virtual void openInMergeTool(const QString &repositoryPath, const QString &path) const = 0;
    // Goes on with the operation once nothing is unresolved (a merge is
    // committed with the message), or abandons it, putting the working copy
    // back as it was before.
    virtual void continueOperation(const QString &repositoryPath, OperationInProgress operation,
                                   const QString &message) const = 0;
    virtual void abortOperation(const QString &repositoryPath, OperationInProgress operation) const = 0;

    // Mercurial bookmarks or Git branches; creating a Git branch checks it out.
    virtual void createBookmark(const QString &repositoryPath, const QString &name) const = 0;
    virtual void renameBookmark(const QString &repositoryPath, const QString &oldName,
                                const QString &newName) const = 0;
    virtual void deleteBookmark(const QString &repositoryPath, const QString &name) const = 0;
    virtual void switchTo(const QString &repositoryPath, const QString &target) const = 0;
    virtual void merge(const QString &repositoryPath, const QString &target) const = 0;
    // Only where traits().hasSquashMerge: stages the target's changes as one
    // change, without committing.
    virtual void squashMerge(const QString &repositoryPath, const QString &target) const = 0;
    virtual void rebase(const QString &repositoryPath, const QString &destination) const = 0;

    // The commands that talk to a remote report progress and can be stopped
    // through the control. Fetching leaves the working copy alone; pulling
    // updates it.
    virtual void fetch(const QString &repositoryPath, const RunControl &control = {}) const = 0;
    virtual void pull(const QString &repositoryPath, const RunControl &control = {}) const = 0;
    // Also publishes a Git branch that is not on the remote yet; fails when
    // Mercurial has nothing to push.
    virtual void push(const QString &repositoryPath, const RunControl &control = {}) const = 0;
    virtual void clone(const QString &source, const QString &destination, const RunControl &control = {}) const = 0;
    // Makes the folder (and its parents) and a repository in it.
    virtual Repository createRepository(const QString &path) const = 0;
    // Sets traits().remoteName's address; an address that shows the password
    // as "***" keeps the password already stored.
    virtual void setRemoteAddress(const QString &repositoryPath, const QString &address) const = 0;

protected:
    void refuseRewriteWhereNeeded(const QString &repositoryPath) const
    {
        if (const std::optional<QString> reason = rewriteRefusal(repositoryPath))
            throw RefusedInput(*reason);
    }
};

} // namespace tillery
