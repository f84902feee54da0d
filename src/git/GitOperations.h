#pragma once

#include "git/GitCommands.h"
#include "process/ToolRunner.h"
#include "records/Repository.h"

#include <QString>
#include <QStringList>

#include <optional>

// Every change Tillery makes to a Git repository. Each runs git in the
// repository and blocks until it is done; success is status 0. Names that
// would be read as an option are refused before anything runs, and paths
// that git would read as a wildcard are passed literally.
namespace tillery::git {

// "Full Name <address>"; nothing when either part is missing.
std::optional<GitIdentity> parseIdentity(const QString &text);

// Stages the paths (new, changed or removed) and commits exactly them; an
// empty list does nothing. A blank or unreadable identity leaves git's own.
void commit(const QString &repositoryPath, const QStringList &paths, const QString &summary,
            const QString &description, const QString &identity);
// Tracked files go back to HEAD; newly added ones are unstaged and stay on
// disk as untracked files.
void discard(const QString &repositoryPath, const QStringList &paths);
// Every change but untracked files, which are never touched.
void discardAll(const QString &repositoryPath);
void stash(const QString &repositoryPath, const QString &message);
void createBranch(const QString &repositoryPath, const QString &name);
void renameBranch(const QString &repositoryPath, const QString &oldName, const QString &newName);
// Forced; detaches first when the branch is checked out.
void deleteBranch(const QString &repositoryPath, const QString &name);
void switchTo(const QString &repositoryPath, const QString &target);
void merge(const QString &repositoryPath, const QString &name);
// Stages the branch's changes as one change, without committing.
void squashMerge(const QString &repositoryPath, const QString &name);
void rebase(const QString &repositoryPath, const QString &name);
// The commands that talk to a remote report progress and can be stopped
// through the control.
void fetch(const QString &repositoryPath, const RunControl &control = {});
void pull(const QString &repositoryPath, const RunControl &control = {});
// Publishes a branch that has no upstream yet to origin, when there is one.
void push(const QString &repositoryPath, const RunControl &control = {});
void clone(const QString &source, const QString &destination, const RunControl &control = {});
Repository createRepository(const QString &path);
// Sets origin's address (adding origin when missing); an address that shows
// the password as "***" keeps the password already stored.
void setRemoteAddress(const QString &repositoryPath, const QString &address);

} // namespace tillery::git
