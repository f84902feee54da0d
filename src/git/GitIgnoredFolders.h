#pragma once

#include "process/ToolCommand.h"

#include <QByteArray>
#include <QSet>
#include <QString>
#include <QStringList>

// Which of a working copy's folders git ignores, for watching the others.
namespace tillery::git {

// check-ignore reading folder paths from standard input; it exits with 1
// when none of them is ignored.
ToolCommand ignoredFoldersCommand();
// The folders relative to the root, each led by "./" so that one named like
// pathspec magic (":(glob)…") is read as a plain path, and ended by a NUL.
QByteArray ignoredFoldersInput(const QStringList &folders);
// The ignored folders among the input, without the "./".
QSet<QString> parseIgnoredFolders(const QByteArray &output);
QSet<QString> ignoredFolders(const QString &repositoryPath, const QStringList &folders);

// The folder that holds the refs and packed-refs: a linked work tree's git
// folder names it in its "commondir" file; otherwise the git folder itself.
QString commonGitFolder(const QString &gitFolder);

} // namespace tillery::git
