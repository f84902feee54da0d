#pragma once

#include "model/ActivityState.h"
#include "model/BranchActions.h"
#include "model/Background.h"
#include "model/Desktop.h"
#include "model/DiffSelection.h"
#include "model/ModelSettings.h"
#include "model/OpenActions.h"
#include "model/Prompts.h"
#include "model/RepositoryIcons.h"
#include "model/RepositoryLibrary.h"
#include "model/VersionControl.h"
#include "model/WorkingCopyActions.h"
#include "model/Workspace.h"

#include <QObject>
#include <QSettings>
#include <QThreadPool>
#include <QUrl>

#include <atomic>
#include <functional>
#include <memory>

namespace tillery {

// What the model needs from its surroundings.
struct AppModelServices {
    // The application's own folder for repository pictures.
    static QString defaultIconFolder();

    QSettings &settings;
    Prompts &prompts;
    Desktop &desktop;
    // Where custom repository pictures are kept.
    QString iconFolder;
};

// The one object every view reads and every command calls. It lives on the
// main thread and is a facade over its parts: the repository library and
// sidebar, the icons, the workspace of the selected repository, the diff
// selection and the activity state. Reading goes through the parts (each
// field has an accessor and a change signal there); every change goes
// through the model's operations. Tool work runs off the main thread inside
// perform(), whose results come back to the main thread.
class AppModel final : public QObject {
    Q_OBJECT

public:
    explicit AppModel(const AppModelServices &services, QObject *parent = nullptr);
    ~AppModel() override;

    // Reads the settings, loads icons and repositories, restores the last
    // selection and refreshes it.
    void start();

    const RepositoryLibrary &library() const { return *m_library; }
    const RepositoryIcons &icons() const { return *m_icons; }
    const Workspace &workspace() const { return *m_workspace; }
    const DiffSelection &diffSelection() const { return *m_diffSelection; }
    const ActivityState &activityState() const { return *m_activity; }
    ModelSettings &settings() { return m_settings; }
    // How many pieces of background work are running now.
    int runningBackgroundWork() const { return m_pool.threads()->activeThreadCount(); }

    // Repositories.
    void select(const Repository &repository);
    void refresh();
    void addRepository();
    void addRepositories(const QList<QUrl> &urls);
    void confirmRemove(const Repository &repository);
    void remove(const Repository &repository);

    // Sidebar.
    void selectSidebarFolder(const std::optional<QUuid> &folderId);
    void createFolder(const std::optional<QString> &repositoryPath = std::nullopt);
    void moveIntoFolder(const QString &repositoryPath, const QUuid &folderId);
    void moveToTopLevel(const QString &repositoryPath);
    void moveRepositoryBefore(const QString &repositoryPath, qsizetype topLevelIndex);
    void renameFolder(const QUuid &folderId);
    void removeFolder(const QUuid &folderId);
    void sortSidebarByName();

    // Icons. Reads, decodes and stores the picture off the main thread; `done` hears
    // whether it was a picture that could be stored (nothing changes if not).
    void setRepositoryIcon(const QString &repositoryPath, const QString &pictureFile,
                           const std::function<void(bool)> &done = {});
    void removeRepositoryIcon(const QString &repositoryPath);

    // Selections and the diff pane.
    void selectFile(const WorkingFile &file);
    void selectChangeFiles(const QSet<WorkingFile> &files);
    void selectChangeset(const Changeset &changeset);
    void selectChangesetFile(const WorkingFile &file);
    void setSelectedFilePaths(const QSet<QString> &paths);
    void setTab(WorkspaceTab tab);

    // Working-copy actions.
    bool canCommit() const { return m_workingCopy.canCommit(); }
    void commit() { m_workingCopy.commit(); }
    void discardSelected() { m_workingCopy.discardSelected(); }
    void discardAll() { m_workingCopy.discardAll(); }
    void stashAll() { m_workingCopy.stashAll(); }

    // Bookmark or branch, merge and remote actions.
    void createBookmark(const QString &name) { m_branches.createBookmark(name); }
    void renameBookmark(const Bookmark &bookmark) { m_branches.renameBookmark(bookmark); }
    void deleteBookmark(const Bookmark &bookmark) { m_branches.deleteBookmark(bookmark); }
    void switchTo(const Bookmark &bookmark, const QString &activity) { m_branches.switchTo(bookmark, activity); }
    void updateFromDefaultBranch() { m_branches.updateFromDefaultBranch(); }
    void merge() { m_branches.merge(); }
    void squashMerge() { m_branches.squashMerge(); }
    void rebase() { m_branches.rebase(); }
    void compare() { m_branches.compare(); }
    void pull() { m_branches.pull(); }
    void fetch() { m_branches.fetch(); }
    void push() { m_branches.push(); }
    void publishBranch() { m_branches.publishBranch(); }
    void saveRemotePath(const QString &address) { m_branches.saveRemotePath(address); }
    void clone(const QString &source, const QString &destination, RepositoryKind kind)
    {
        m_branches.clone(source, destination, kind);
    }
    void createRepository() { m_branches.createRepository(); }

    // The ignore file, editors, terminals and the desktop.
    void addIgnoreEntry(const QString &pattern) { m_workingCopy.addIgnoreEntry(pattern); }
    void openInEditor(const QString &targetPath) { m_open.openInEditor(targetPath); }
    void openInTerminal() { m_open.openInTerminal(); }
    void openWith(const QString &targetPath, const QString &applicationPath)
    {
        m_open.openWith(targetPath, applicationPath);
    }
    QString editorTitle() const { return m_open.editorTitle(); }
    // The Settings window's choices of editor and terminal; views that name
    // the editor hear of it through integrationsChanged().
    void setEditorChoice(const EditorChoice &choice);
    void setDefaultTerminal(const QString &identifier);
    void reveal(const QString &path) { m_open.reveal(path); }
    void openWithDefaultApplication(const QString &path) { m_open.openWithDefaultApplication(path); }
    void copyPaths(const QStringList &paths) { m_open.copyPaths(paths); }
    void copyText(const QString &text) { m_open.copyText(text); }
    // An error shown in the alert.
    void presentError(const QString &title, const QString &message) { m_activity->present(title, message); }

    // Runs `work` off the main thread without the busy flag and hands its
    // result to `done` on the main thread.
    template <typename Work, typename OnDone>
    void runQuietly(Work work, OnDone done)
    {
        runInBackground(&m_pool, this, std::move(work), [done = std::move(done)](auto outcome) mutable {
            if (outcome.succeeded())
                done(*outcome.value);
        });
    }
    void showComparison(const PresentedDiffDocument &document, const QString &title)
    {
        m_diffSelection->showComparison(document, title);
    }

    // The commit box and the sheets.
    void setCommitSummary(const QString &summary);
    void setCommitDescription(const QString &description);
    void setCommitUsername(const QString &name);
    void setSheetShown(Workspace::Sheet sheet, bool shown);
    void dismissError();

    // The wrapper of every long operation: sets the busy flag and the activity
    // text, runs `work` on a worker (it must only use value copies), and on
    // the main thread clears them and calls `onSuccess` with the result, or
    // `onFailure` and presents the error titled with the activity text.
    // A failure that `wasCancelled` confirms is not presented.
    template <typename Work, typename OnSuccess>
    void perform(const QString &activity, Work work, OnSuccess onSuccess, std::function<void()> onFailure = {},
                 bool showsBusy = true, std::function<bool()> wasCancelled = {})
    {
        m_activity->begin(activity, showsBusy);
        runInBackground(&m_pool, this, std::move(work),
                        [this, activity, showsBusy, onSuccess = std::move(onSuccess), onFailure = std::move(onFailure),
                         wasCancelled = std::move(wasCancelled)](auto outcome) mutable {
                            m_activity->end(showsBusy);
                            if (outcome.succeeded()) {
                                onSuccess(std::move(*outcome.value));
                                return;
                            }
                            if (onFailure)
                                onFailure();
                            if (!wasCancelled || !wasCancelled())
                                m_activity->present(activity, outcome.failure);
                        });
    }

    // Like perform, for work that talks to a remote: `work` receives a
    // RunControl whose progress phrases appear in the activity text ("Cloning
    // repository — Receiving objects: 45%"), and which stops the tool when
    // cancelOperation() is called. A cancelled operation ends quietly: no
    // error is presented.
    template <typename Work, typename OnSuccess>
    void performRemote(const QString &activity, Work work, OnSuccess onSuccess)
    {
        auto cancelRequested = std::make_shared<std::atomic<bool>>(false);
        m_cancelRequested = cancelRequested;
        m_activity->setCancellable(true);
        RunControl control;
        control.isCancelled = [cancelRequested] { return cancelRequested->load(); };
        control.progress = progressReporter(activity);
        perform(
            activity, [work = std::move(work), control] { return work(control); },
            [this, onSuccess = std::move(onSuccess)](auto value) mutable {
                m_activity->setCancellable(false);
                onSuccess(std::move(value));
            },
            [this] { m_activity->setCancellable(false); }, true,
            [cancelRequested] { return cancelRequested->load(); });
    }

    // Stops the running cancellable operation, if there is one.
    void cancelOperation();

Q_SIGNALS:
    void integrationsChanged();

public:
    // The success step of adding, cloning and creating a repository.
    void adoptRepository(const Repository &repository);

private:
    std::function<void(const QString &)> progressReporter(const QString &activity);
    void applySnapshot(const Repository &repository, const RepositorySnapshot &snapshot);
    void rememberSelection();
    void clearRepositoryState();
    bool isSelected(const Repository &repository) const;

    ModelSettings m_settings;
    Prompts &m_prompts;
    Desktop &m_desktop;
    BackgroundPool m_pool;
    ActivityState *m_activity;
    RepositoryLibrary *m_library;
    RepositoryIcons *m_icons;
    Workspace *m_workspace;
    DiffSelection *m_diffSelection;
    std::shared_ptr<std::atomic<bool>> m_cancelRequested;
    WorkingCopyActions m_workingCopy;
    BranchActions m_branches;
    OpenActions m_open;
};

} // namespace tillery
