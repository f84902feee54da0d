#pragma once

#include "model/ModelSettings.h"
#include "records/Repository.h"
#include "records/SidebarLayout.h"

#include <QList>
#include <QObject>
#include <QUuid>

#include <optional>

namespace tillery {

// The known repositories and their arrangement in the sidebar, kept in step
// with the settings: every change is saved at once.
class RepositoryLibrary final : public QObject {
    Q_OBJECT

public:
    RepositoryLibrary(ModelSettings &settings, QObject *parent = nullptr);

    const QList<Repository> &repositories() const { return m_repositories; }
    const QList<RepositorySidebarItem> &sidebarItems() const { return m_layout.topLevelItems; }
    const QList<RepositoryFolder> &repositoryFolders() const { return m_layout.folders; }
    const RepositorySidebarLayout &layout() const { return m_layout; }
    const std::optional<QUuid> &selectedSidebarFolderID() const { return m_selectedFolder; }

    // Reads the stored list (keeping repositories whose folder exists) and
    // makes the stored arrangement agree with it.
    void load();
    std::optional<Repository> repositoryWithPath(const QString &path) const;
    std::optional<Repository> firstInSidebarOrder() const;

    // Appends a repository not yet known (and gives it a top-level row); saves
    // in any case. True when it was new.
    bool add(const Repository &repository);
    // Forgets every entry of that repository; files on disk stay.
    void remove(const Repository &repository);

    void selectFolder(const std::optional<QUuid> &folderId);
    // A folder named "New Folder" after the given repository's row, else after
    // the selected folder or repository, else at the end; it becomes selected.
    QUuid createFolder(const std::optional<QString> &repositoryPath,
                       const std::optional<QString> &selectedRepositoryPath);
    void moveIntoFolder(const QString &repositoryPath, const QUuid &folderId);
    void moveToTopLevel(const QString &repositoryPath);
    void moveBefore(const QString &repositoryPath, qsizetype topLevelIndex);
    void renameFolder(const QUuid &folderId, const QString &name);
    void removeFolder(const QUuid &folderId);
    void sortByName();

    static QString displayName(const QString &repositoryPath);

Q_SIGNALS:
    void repositoriesChanged();
    void sidebarChanged();
    void selectedSidebarFolderIDChanged();

private:
    QStringList paths() const;
    void saveRepositories();
    void changeLayout(const RepositorySidebarLayout &layout);

    ModelSettings &m_settings;
    QList<Repository> m_repositories;
    RepositorySidebarLayout m_layout;
    std::optional<QUuid> m_selectedFolder;
};

} // namespace tillery
