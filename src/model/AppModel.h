#pragma once

#include "model/ActionContext.h"
#include "model/ActivityState.h"
#include "model/Annotation.h"
#include "model/Background.h"
#include "model/BranchActions.h"
#include "model/Desktop.h"
#include "model/ChosenLines.h"
#include "model/CommandLogFeed.h"
#include "model/DiffSelection.h"
#include "model/HistoryBrowser.h"
#include "model/HistoryNavigation.h"
#include "model/ModelSettings.h"
#include "model/OpenActions.h"
#include "model/Operations.h"
#include "model/Prompts.h"
#include "model/SecretStore.h"
#include "model/RepositoryIcons.h"
#include "model/RepositoryLibrary.h"
#include "model/ConflictActions.h"
#include "model/ShelfActions.h"
#include "model/ShelfSelection.h"
#include "model/VersionControl.h"
#include "model/LastCommitActions.h"
#include "model/WorkingCopyActions.h"
#include "model/Workspace.h"
#include "model/RepositoryWatcher.h"

#include <QObject>
#include <QSettings>
#include <QThreadPool>
#include <QUrl>

#include <functional>

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
    // Where remembered passwords are kept; nothing: the desktop's secret store.
    SecretStore *secrets = nullptr;
    // How many working folders live refresh may watch, short of the system's own limit.
    std::optional<int> watchedFolderLimit = std::nullopt;
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
    const ChosenLines &chosenLines() const { return *m_chosenLines; }
    // Lines of the diff on screen chosen for the commit, or left out.
    void setShownLinesChosen(qsizetype first, qsizetype last, bool chosen)
    {
        m_chosenLines->setShownLinesChosen(first, last, chosen);
    }
    const HistoryBrowser &historyBrowser() const { return *m_historyBrowser; }
    const ActivityState &activityState() const { return *m_activity; }
    const Annotation &annotation() const { return *m_annotation; }
    ModelSettings &settings() { return m_settings; }
    // The words and commands of the selected repository's kind (Mercurial's
    // while none is selected).
    KindTraits traits() const;
    // The selected repository's ignore file (".hgignore" or ".gitignore").
    QString ignoreFileName() const;
    // The address of the remote Pull and Push use, its password masked.
    QString shownRemoteAddress() const;
    // How many pieces of background work are running now.
    int runningBackgroundWork() const { return m_pool.threads()->activeThreadCount(); }
    // No background work runs and no operation or load waits for its result.
    bool isIdle() const;

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
    // History: the next older page, a search typed into its field (an empty
    // one returns to the whole history), a file's history, and a changeset
    // asked for by name.
    const HistoryNavigation &historyNavigation() const { return *m_historyNavigation; }
    void loadOlderHistory() { m_historyBrowser->loadMore(); }
    void searchHistory(const QString &text) { m_historyNavigation->search(text); }
    void showFileHistory(const QString &path);
    void goToChangeset() { m_historyNavigation->goToChangeset(); }
    // On History, loading older pages until it shows.
    void showChangesetInHistory(const QString &node);
    // Shows the file annotated in place of the page's diff: on History as of
    // the selected changeset, on Changes as of the working copy's parent.
    void annotate(const QString &path) { m_annotation->annotate(path); }
    void closeAnnotation() { m_annotation->close(); }

    // Working-copy actions.
    bool canCommit() const { return m_workingCopy.canCommit(); }
    void commit() { m_workingCopy.commit(); }
    // Folders given from outside the window (the command line, a later
    // start): each repository is added if it is new and the last one is
    // selected; the folders that hold none are named in one error.
    void openFolders(const QStringList &folders);
    // Every tool command run, for the Command Log window.
    CommandLogFeed &commandLog() { return *m_commandLog; }
    // Live refresh of the selected repository.
    const RepositoryWatcher &repositoryWatcher() const { return *m_watcher; }
    // "Amend Last Commit" by the commit button, and "Undo Last Commit…".
    void setAmendingLastCommit(bool amending) { m_lastCommit.setAmending(amending); }
    bool canUndoLastCommit() const { return m_lastCommit.canUndoLastCommit(); }
    void undoLastCommit() { m_lastCommit.undoLastCommit(); }
    void discardSelected() { m_workingCopy.discardSelected(); }
    // Undoes the added and removed lines among unified lines first to last of
    // the diff on screen (a hunk's header for the hunk), after asking.
    void discardShownLines(qsizetype first, qsizetype last) { m_workingCopy.discardShownLines(first, last); }
    // Changes in white space can be left out of diffs only while no file has
    // some of its lines chosen, which were chosen in a diff with them.
    bool canChangeDiffWhitespace() const
    {
        return m_diffSelection->whitespace() == WhitespaceChanges::ignored || !m_chosenLines->hasPartlyChosen();
    }
    void setDiffWhitespace(WhitespaceChanges whitespace)
    {
        if (canChangeDiffWhitespace())
            m_diffSelection->setWhitespace(whitespace);
    }
    void discardAll() { m_workingCopy.discardAll(); }
    void stashAll() { m_workingCopy.stashAll(); }

    // Shelves or stash entries: the Shelves page's selection and actions.
    const ShelfSelection &shelfSelection() const { return *m_shelfSelection; }
    void selectShelf(const Shelf &shelf) { m_shelfSelection->selectShelf(shelf); }
    void selectShelfFile(const WorkingFile &file) { m_shelfSelection->selectFile(file); }
    void shelveSelectedFiles() { m_shelves.shelveSelectedFiles(); }
    void restoreShelf(bool keep) { m_shelves.restore(keep); }
    void deleteShelf() { m_shelves.deleteSelected(); }

    // The operation in progress and its conflicts.
    const ConflictActions &conflicts() const { return m_conflicts; }
    void continueOperation() { m_conflicts.continueOperation(); }
    void abortOperation() { m_conflicts.abortOperation(); }
    void takeConflictSide(ConflictSide side) { m_conflicts.takeSide(side); }
    void markSelectedResolved(bool resolved) { m_conflicts.markSelected(resolved); }
    void openInMergeTool() { m_conflicts.openInMergeTool(); }

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
    // Pushing publishes a branch that has no upstream yet.
    void publishBranch() { m_branches.push(); }
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
    void presentError(const QString &title, const QString &message) { m_operations.presentError(title, message); }

    // The commit box and the sheets.
    void setCommitSummary(const QString &summary);
    void setCommitDescription(const QString &description);
    void setCommitUsername(const QString &name);
    void setSheetShown(Workspace::Sheet sheet, bool shown);
    void dismissError();

    // Stops the running cancellable operation, if there is one.
    void cancelOperation() { m_operations.cancel(); }

Q_SIGNALS:
    void integrationsChanged();

public:
    // The success step of adding, cloning and creating a repository.
    void adoptRepository(const Repository &repository);

private:
    // A refresh's result: the snapshot and its history's lanes, laid out off the main thread.
    struct LoadedRepository {
        RepositorySnapshot snapshot;
        HistoryGraphLayout historyLayout;
    };
    void applySnapshot(const Repository &repository, const LoadedRepository &loaded);
    void rememberSelection();
    void clearRepositoryState();
    bool isSelected(const Repository &repository) const;

    ModelSettings m_settings;
    Prompts &m_prompts;
    BackgroundPool m_pool;
    ActivityState *m_activity;
    RepositoryLibrary *m_library;
    RepositoryIcons *m_icons;
    Workspace *m_workspace;
    HistoryBrowser *m_historyBrowser;
    DiffSelection *m_diffSelection;
    ChosenLines *m_chosenLines;
    ShelfSelection *m_shelfSelection;
    Annotation *m_annotation;
    Operations m_operations;
    ActionContext m_context;
    WorkingCopyActions m_workingCopy;
    LastCommitActions m_lastCommit;
    ShelfActions m_shelves;
    ConflictActions m_conflicts;
    BranchActions m_branches;
    OpenActions m_open;
    HistoryNavigation *m_historyNavigation;

    // Credentials asked for while remote commands run.
    std::unique_ptr<SecretStore> m_desktopSecrets;
    CredentialBroker *m_credentials;
    RepositoryWatcher *m_watcher = nullptr;
    CommandLogFeed *m_commandLog = new CommandLogFeed(this);
};

} // namespace tillery
