#pragma once

#include "records/OperationInProgress.h"

#include <QString>
#include <QStringList>

// The operation a working copy is in the middle of, and its conflicts.
namespace tillery::mercurial {

// Told by the state files the operations leave in .hg, else by a second
// parent (a merge, with conflicts or not). Conflicts of an update that
// merged uncommitted changes are none of the operations.
OperationInProgress operationInProgress(const QString &repositoryPath, bool hasSecondParent);

// A resolved file given a side, or the merge tool, is marked unresolved
// first so that Mercurial merges it again. A side that deleted the file
// deletes it.
void resolveWithSide(const QString &repositoryPath, const QStringList &paths, ConflictSide side);
void markResolved(const QString &repositoryPath, const QStringList &paths, bool resolved);
// Only a tool the person chose (ui.merge or HGMERGE) outside the
// repository: refused when the repository's configuration sets one.
void openInMergeTool(const QString &repositoryPath, const QString &path);

// A merge is committed with the message, which it needs.
void continueOperation(const QString &repositoryPath, OperationInProgress operation, const QString &message);
void abortOperation(const QString &repositoryPath, OperationInProgress operation);

} // namespace tillery::mercurial
