#include "model/AppModel.h"

#include "integrations/IgnoreFile.h"
#include "process/CommandServerPool.h"
#include "process/Failure.h"
#include "process/RemoteAddress.h"
#include "process/RepositoryDetection.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

// Tool work mostly waits on child processes, so more of it may run at once
// than there are cores.
constexpr int toolThreads = 8;
constexpr int quitWaitMilliseconds = 2000;

} // namespace

QString AppModelServices::defaultIconFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + u"/Repository Icons"_s;
}

AppModel::AppModel(const AppModelServices &services, QObject *parent)
    : QObject(parent)
    , m_settings(services.settings)
    , m_prompts(services.prompts)
    , m_pool(toolThreads)
    , m_activity(new ActivityState(this))
    , m_library(new RepositoryLibrary(m_settings, this))
    , m_icons(new RepositoryIcons(m_settings, services.iconFolder, this))
    , m_workspace(new Workspace(this))
    , m_historyBrowser(new HistoryBrowser(m_pool, *m_workspace, this))
    , m_diffSelection(new DiffSelection(*m_workspace, *m_historyBrowser, *m_activity, m_settings, m_pool, this))
    , m_chosenLines(new ChosenLines(*m_workspace, *m_diffSelection, this))
    , m_shelfSelection(new ShelfSelection(*m_workspace, *m_diffSelection, *m_activity, m_pool, this))
    , m_annotation(new Annotation(*m_workspace, *m_diffSelection, m_pool, this))
    , m_operations(m_pool, *m_activity, *this)
    , m_context{*m_workspace,
                *m_diffSelection,
                *m_shelfSelection,
                *m_chosenLines,
                m_settings,
                services.prompts,
                services.desktop,
                m_operations,
                [this] { refresh(); },
                [this](const Repository &repository) { adoptRepository(repository); },
                [this](WorkspaceTab tab) { setTab(tab); }}
    , m_workingCopy(m_context)
    , m_lastCommit(m_context)
    , m_shelves(m_context)
    , m_conflicts(m_context)
    , m_branches(m_context)
    , m_open(m_context)
    , m_historyNavigation(new HistoryNavigation(m_context, *m_historyBrowser, this))
{
    if (!services.secrets)
        m_desktopSecrets = std::make_unique<DesktopSecretStore>();
    m_credentials =
        new CredentialBroker(services.prompts, services.secrets ? *services.secrets : *m_desktopSecrets, this);
    m_operations.setCredentialBroker(m_credentials);
    m_watcher = new RepositoryWatcher(m_pool, *m_activity, services.watchedFolderLimit, this);
    connect(m_workspace, &Workspace::selectedRepositoryChanged, m_watcher,
            [this] { m_watcher->watch(m_workspace->selectedRepository()); });
    connect(m_watcher, &RepositoryWatcher::refreshNeeded, this, [this] { refresh(); });
}

void AppModel::showChangesetInHistory(const QString &node)
{
    setTab(WorkspaceTab::history);
    m_historyNavigation->showChangeset(node);
}

void AppModel::showFileHistory(const QString &path)
{
    setTab(WorkspaceTab::history);
    m_historyNavigation->showFileHistory(path);
}

QString AppModel::ignoreFileName() const
{
    return tillery::ignoreFileName(traits().kind);
}

QString AppModel::shownRemoteAddress() const
{
    if (!m_workspace->selectedRepository())
        return QString();
    return withPasswordsMasked(m_workspace->snapshot().paths.value(traits().remoteName));
}

KindTraits AppModel::traits() const
{
    const std::optional<Repository> &selected = m_workspace->selectedRepository();
    return versionControl(selected ? selected->kind : RepositoryKind::mercurial).traits();
}

AppModel::~AppModel()
{
    // Quitting stops every tool still running (a hung push among them),
    // waits a moment for the workers, and drops their results.
    m_pool.stop(quitWaitMilliseconds);
    stopAllCommandServers();
    delete m_diffSelection;
}

bool AppModel::isIdle() const
{
    return runningBackgroundWork() == 0 && !m_activity->isBusy() && !m_diffSelection->isLoadingDiff()
           && !m_diffSelection->isLoadingChangesetFiles() && !m_historyBrowser->isLoading()
           && m_annotation->state() != Annotation::State::loading && !m_watcher->isPending();
}

void AppModel::start()
{
    m_settings.migrateEditorSetting();
    m_workspace->setCommitUsername(m_settings.commitUsername());
    runInBackground(
        &m_pool, this, [store = m_icons->store(), files = m_icons->readFiles()] { return store.loadAll(files); },
        [this](Outcome<QMap<QString, QImage>> loaded) {
            if (loaded.succeeded())
                m_icons->takeLoaded(*loaded.value);
        });
    m_library->load();

    std::optional<Repository> selection;
    if (const std::optional<QString> last = m_settings.lastSelectedRepository())
        selection = m_library->repositoryWithPath(*last);
    if (!selection)
        selection = m_library->firstInSidebarOrder();
    m_workspace->setSelectedRepository(selection);
    rememberSelection();
    if (selection)
        refresh();
}

bool AppModel::isSelected(const Repository &repository) const
{
    return m_workspace->selectedRepository() == repository;
}

void AppModel::rememberSelection()
{
    const std::optional<Repository> &selected = m_workspace->selectedRepository();
    m_settings.setLastSelectedRepository(selected ? std::optional(selected->path) : std::nullopt);
}

void AppModel::clearRepositoryState()
{
    m_lastCommit.stopAmending();
    m_workspace->clearSnapshot();
    m_chosenLines->clear();
    m_diffSelection->clearForRepositorySwitch();
    m_shelfSelection->clear();
}

void AppModel::select(const Repository &repository)
{
    m_library->selectFolder(std::nullopt);
    if (isSelected(repository))
        return;
    m_workspace->setSwitchingRepository(true);
    m_workspace->setSelectedRepository(repository);
    rememberSelection();
    clearRepositoryState();
    refresh();
}

void AppModel::refresh()
{
    const std::optional<Repository> repository = m_workspace->selectedRepository();
    if (!repository)
        return;
    const Repository refreshed = *repository;
    const VersionControl *backend = &versionControl(refreshed.kind);
    m_operations.perform(
        tr("Refreshing %1").arg(QFileInfo(refreshed.path).fileName()),
        [backend, path = refreshed.path] {
            LoadedRepository loaded{backend->loadSnapshot(path), {}};
            loaded.historyLayout.append(loaded.snapshot.history);
            return loaded;
        },
        [this, refreshed](const LoadedRepository &loaded) { applySnapshot(refreshed, loaded); },
        [this, refreshed] {
            if (isSelected(refreshed))
                m_workspace->setSwitchingRepository(false);
        });
}

void AppModel::applySnapshot(const Repository &repository, const LoadedRepository &loaded)
{
    if (!isSelected(repository))
        return;
    m_workspace->setSwitchingRepository(false);
    const bool selectionWasOlder = m_historyNavigation->isSelectionBeyondFirstPage();
    m_workspace->setSnapshot(loaded.snapshot, loaded.historyLayout);
    if (selectionWasOlder)
        m_historyNavigation->keepSelectionShown();
    m_diffSelection->reconcileAfterRefresh();
    if (m_workspace->tab() == WorkspaceTab::shelves)
        m_shelfSelection->showPage();
    const QStringList &restored = loaded.snapshot.restoredWorkingFiles;
    if (!restored.isEmpty()) {
        m_activity->present(tr("Working Files Put Back"),
                            tr("A commit of chosen lines was cut short before it could put the working files back. "
                               "Tillery has now put them back as they were: %1.")
                                .arg(restored.join(u", "_s)));
    }
}

void AppModel::addRepository()
{
    const std::optional<QString> folder =
        m_prompts.chooseFolder({tr("Choose a Mercurial or Git Repository"),
                                QCoreApplication::translate("tillery::AlertButtons", "Add Repository"), false});
    if (folder)
        addRepositories({QUrl::fromLocalFile(*folder)});
}

void AppModel::addRepositories(const QList<QUrl> &urls)
{
    std::optional<QString> folder;
    for (const QUrl &url : urls) {
        const QString path = QDir::cleanPath(url.toLocalFile());
        if (!path.isEmpty() && QFileInfo(path).isDir()) {
            folder = path;
            break;
        }
    }
    if (!folder)
        return;
    m_operations.perform(
        tr("Adding repository"), [path = *folder] { return detectRepository(path); },
        [this](const Repository &repository) { adoptRepository(repository); });
}

void AppModel::adoptRepository(const Repository &repository)
{
    m_library->add(repository);
    select(repository);
}

void AppModel::confirmRemove(const Repository &repository)
{
    const AlertRequest request{
        tr("Remove “%1” from Tillery?").arg(RepositoryLibrary::displayName(repository.path)),
        tr("The repository will only be removed from the app. Files on disk will not be changed."),
        {QCoreApplication::translate("tillery::AlertButtons", "Remove"),
         QCoreApplication::translate("tillery::AlertButtons", "Cancel")}};
    if (m_prompts.alert(request) == 0)
        remove(repository);
}

void AppModel::remove(const Repository &repository)
{
    const bool wasSelected = isSelected(repository);
    m_library->remove(repository);
    // Its command servers end off the main thread: each may take a moment to exit.
    runInBackground(
        &m_pool, this,
        [path = repository.path] {
            stopCommandServers(path);
            return true;
        },
        [](auto) {});
    if (!wasSelected)
        return;
    const std::optional<Repository> next = m_library->firstInSidebarOrder();
    if (next)
        m_workspace->setSwitchingRepository(true);
    m_workspace->setSelectedRepository(next);
    rememberSelection();
    clearRepositoryState();
    if (next)
        refresh();
}

void AppModel::selectSidebarFolder(const std::optional<QUuid> &folderId)
{
    m_library->selectFolder(folderId);
}

void AppModel::createFolder(const std::optional<QString> &repositoryPath)
{
    const std::optional<Repository> &selected = m_workspace->selectedRepository();
    m_library->createFolder(repositoryPath, selected ? std::optional(selected->path) : std::nullopt);
}

void AppModel::moveIntoFolder(const QString &repositoryPath, const QUuid &folderId)
{
    m_library->moveIntoFolder(repositoryPath, folderId);
}

void AppModel::moveToTopLevel(const QString &repositoryPath)
{
    m_library->moveToTopLevel(repositoryPath);
}

void AppModel::moveRepositoryBefore(const QString &repositoryPath, qsizetype topLevelIndex)
{
    m_library->moveBefore(repositoryPath, topLevelIndex);
}

void AppModel::renameFolder(const QUuid &folderId)
{
    const RepositoryFolder *folder = nullptr;
    for (const RepositoryFolder &candidate : m_library->repositoryFolders()) {
        if (candidate.id == folderId)
            folder = &candidate;
    }
    if (!folder)
        return;
    const std::optional<QString> name = m_prompts.enterText(
        {tr("Rename Folder"), QString(), folder->name, QCoreApplication::translate("tillery::AlertButtons", "Rename")});
    if (name)
        m_library->renameFolder(folderId, *name);
}

void AppModel::removeFolder(const QUuid &folderId)
{
    QString name;
    bool found = false;
    for (const RepositoryFolder &folder : m_library->repositoryFolders()) {
        if (folder.id == folderId) {
            name = folder.name;
            found = true;
        }
    }
    if (!found)
        return;
    const AlertRequest request{
        tr("Remove Folder “%1”?").arg(name),
        tr("Repositories in this folder will be moved to the main repository list. No files will be changed."),
        {QCoreApplication::translate("tillery::AlertButtons", "Remove Folder"),
         QCoreApplication::translate("tillery::AlertButtons", "Cancel")}};
    if (m_prompts.alert(request) == 0)
        m_library->removeFolder(folderId);
}

void AppModel::sortSidebarByName()
{
    m_library->sortByName();
}

void AppModel::setRepositoryIcon(const QString &repositoryPath, const QString &pictureFile,
                                 const std::function<void(bool)> &done)
{
    runInBackground(
        &m_pool, this,
        [store = m_icons->store(), pictureFile] {
            const std::optional<QByteArray> bytes = RepositoryIconStore::readPictureFile(pictureFile);
            return bytes ? store.store(*bytes) : std::nullopt;
        },
        [this, repositoryPath, done](Outcome<std::optional<std::pair<QString, QImage>>> stored) {
            const bool taken = stored.succeeded() && stored.value->has_value();
            if (taken)
                m_icons->adopt(repositoryPath, (*stored.value)->first, (*stored.value)->second);
            if (done)
                done(taken);
        });
}

void AppModel::removeRepositoryIcon(const QString &repositoryPath)
{
    m_icons->removeIcon(repositoryPath);
}

void AppModel::selectFile(const WorkingFile &file)
{
    m_diffSelection->selectFile(file);
}

void AppModel::selectChangeFiles(const QSet<WorkingFile> &files)
{
    m_diffSelection->selectChangeFiles(files);
}

void AppModel::selectChangeset(const Changeset &changeset)
{
    m_diffSelection->selectChangeset(changeset);
}

void AppModel::selectChangesetFile(const WorkingFile &file)
{
    m_diffSelection->selectChangesetFile(file);
}

void AppModel::setSelectedFilePaths(const QSet<QString> &paths)
{
    m_diffSelection->setSelectedFilePaths(paths);
}

void AppModel::setTab(WorkspaceTab tab)
{
    if (m_workspace->tab() == tab)
        return;
    m_workspace->setTab(tab);
    if (tab == WorkspaceTab::shelves)
        m_shelfSelection->showPage();
    else
        m_diffSelection->showPage();
}

void AppModel::setCommitSummary(const QString &summary)
{
    m_workspace->setCommitSummary(summary);
}

void AppModel::setCommitDescription(const QString &description)
{
    m_workspace->setCommitDescription(description);
}

void AppModel::setCommitUsername(const QString &name)
{
    m_workspace->setCommitUsername(name);
    m_settings.setCommitUsername(name);
}

void AppModel::setEditorChoice(const EditorChoice &choice)
{
    m_settings.setEditorChoice(choice);
    Q_EMIT integrationsChanged();
}

void AppModel::setDefaultTerminal(const QString &identifier)
{
    m_settings.setDefaultTerminal(identifier);
    Q_EMIT integrationsChanged();
}

void AppModel::setSheetShown(Workspace::Sheet sheet, bool shown)
{
    m_workspace->setSheetShown(sheet, shown);
}

void AppModel::dismissError()
{
    m_activity->dismissError();
}

void AppModel::openFolders(const QStringList &folders)
{
    struct Opened {
        QList<Repository> repositories;
        QStringList refusals;
    };
    const QString activity = tr("Opening repositories");
    m_operations.perform(
        activity,
        [folders] {
            Opened opened;
            for (const QString &folder : folders) {
                try {
                    opened.repositories.append(detectRepository(QDir::cleanPath(folder)));
                } catch (const Failure &failure) {
                    opened.refusals.append(failure.description());
                }
            }
            return opened;
        },
        [this, activity](const Opened &opened) {
            for (const Repository &repository : opened.repositories)
                m_library->add(repository);
            if (!opened.repositories.isEmpty())
                select(opened.repositories.last());
            if (!opened.refusals.isEmpty())
                m_activity->present(activity, opened.refusals.join(u'\n'));
        });
}

} // namespace tillery
