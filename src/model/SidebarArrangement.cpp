#include "model/SidebarArrangement.h"

#include "records/LocalizedOrder.h"

#include <QSet>

#include <algorithm>

namespace tillery::sidebar {

namespace {

RepositoryFolder *mutableFolder(RepositorySidebarLayout &layout, const QUuid &folderId)
{
    for (RepositoryFolder &folder : layout.folders) {
        if (folder.id == folderId)
            return &folder;
    }
    return nullptr;
}

void removeEverywhere(RepositorySidebarLayout &layout, const QString &repositoryPath)
{
    layout.topLevelItems.removeIf(
        [&](const RepositorySidebarItem &item) { return item.isRepository() && item.path == repositoryPath; });
    for (RepositoryFolder &folder : layout.folders)
        folder.repositoryPaths.removeAll(repositoryPath);
}

} // namespace

RepositorySidebarLayout reconcile(const RepositorySidebarLayout &stored, const QStringList &repositoryPaths)
{
    const QSet<QString> known(repositoryPaths.cbegin(), repositoryPaths.cend());
    QSet<QString> placed;
    RepositorySidebarLayout result;

    for (const RepositoryFolder &folder : stored.folders) {
        RepositoryFolder kept{folder.id, folder.name, {}};
        for (const QString &path : folder.repositoryPaths) {
            if (known.contains(path) && !placed.contains(path)) {
                kept.repositoryPaths.append(path);
                placed.insert(path);
            }
        }
        result.folders.append(kept);
    }
    const QSet<QString> inFolders = placed;

    QSet<QUuid> listedFolders;
    for (const RepositorySidebarItem &item : stored.topLevelItems) {
        if (item.isFolder()) {
            if (folderWithId(result, item.folderId) && !listedFolders.contains(item.folderId)) {
                result.topLevelItems.append(item);
                listedFolders.insert(item.folderId);
            }
        } else if (known.contains(item.path) && !inFolders.contains(item.path) && !placed.contains(item.path)) {
            result.topLevelItems.append(item);
            placed.insert(item.path);
        }
    }
    for (const RepositoryFolder &folder : std::as_const(result.folders)) {
        if (!listedFolders.contains(folder.id))
            result.topLevelItems.append(RepositorySidebarItem::folder(folder.id));
    }
    for (const QString &path : repositoryPaths) {
        if (!placed.contains(path)) {
            result.topLevelItems.append(RepositorySidebarItem::repository(path));
            placed.insert(path);
        }
    }
    return result;
}

std::optional<QString> firstRepositoryPath(const RepositorySidebarLayout &layout, const QStringList &repositoryPaths)
{
    for (const RepositorySidebarItem &item : layout.topLevelItems) {
        if (item.isRepository())
            return item.path;
        if (const RepositoryFolder *folder = folderWithId(layout, item.folderId)) {
            for (const QString &path : folder->repositoryPaths) {
                if (repositoryPaths.contains(path))
                    return path;
            }
        }
    }
    return std::nullopt;
}

const RepositoryFolder *folderWithId(const RepositorySidebarLayout &layout, const QUuid &folderId)
{
    for (const RepositoryFolder &folder : layout.folders) {
        if (folder.id == folderId)
            return &folder;
    }
    return nullptr;
}

std::optional<qsizetype> topLevelIndexOfFolder(const RepositorySidebarLayout &layout, const QUuid &folderId)
{
    for (qsizetype index = 0; index < layout.topLevelItems.size(); ++index) {
        if (layout.topLevelItems[index].isFolder() && layout.topLevelItems[index].folderId == folderId)
            return index;
    }
    return std::nullopt;
}

std::optional<qsizetype> topLevelIndexOf(const RepositorySidebarLayout &layout, const QString &repositoryPath)
{
    for (const RepositoryFolder &folder : layout.folders) {
        if (folder.repositoryPaths.contains(repositoryPath))
            return topLevelIndexOfFolder(layout, folder.id);
    }
    for (qsizetype index = 0; index < layout.topLevelItems.size(); ++index) {
        if (layout.topLevelItems[index].isRepository() && layout.topLevelItems[index].path == repositoryPath)
            return index;
    }
    return std::nullopt;
}

void insertFolder(RepositorySidebarLayout &layout, const RepositoryFolder &folder, qsizetype index)
{
    layout.folders.append(folder);
    layout.topLevelItems.insert(std::clamp<qsizetype>(index, 0, layout.topLevelItems.size()),
                                RepositorySidebarItem::folder(folder.id));
}

void moveIntoFolder(RepositorySidebarLayout &layout, const QString &repositoryPath, const QUuid &folderId)
{
    if (!mutableFolder(layout, folderId))
        return;
    removeEverywhere(layout, repositoryPath);
    mutableFolder(layout, folderId)->repositoryPaths.append(repositoryPath);
}

void moveToTopLevel(RepositorySidebarLayout &layout, const QString &repositoryPath)
{
    for (RepositoryFolder &folder : layout.folders) {
        if (!folder.repositoryPaths.contains(repositoryPath))
            continue;
        folder.repositoryPaths.removeAll(repositoryPath);
        const qsizetype at = topLevelIndexOfFolder(layout, folder.id).value_or(layout.topLevelItems.size() - 1) + 1;
        layout.topLevelItems.insert(at, RepositorySidebarItem::repository(repositoryPath));
        return;
    }
}

void moveBefore(RepositorySidebarLayout &layout, const QString &repositoryPath, qsizetype index)
{
    const RepositorySidebarItem moved = RepositorySidebarItem::repository(repositoryPath);
    const qsizetype from = layout.topLevelItems.indexOf(moved);
    if (from < 0) {
        removeEverywhere(layout, repositoryPath);
    } else {
        layout.topLevelItems.removeAt(from);
        if (from < index)
            --index;
    }
    layout.topLevelItems.insert(std::clamp<qsizetype>(index, 0, layout.topLevelItems.size()), moved);
}

void renameFolder(RepositorySidebarLayout &layout, const QUuid &folderId, const QString &name)
{
    if (RepositoryFolder *folder = mutableFolder(layout, folderId))
        folder->name = name;
}

void removeFolder(RepositorySidebarLayout &layout, const QUuid &folderId)
{
    const RepositoryFolder *folder = folderWithId(layout, folderId);
    if (!folder)
        return;
    const QStringList paths = folder->repositoryPaths;
    qsizetype at = topLevelIndexOfFolder(layout, folderId).value_or(layout.topLevelItems.size());
    if (at < layout.topLevelItems.size())
        layout.topLevelItems.removeAt(at);
    for (const QString &path : paths)
        layout.topLevelItems.insert(at++, RepositorySidebarItem::repository(path));
    layout.folders.removeIf([&](const RepositoryFolder &candidate) { return candidate.id == folderId; });
}

void addRepository(RepositorySidebarLayout &layout, const QString &repositoryPath)
{
    if (!topLevelIndexOf(layout, repositoryPath))
        layout.topLevelItems.append(RepositorySidebarItem::repository(repositoryPath));
}

void removeRepository(RepositorySidebarLayout &layout, const QString &repositoryPath)
{
    removeEverywhere(layout, repositoryPath);
}

void sortByName(RepositorySidebarLayout &layout, const std::function<QString(const QString &)> &repositoryName)
{
    sortLocalized(layout.topLevelItems, [&](const RepositorySidebarItem &item) {
        if (item.isRepository())
            return repositoryName(item.path);
        const RepositoryFolder *folder = folderWithId(layout, item.folderId);
        return folder ? folder->name : QString();
    });
    for (RepositoryFolder &folder : layout.folders)
        sortLocalized(folder.repositoryPaths, repositoryName);
}

} // namespace tillery::sidebar
