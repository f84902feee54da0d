#pragma once

#include <QString>

#include <variant>

namespace tillery {

// A text file of a repository that Tillery edits (.hg/hgrc, .hgignore,
// .gitignore): where it really is and what it holds now.
struct RepositoryTextFile {
    // The file to replace: the path itself, or where a link inside the
    // repository leads.
    QString path;
    // Empty when the file does not exist yet.
    QString text;
};

enum class RepositoryFileProblem {
    // A link that leads out of the repository is never followed.
    linksOutside,
    unreadable,
    // Text that is not UTF-8 would be lost by rewriting it.
    notUtf8,
};

std::variant<RepositoryTextFile, RepositoryFileProblem> readRepositoryTextFile(const QString &repositoryPath,
                                                                              const QString &relativePath);

// Replaces the file atomically with the text as UTF-8, keeping its
// permissions; the reason when it could not.
std::optional<QString> replaceTextFile(const QString &path, const QString &text);

} // namespace tillery
