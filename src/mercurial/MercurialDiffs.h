#pragma once

#include "process/Cancellation.h"
#include "records/Changeset.h"
#include "records/FileState.h"
#include "records/WorkingFile.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace tillery {

// The diff of one working-copy file; an untracked file gets a synthesised
// "new file" diff without running hg. Stops the child and throws
// CancellationFailure as soon as the check reports cancellation.
QString mercurialWorkingDiff(const QString &path, FileState state, const QString &repositoryPath,
                             const CancellationCheck &isCancelled);

// The files a changeset touched, in the file browser's order.
QList<WorkingFile> mercurialChangesetFiles(const Changeset &changeset, const QString &repositoryPath);

// The diff of one file in a changeset; empty when there is no textual diff.
QString mercurialChangesetDiff(const QString &path, const Changeset &changeset, const QString &repositoryPath,
                               const CancellationCheck &isCancelled = {});

// The bytes of a file as of a changeset; a file the changeset removed is
// read from its first parent, where it still existed.
QByteArray mercurialFileContents(const QString &path, FileState state, const Changeset &changeset,
                                 const QString &repositoryPath);

// The diff from a bookmark to the working copy's parent; empty when they agree.
// The file as the working copy's parent has it (a deleted picture is shown
// from there).
QByteArray mercurialParentContents(const QString &path, const QString &repositoryPath);

QString mercurialCompareDiff(const QString &target, const QString &repositoryPath);

} // namespace tillery
