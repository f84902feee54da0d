#pragma once

#include "process/ToolCommand.h"

#include <QByteArray>
#include <QSet>
#include <QString>
#include <QStringList>

// Which of a working copy's folders Mercurial ignores, for watching the others.
namespace tillery::mercurial {

// debugignore over the folders, relative to the root, each given as a
// "path:" pattern so that no name is read as a pattern of another kind.
ToolCommand ignoredFoldersCommand(const QStringList &folders);
// Its answer, one verdict per folder in the order asked ("F is ignored",
// followed by the rule, or "F is not ignored"). A line that does not answer
// the next folder ends the reading: the rest count as not ignored.
QSet<QString> parseIgnoredFolders(const QByteArray &output, const QStringList &folders);
QSet<QString> ignoredFolders(const QString &repositoryPath, const QStringList &folders);

// The folder of the store, which a shared working copy keeps elsewhere.
QString storeFolder(const QString &repositoryPath);

} // namespace tillery::mercurial
