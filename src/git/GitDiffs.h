#pragma once

#include "process/Cancellation.h"
#include "records/WorkingFile.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace tillery {

// The diff of one working-copy file against HEAD (against the index in a
// repository without commits); an untracked file gets a synthesised "new
// file" diff without running git. Stops the child and throws
// CancellationFailure as soon as the check reports cancellation.
QString gitWorkingDiff(const QString &repositoryPath, const WorkingFile &file,
                       const CancellationCheck &isCancelled);

// The files a commit touched (a rename under its new name), sorted.
QList<WorkingFile> gitCommitFiles(const QString &repositoryPath, const QString &hash);

// The diff of one file in a commit; empty when there is no textual diff.
QString gitCommitDiff(const QString &repositoryPath, const QString &hash, const QString &path,
                      const CancellationCheck &isCancelled = {});

// The bytes of a file at a commit; a file the commit removed is read from its parent.
QByteArray gitFileContents(const QString &repositoryPath, const QString &hash, const WorkingFile &file);
// The file as HEAD has it (a deleted picture is shown from there).
QByteArray gitHeadContents(const QString &repositoryPath, const QString &path);

// What the current branch changed since it forked from the named branch.
QString gitCompareDiff(const QString &repositoryPath, const QString &branch);

} // namespace tillery
