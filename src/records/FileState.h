#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace tillery {

// The state of one file. The letter of a state is Mercurial's status letter;
// the Git backend maps its own codes onto the same states.
enum class FileState { modified, added, removed, missing, untracked, ignored, clean, unresolved };

QList<FileState> allFileStates();

QString fileStateLetter(FileState state);
QString fileStateLabel(FileState state);

// Exact one-character match; anything else (empty, longer, unknown) gives nothing.
std::optional<FileState> fileStateFromLetter(QStringView letter);

} // namespace tillery
