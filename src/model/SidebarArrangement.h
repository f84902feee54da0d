#pragma once

#include "records/SidebarLayout.h"

#include <QString>
#include <QStringList>
#include <QUuid>

#include <functional>
#include <optional>

// The rules of the sidebar's arrangement, as functions on the layout value.
// After reconcile() every known repository path appears exactly once, at
// the top level or in one folder, and every folder once at the top level.
namespace tillery::sidebar {

// The stored layout made to agree with the repository list (in its order).
RepositorySidebarLayout reconcile(const RepositorySidebarLayout &stored, const QStringList &repositoryPaths);

// The first repository a person sees: top-level items in order, a folder
// contributing its first known repository.
std::optional<QString> firstRepositoryPath(const RepositorySidebarLayout &layout, const QStringList &repositoryPaths);

// Where the top-level item that shows the repository sits (its folder's item
// when it is in a folder); nothing when it is not in the layout.
std::optional<qsizetype> topLevelIndexOf(const RepositorySidebarLayout &layout, const QString &repositoryPath);
std::optional<qsizetype> topLevelIndexOfFolder(const RepositorySidebarLayout &layout, const QUuid &folderId);

const RepositoryFolder *folderWithId(const RepositorySidebarLayout &layout, const QUuid &folderId);

// A new empty folder whose item goes at the index (clamped to the list).
void insertFolder(RepositorySidebarLayout &layout, const RepositoryFolder &folder, qsizetype index);
// Takes the repository out of the top level and every folder and appends it
// to the folder's repositories.
void moveIntoFolder(RepositorySidebarLayout &layout, const QString &repositoryPath, const QUuid &folderId);
// Takes the repository out of its folder; it goes right after that folder.
void moveToTopLevel(RepositorySidebarLayout &layout, const QString &repositoryPath);
// Puts a top-level repository just before another top-level item.
void moveBefore(RepositorySidebarLayout &layout, const QString &repositoryPath, qsizetype index);
void renameFolder(RepositorySidebarLayout &layout, const QUuid &folderId, const QString &name);
// The folder's repositories take its place at the top level, in its order.
void removeFolder(RepositorySidebarLayout &layout, const QUuid &folderId);
void addRepository(RepositorySidebarLayout &layout, const QString &repositoryPath);
void removeRepository(RepositorySidebarLayout &layout, const QString &repositoryPath);
// Folders and repositories in the file browser's order of their names, at
// the top level and inside each folder.
void sortByName(RepositorySidebarLayout &layout, const std::function<QString(const QString &)> &repositoryName);

} // namespace tillery::sidebar
