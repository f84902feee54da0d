#pragma once

#include "diff/FilePatch.h"
#include "records/ChosenChanges.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace tillery {

class VersionControl;

// The steps of committing or discarding some of a file's changes that both
// kinds take the same way. Each works from the working file and the diff the
// changes were chosen in, and refuses (RefusedInput) a file the diff no
// longer describes (it changed since) and one whose changes cannot be taken
// apart (binary, not UTF-8 text, removed, a link).

// A file as its parent has it according to the diff (empty for a new file,
// the file it came from for a copy or rename),
// and as a commit of only the chosen changes records it.
struct ChosenVersion {
    QString parent;
    QString committed;
    // The diff the changes were chosen in, read.
    FilePatch shown;
};
QList<ChosenVersion> committedVersions(const QString &repositoryPath, const QList<ChosenChanges> &chosen);

// The file of the working copy's parent that the diff compares this one
// with: its own, or for a copy or renamed file the one it came from; nothing
// for a new file.
std::optional<QString> comparedParentPath(const ChosenChanges &chosen);

// Refuses the versions when a parent is not what the working copy's parent
// really holds: the file changed since its diff was shown. A new file's
// parent is read only when its diff shows it copied or renamed, from the
// file it came from. (Where the tool checks that itself while it commits,
// this is not needed.)
void checkParents(const QList<ChosenChanges> &chosen, const QList<ChosenVersion> &versions,
                  const std::function<QList<QByteArray>(const QStringList &paths)> &readParents);

// The working file with the chosen changes undone.
QByteArray workingVersionWithout(const QString &repositoryPath, const ChosenChanges &chosen);

// The refusal for files that changed after their diffs were shown.
[[noreturn]] void refuseAsChanged(const QList<ChosenChanges> &chosen);

// Copies the working file to a new folder under the metadata folder, where
// a discard keeps what it removes; the copy's path.
QString backUpWorkingFile(const QString &repositoryPath, const QString &metadataFolder, const QString &path);

// Writes the bytes over the working file in place, keeping its permissions.
void writeWorkingFile(const QString &repositoryPath, const QString &path, const QByteArray &bytes);

} // namespace tillery
