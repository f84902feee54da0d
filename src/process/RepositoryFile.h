#pragma once

#include <QByteArray>
#include <QString>

#include <variant>

namespace tillery {

// A text file of a repository that Tillery edits (.hg/hgrc, .hgignore,
// .gitignore): where it is and what it holds now.
struct RepositoryTextFile {
    QString path;
    // Empty when the file does not exist yet.
    QString text;
};

enum class RepositoryFileProblem {
    // A link is never written through, wherever it leads: a cloned
    // repository's .gitignore may lead into .git/config.
    isLink,
    unreadable,
    // Text that is not UTF-8 would be lost by rewriting it.
    notUtf8,
};

std::variant<RepositoryTextFile, RepositoryFileProblem> readRepositoryTextFile(const QString &repositoryPath,
                                                                               const QString &relativePath);

// Replaces the file atomically with the bytes (or the text as UTF-8),
// keeping its permissions; the reason when it could not.
std::optional<QString> replaceFile(const QString &path, const QByteArray &bytes);
std::optional<QString> replaceTextFile(const QString &path, const QString &text);

// Writes the bytes over the file in place (making it when missing): its
// permissions and links stay as they are, and nothing waits for the disk.
std::optional<QString> overwriteFile(const QString &path, const QByteArray &bytes);

} // namespace tillery
