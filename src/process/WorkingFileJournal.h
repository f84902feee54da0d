#pragma once

#include <QString>
#include <QStringList>

namespace tillery {

// Working files set aside while a commit reads other versions of them. The
// copies stay under the metadata folder until the files are back, so that
// when Tillery dies in between, the next look at the repository puts them
// back.
namespace workingFileJournal {

// Keeps a copy of each file (relative to the repository) before anything is
// written over them.
void save(const QString &repositoryPath, const QString &metadataFolder, const QStringList &paths);

// Writes every kept copy back over its file and forgets them; the paths it
// put back (none when nothing was kept).
QStringList restore(const QString &repositoryPath, const QString &metadataFolder);

} // namespace workingFileJournal

} // namespace tillery
