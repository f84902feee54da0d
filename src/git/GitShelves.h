#pragma once

#include "process/Cancellation.h"
#include "records/Shelf.h"
#include "records/WorkingFile.h"

#include <QList>
#include <QString>

// Stash entries, found by their commit id whatever their "stash@{n}" is at
// the time. An id that is no longer listed is refused with RefusedInput.
namespace tillery::git {

// Newest first; none when the repository has no stash.
QList<Shelf> listStashes(const QString &repositoryPath);

QList<WorkingFile> stashFiles(const QString &repositoryPath, const Shelf &stash);
QString stashDiff(const QString &repositoryPath, const Shelf &stash, const QString &path,
                  const CancellationCheck &isCancelled);

// Applies the entry, and without `keep` drops it once applied. Refused
// while conflicts are unresolved. An apply that conflicts fails as git
// does, leaving the conflicted files and the entry; when the entry was to
// be dropped, its id is remembered (see pendingStashDropPath) for
// finishStashRestore.
void restoreStash(const QString &repositoryPath, const Shelf &stash, bool keep);
void dropStash(const QString &repositoryPath, const Shelf &stash);

// Stashes only these files, untracked ones too, under the message.
void pushStash(const QString &repositoryPath, const QString &message, const QList<WorkingFile> &files);

// The file under the repository's git folder that holds, while a restore
// that conflicted is unfinished, the full commit id of the entry it is to
// drop, followed by a line feed.
QString pendingStashDropPath(const QString &gitFolder);

// Once the conflicts of a restore are resolved: drops the entry it was to
// drop, if any and still listed, and forgets it.
void finishStashRestore(const QString &repositoryPath);
// When the restore is abandoned: forgets the entry without dropping it.
void forgetStashRestore(const QString &repositoryPath);

} // namespace tillery::git
