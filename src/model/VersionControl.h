#pragma once

#include "process/Cancellation.h"
#include "process/ToolRunner.h"
#include "records/Changeset.h"
#include "records/Repository.h"
#include "records/RepositoryKind.h"
#include "records/RepositorySnapshot.h"
#include "records/WorkingFile.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace tillery {

// The words that differ between the kinds: "changeset" or "commit",
// "bookmark" or "branch".
struct VersionControlWording {
    QString toolName;
    QString changeset;
    QString bookmark;
};

// One way to reach either backend, so that the model never branches on the
// kind for tool work. Implementations are stateless; every call blocks; the
// diffs stop as soon as their check reports cancellation.
class VersionControl {
public:
    virtual ~VersionControl() = default;

    virtual RepositoryKind kind() const = 0;
    virtual const VersionControlWording &wording() const = 0;

    virtual RepositorySnapshot loadSnapshot(const QString &repositoryPath) const = 0;
    virtual QString workingDiff(const QString &repositoryPath, const WorkingFile &file,
                                const CancellationCheck &isCancelled) const = 0;
    virtual QList<WorkingFile> changesetFiles(const QString &repositoryPath, const Changeset &changeset) const = 0;
    virtual QString changesetDiff(const QString &repositoryPath, const Changeset &changeset, const QString &path,
                                  const CancellationCheck &isCancelled = {}) const = 0;
    virtual QByteArray fileContents(const QString &repositoryPath, const Changeset &changeset,
                                    const WorkingFile &file) const = 0;
    // The file as the working copy's parent has it.
    virtual QByteArray parentContents(const QString &repositoryPath, const QString &path) const = 0;
    // The diff between a bookmark or branch and the working copy's base.
    virtual QString compareDiff(const QString &repositoryPath, const QString &target) const = 0;

    // Commits exactly these files, adding untracked ones first. A blank user
    // name leaves the tool's own configuration in charge.
    virtual void commit(const QString &repositoryPath, const QList<WorkingFile> &files, const QString &summary,
                        const QString &description, const QString &userName) const = 0;
    // Restores tracked files to their committed state; never touches untracked ones.
    virtual void discard(const QString &repositoryPath, const QStringList &paths) const = 0;
    virtual void discardAll(const QString &repositoryPath) const = 0;
    // Shelves or stashes every change, untracked files included.
    virtual void stash(const QString &repositoryPath, const QString &name) const = 0;

    // Mercurial bookmarks or Git branches; creating a Git branch checks it out.
    virtual void createBookmark(const QString &repositoryPath, const QString &name) const = 0;
    virtual void renameBookmark(const QString &repositoryPath, const QString &oldName,
                                const QString &newName) const = 0;
    virtual void deleteBookmark(const QString &repositoryPath, const QString &name) const = 0;
    virtual void switchTo(const QString &repositoryPath, const QString &target) const = 0;
    virtual void merge(const QString &repositoryPath, const QString &target) const = 0;
    virtual void squashMerge(const QString &repositoryPath, const QString &target) const = 0;
    virtual void rebase(const QString &repositoryPath, const QString &destination) const = 0;

    // The commands that talk to a remote report progress and can be stopped
    // through the control. Fetching leaves the working copy alone.
    virtual void fetch(const QString &repositoryPath, const RunControl &control = {}) const = 0;
    virtual void pull(const QString &repositoryPath, const RunControl &control = {}) const = 0;
    // Also publishes a Git branch that is not on the remote yet.
    virtual void push(const QString &repositoryPath, const RunControl &control = {}) const = 0;
    virtual void clone(const QString &source, const QString &destination, const RunControl &control = {}) const = 0;
    virtual Repository createRepository(const QString &path) const = 0;
    // Mercurial's "default" path or Git's "origin".
    virtual void setRemoteAddress(const QString &repositoryPath, const QString &address) const = 0;
};

// The backend for a kind; it lives for the life of the process.
const VersionControl &versionControl(RepositoryKind kind);

} // namespace tillery
