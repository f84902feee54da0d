#pragma once

#include "records/RepositoryKind.h"

#include <QString>

#include <optional>

namespace tillery {

// ".hgignore" or ".gitignore".
QString ignoreFileName(RepositoryKind kind);

// Mercurial entries are globs from the root: a leading "/" goes and a folder
// "build/" becomes "build/**". Git entries stand as they are given.
QString normalisedIgnorePattern(const QString &pattern, RepositoryKind kind);

// The ignore file's new text with the entry appended (after a "syntax: glob"
// line for Mercurial), or nothing when a line already equals it.
std::optional<QString> ignoreTextWithEntry(const QString &text, const QString &pattern, RepositoryKind kind);

// Adds the entry to the repository's ignore file, replacing the file
// atomically and keeping its permissions. Fails with PlatformFailure for an
// entry that holds a line break, a file that links out of the repository or
// is not UTF-8 text, or a write that does not succeed.
void addIgnoreEntry(const QString &pattern, const QString &repositoryPath, RepositoryKind kind);

} // namespace tillery
