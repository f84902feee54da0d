#pragma once

#include "records/ChosenChanges.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace tillery {

class VersionControl;

// The steps of committing or discarding some of a file's changes that both
// kinds take the same way. Each refuses (RefusedInput) a file whose diff is
// no longer the one the changes were chosen in, and one whose changes cannot
// be taken apart (binary, not UTF-8 text, removed, a link).

// Each file as a commit of only the chosen changes records it: its
// parent's text with them made.
QList<QByteArray> committedVersions(const VersionControl &backend, const QString &repositoryPath,
                                    const QList<ChosenChanges> &chosen);

// The working file with the chosen changes undone.
QByteArray workingVersionWithout(const VersionControl &backend, const QString &repositoryPath,
                                 const ChosenChanges &chosen);

// Copies the working file to a new folder under the metadata folder, where
// a discard keeps what it removes; the copy's path.
QString backUpWorkingFile(const QString &repositoryPath, const QString &metadataFolder, const QString &path);

// Writes the bytes over the working file in place, keeping its permissions.
void writeWorkingFile(const QString &repositoryPath, const QString &path, const QByteArray &bytes);

} // namespace tillery
