#include "model/RepositoryLibrary.h"

#include "model/SidebarArrangement.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace tillery {

RepositoryLibrary::RepositoryLibrary(ModelSettings &settings, QObject *parent)
    : QObject(parent)
    , m_settings(settings)
{
}

QString RepositoryLibrary::displayName(const QString &repositoryPath)
{
    return QFileInfo(repositoryPath).fileName();
}

QStringList RepositoryLibrary::paths() const
{
    QStringList list;
    for (const Repository &repository : m_repositories)
        list.append(repository.path);
    return list;
}

void RepositoryLibrary::load()
{
    m_repositories.clear();
    for (const Repository &repository : m_settings.repositories()) {
        if (QFileInfo::exists(repository.path))
            m_repositories.append(repository);
    }
    m_layout = sidebar::reconcile(m_settings.sidebarLayout().value_or(RepositorySidebarLayout{}), paths());
    Q_EMIT repositoriesChanged();
    Q_EMIT sidebarChanged();
}

std::optional<Repository> RepositoryLibrary::repositoryWithPath(const QString &path) const
{
    for (const Repository &repository : m_repositories) {
        if (repository.path == path)
            return repository;
    }
    return std::nullopt;
}

std::optional<Repository> RepositoryLibrary::firstInSidebarOrder() const
{
    const std::optional<QString> path = sidebar::firstRepositoryPath(m_layout, paths());
    return path ? repositoryWithPath(*path) : std::nullopt;
}

bool RepositoryLibrary::add(const Repository &repository)
{
    const bool isNew = !m_repositories.contains(repository);
    if (isNew) {
        m_repositories.append(repository);
        sidebar::addRepository(m_layout, repository.path);
        Q_EMIT repositoriesChanged();
        Q_EMIT sidebarChanged();
    }
    saveRepositories();
    m_settings.setSidebarLayout(m_layout);
    return isNew;
}

void RepositoryLibrary::remove(const Repository &repository)
{
    m_repositories.removeAll(repository);
    RepositorySidebarLayout layout = m_layout;
    if (!repositoryWithPath(repository.path))
        sidebar::removeRepository(layout, repository.path);
    Q_EMIT repositoriesChanged();
    saveRepositories();
    changeLayout(layout);
}

void RepositoryLibrary::saveRepositories()
{
    m_settings.setRepositories(m_repositories);
}

void RepositoryLibrary::changeLayout(const RepositorySidebarLayout &layout)
{
    const bool changed = layout != m_layout;
    m_layout = layout;
    m_settings.setSidebarLayout(m_layout);
    if (changed)
        Q_EMIT sidebarChanged();
}

void RepositoryLibrary::selectFolder(const std::optional<QUuid> &folderId)
{
    if (m_selectedFolder == folderId)
        return;
    m_selectedFolder = folderId;
    Q_EMIT selectedSidebarFolderIDChanged();
}

QUuid RepositoryLibrary::createFolder(const std::optional<QString> &repositoryPath,
                                      const std::optional<QString> &selectedRepositoryPath)
{
    std::optional<qsizetype> after;
    if (repositoryPath)
        after = sidebar::topLevelIndexOf(m_layout, *repositoryPath);
    else if (m_selectedFolder)
        after = sidebar::topLevelIndexOfFolder(m_layout, *m_selectedFolder);
    else if (selectedRepositoryPath)
        after = sidebar::topLevelIndexOf(m_layout, *selectedRepositoryPath);
    const qsizetype index = after ? *after + 1 : m_layout.topLevelItems.size();

    RepositorySidebarLayout layout = m_layout;
    const RepositoryFolder folder{QUuid::createUuid(), tr("New Folder"), {}};
    sidebar::insertFolder(layout, folder, index);
    if (repositoryPath)
        sidebar::moveIntoFolder(layout, *repositoryPath, folder.id);
    changeLayout(layout);
    selectFolder(folder.id);
    return folder.id;
}

void RepositoryLibrary::moveIntoFolder(const QString &repositoryPath, const QUuid &folderId)
{
    RepositorySidebarLayout layout = m_layout;
    sidebar::moveIntoFolder(layout, repositoryPath, folderId);
    changeLayout(layout);
}

void RepositoryLibrary::moveToTopLevel(const QString &repositoryPath)
{
    RepositorySidebarLayout layout = m_layout;
    sidebar::moveToTopLevel(layout, repositoryPath);
    changeLayout(layout);
}

void RepositoryLibrary::moveBefore(const QString &repositoryPath, qsizetype topLevelIndex)
{
    RepositorySidebarLayout layout = m_layout;
    sidebar::moveBefore(layout, repositoryPath, topLevelIndex);
    changeLayout(layout);
}

void RepositoryLibrary::renameFolder(const QUuid &folderId, const QString &name)
{
    RepositorySidebarLayout layout = m_layout;
    sidebar::renameFolder(layout, folderId, name);
    changeLayout(layout);
}

void RepositoryLibrary::removeFolder(const QUuid &folderId)
{
    RepositorySidebarLayout layout = m_layout;
    sidebar::removeFolder(layout, folderId);
    changeLayout(layout);
    if (m_selectedFolder == folderId)
        selectFolder(std::nullopt);
}

void RepositoryLibrary::sortByName()
{
    RepositorySidebarLayout layout = m_layout;
    sidebar::sortByName(layout, &RepositoryLibrary::displayName);
    changeLayout(layout);
}

} // namespace tillery
