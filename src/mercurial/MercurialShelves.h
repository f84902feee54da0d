#pragma once

#include "process/Cancellation.h"
#include "records/Shelf.h"
#include "records/WorkingFile.h"

#include <QList>
#include <QString>

// Shelves, known by their names. A name that no longer names a shelf is
// refused with RefusedInput.
namespace tillery::mercurial {

// Newest first, each dated by the last change of its file (which is what
// Mercurial orders them by); none without a shelf folder, or when the
// shelve extension cannot be had.
QList<Shelf> listShelves(const QString &repositoryPath);

QList<WorkingFile> shelfFiles(const QString &repositoryPath, const Shelf &shelf);
QString shelfDiff(const QString &repositoryPath, const Shelf &shelf, const QString &path,
                  const CancellationCheck &isCancelled);

// Unshelves it, keeping the shelf when asked. One that conflicts fails as
// hg does and leaves the unshelve in progress, with the shelf listed.
void unshelve(const QString &repositoryPath, const Shelf &shelf, bool keep);
void deleteShelf(const QString &repositoryPath, const Shelf &shelf);

// Shelves only these files, untracked ones too; refuses, before anything
// runs, a name that Mercurial would not take or that a shelf has.
void shelveFiles(const QString &repositoryPath, const QString &name, const QList<WorkingFile> &files);

} // namespace tillery::mercurial
