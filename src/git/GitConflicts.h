#pragma once

#include "records/OperationInProgress.h"
#include "records/WorkingFile.h"

#include <QList>
#include <QString>
#include <QStringList>

// The operation a working copy is in the middle of, and its conflicts.
namespace tillery::git {

// The folder that holds the working copy's own state: its ".git" folder, or
// the one its ".git" file names (a linked work tree's, a submodule's).
QString workingGitFolder(const QString &repositoryPath);

// Told by the files git leaves in that folder. Conflicted files (among
// `files`) without any of them, or a stash restore whose entry is still to
// be dropped, are a stash restore's; a revert or a patch being applied is
// none of the operations Tillery knows.
OperationInProgress operationInProgress(const QString &gitFolder, const QList<WorkingFile> &files);

// The files whose conflicts were resolved (git keeps their conflicting
// entries until the index is next rewritten), but not those in conflict again.
QStringList resolvedFiles(const QString &repositoryPath, const QList<WorkingFile> &files);

// A resolved file given a side, or the merge tool, is put back in conflict
// first. A side that deleted the file deletes it.
void resolveWithSide(const QString &repositoryPath, const QStringList &paths, ConflictSide side);
// Unmarking puts a file's conflicting entries back in the index; the
// working file stays as it is.
void markResolved(const QString &repositoryPath, const QStringList &paths, bool resolved);
// Only a tool the person chose (merge.tool) in their own configuration:
// refused when the repository's configuration sets one.
void openInMergeTool(const QString &repositoryPath, const QString &path);

// A merge without a message is committed with git's own. A stash restore
// is finished by dropping the entry it was to drop, if any; abandoning it
// puts back what the restore changed and keeps the entry.
void continueOperation(const QString &repositoryPath, OperationInProgress operation, const QString &message);
void abortOperation(const QString &repositoryPath, OperationInProgress operation);

} // namespace tillery::git
