#include "ui/MainWindow.h"

#include "ui/TextFieldKeys.h"

#include "model/AppModel.h"
#include "model/Desktop.h"
#include "ui/AboutSheet.h"
#include "ui/CloneSheet.h"
#include "ui/CommandLogWindow.h"
#include "ui/CreateBookmarkSheet.h"
#include "ui/HistoryView.h"
#include "ui/RepositorySettingsSheet.h"
#include "ui/RepositoryWorkspace.h"
#include "ui/SettingsWindow.h"
#include "ui/ShownText.h"
#include "ui/SidebarView.h"
#include "ui/ViewSettings.h"
#include "ui/WelcomeView.h"

#include <QApplication>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMenuBar>
#include <QMessageBox>
#include <QSplitter>
#include <QStackedWidget>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

// The control key on macOS; elsewhere Ctrl stands in for both.
QKeySequence controlKey(Qt::Key key)
{
#ifdef Q_OS_MACOS
    return QKeySequence(Qt::META | key);
#else
    return QKeySequence(Qt::CTRL | key);
#endif
}

} // namespace

MainWindow::MainWindow(AppModel &model, ViewSettings &settings, QWidget *parent)
    : QMainWindow(parent)
    , m_model(model)
    , m_settings(settings)
    , m_splitter(new QSplitter(Qt::Horizontal))
    , m_sidebar(new SidebarView(model))
    , m_detail(new QStackedWidget)
    , m_welcome(new WelcomeView(model, settings))
    , m_workspace(new RepositoryWorkspace(model, settings))
{
    setWindowTitle(u"Tillery"_s);
    setMinimumSize(940, 620);
    resize(1200, 760);
    m_sidebar->setMinimumWidth(180);
    m_sidebar->setMaximumWidth(300);
    m_detail->addWidget(m_welcome);
    m_detail->addWidget(m_workspace);
    m_splitter->addWidget(m_sidebar);
    m_splitter->addWidget(m_detail);
    m_splitter->setStretchFactor(0, 0);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setSizes({220, 980});
    m_splitter->setChildrenCollapsible(false);
    setCentralWidget(m_splitter);
    buildMenus();
    qApp->installEventFilter(new TextFieldKeys(this));

    connect(&model.workspace(), &Workspace::selectedRepositoryChanged, this, [this] {
        updatePage();
        updateActions();
    });
    connect(&model.workspace(), &Workspace::snapshotChanged, this, &MainWindow::updateActions);
    connect(&model.activityState(), &ActivityState::isBusyChanged, this, &MainWindow::updateActions);
    connect(&model.activityState(), &ActivityState::presentedErrorChanged, this, &MainWindow::showError);
    connect(&model.workspace(), &Workspace::sheetsChanged, this, &MainWindow::showSheets);
    connect(&model, &AppModel::integrationsChanged, this, &MainWindow::updateActions);
    connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive && m_model.workspace().selectedRepository()
            && !m_model.activityState().isBusy())
            m_model.refresh();
    });
    updatePage();
    updateActions();
    showError();
    showSheets();
}

void MainWindow::buildMenus()
{
    QMenuBar *bar = menuBar();
#ifdef Q_OS_MACOS
    bar->setNativeMenuBar(true);
#else
    // In the window, even on desktops that could take it into a global menu.
    bar->setNativeMenuBar(false);
#endif
    const auto add = [this](QMenu *menu, const QString &label, const QKeySequence &shortcut,
                            std::function<void()> action) {
        QAction *item = menu->addAction(label);
        item->setShortcut(shortcut);
        item->setShortcutContext(Qt::ApplicationShortcut);
        connect(item, &QAction::triggered, this, std::move(action));
        return item;
    };
    AppModel &model = m_model;

    QMenu *appMenu = bar->addMenu(u"Tillery"_s);
    QAction *about =
        add(appMenu, tr("About Tillery"), {}, [&model] { model.setSheetShown(Workspace::Sheet::about, true); });
    about->setMenuRole(QAction::AboutRole);
    QAction *settings =
        add(appMenu, tr("Settings…"), QKeySequence(Qt::CTRL | Qt::Key_Comma), [this] { openSettings(); });
    settings->setMenuRole(QAction::PreferencesRole);
    appMenu->addSeparator();
    QAction *quit = add(appMenu, tr("Quit Tillery"), QKeySequence::Quit, [this] { close(); });
    quit->setMenuRole(QAction::QuitRole);

    QMenu *file = bar->addMenu(tr("File"));
    add(file, tr("New Repository…"), QKeySequence(Qt::CTRL | Qt::Key_N), [&model] { model.createRepository(); });
    add(file, tr("Add Local Repository…"), QKeySequence(Qt::CTRL | Qt::Key_O), [&model] { model.addRepository(); });
    file->addSeparator();
    add(file, tr("Clone Repository…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_O),
        [&model] { model.setSheetShown(Workspace::Sheet::clone, true); });

    QMenu *repository = bar->addMenu(tr("Repository"));
    m_operationActions << add(repository, tr("Push"), QKeySequence(Qt::CTRL | Qt::Key_P), [&model] {
        model.push();
    }) << add(repository, tr("Pull"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_P), [&model] {
        model.pull();
    }) << add(repository, tr("Fetch"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_T), [&model] { model.fetch(); });
    m_repositoryActions << add(
        repository, tr("Remove Repository…"), QKeySequence(Qt::CTRL | Qt::Key_Backspace), [&model] {
            if (const std::optional<Repository> &selected = model.workspace().selectedRepository())
                model.confirmRemove(*selected);
        });
    repository->addSeparator();
    m_repositoryActions << add(repository, tr("Open in Terminal"), controlKey(Qt::Key_QuoteLeft),
                               [&model] { model.openInTerminal(); })
                        << add(repository, fileManagerLabel(tr("Show in Finder")),
                               QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_F), [&model] {
                                   if (const std::optional<Repository> &selected =
                                           model.workspace().selectedRepository())
                                       model.reveal(selected->path);
                               });
    m_openInEditor = add(repository, model.editorTitle(), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_A),
                         [this] { m_model.openInEditor(editorTarget()); });
    m_repositoryActions << m_openInEditor
                        << add(repository, tr("Open With…"), QKeySequence(Qt::CTRL | Qt::ALT | Qt::SHIFT | Qt::Key_A),
                               [this] {
                                   const QString application =
                                       QFileDialog::getOpenFileName(this, tr("Open With"), u"/usr/bin"_s);
                                   if (!application.isEmpty())
                                       m_model.openWith(editorTarget(), application);
                               });
    repository->addSeparator();
    m_repositoryActions << add(repository, tr("Find in History"), QKeySequence::Find, [this] {
        m_model.setTab(WorkspaceTab::history);
        m_workspace->historyView()->focusSearch();
    });
    m_goToChangeset = add(repository, tr("Go to Changeset…"), QKeySequence(Qt::CTRL | Qt::Key_L), [this] {
        m_model.setTab(WorkspaceTab::history);
        m_model.goToChangeset();
    });
    m_repositoryActions << m_goToChangeset;
    repository->addSeparator();
    m_operationActions << add(repository, tr("Refresh"), QKeySequence(Qt::CTRL | Qt::Key_R),
                              [&model] { model.refresh(); });
    m_repositoryActions << add(repository, tr("Repository Settings…"), {},
                               [&model] { model.setSheetShown(Workspace::Sheet::remote, true); });
    connect(repository, &QMenu::aboutToShow, this, &MainWindow::updateActions);

    QMenu *branch = bar->addMenu(tr("Branch"));
    m_operationActions << add(branch, tr("New Branch…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_N),
                              [&model] { model.setSheetShown(Workspace::Sheet::bookmark, true); });
    const auto activeBookmark = [&model]() -> std::optional<Bookmark> {
        for (const Bookmark &bookmark : model.workspace().snapshot().bookmarks) {
            if (bookmark.active)
                return bookmark;
        }
        return std::nullopt;
    };
    m_rename = add(branch, tr("Rename…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_R), [&model, activeBookmark] {
        if (const std::optional<Bookmark> bookmark = activeBookmark())
            model.renameBookmark(*bookmark);
    });
    m_delete = add(branch, tr("Delete…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_D), [&model, activeBookmark] {
        if (const std::optional<Bookmark> bookmark = activeBookmark())
            model.deleteBookmark(*bookmark);
    });
    branch->addSeparator();
    m_operationActions << add(branch, tr("Discard All Changes…"),
                              QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Backspace), [&model] { model.discardAll(); })
                       << add(branch, tr("Stash All Changes"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S),
                              [&model] { model.stashAll(); });
    m_undoLastCommit = add(branch, tr("Undo Last Commit…"), {}, [&model] { model.undoLastCommit(); });
    branch->addSeparator();
    m_updateFromDefault = add(branch, tr("Update from default"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_U),
                              [&model] { model.updateFromDefaultBranch(); });
    m_operationActions << m_updateFromDefault
                       << add(branch, tr("Compare to Branch"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_B),
                              [&model] { model.compare(); })
                       << add(branch, tr("Merge into Current Branch…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_M),
                              [&model] { model.merge(); })
                       << (m_squashMerge =
                               add(branch, tr("Squash and Merge into Current Branch…"),
                                   QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_H), [&model] { model.squashMerge(); }))
                       << add(branch, tr("Rebase Current Branch…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E),
                              [&model] { model.rebase(); });
    connect(branch, &QMenu::aboutToShow, this, &MainWindow::updateActions);

    QMenu *view = bar->addMenu(tr("View"));
    add(view, tr("Command Log"), QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_L),
        [this] { showCommandLog(m_model, this); });
}

void MainWindow::openSettings()
{
    if (!m_settingsWindow) {
        m_settingsWindow = new SettingsWindow(m_model, m_settings, this);
        m_settingsWindow->setAttribute(Qt::WA_DeleteOnClose);
    }
    m_settingsWindow->show();
    m_settingsWindow->raise();
    m_settingsWindow->activateWindow();
}

void MainWindow::updateActions()
{
    const bool selected = m_model.workspace().selectedRepository().has_value();
    const bool free = selected && !m_model.activityState().isBusy();
    for (QAction *action : std::as_const(m_repositoryActions))
        action->setEnabled(selected);
    for (QAction *action : std::as_const(m_operationActions))
        action->setEnabled(free);
    const bool hasActive = m_model.workspace().snapshot().activeBookmark.has_value();
    m_rename->setEnabled(free && hasActive);
    m_delete->setEnabled(free && hasActive);
    m_squashMerge->setEnabled(free && m_model.traits().hasSquashMerge);
    m_undoLastCommit->setEnabled(m_model.canUndoLastCommit());
    m_updateFromDefault->setText(menuLabel(tr("Update from %1").arg(m_model.workspace().snapshot().defaultBranch)));
    m_openInEditor->setText(menuLabel(m_model.editorTitle()));
    m_goToChangeset->setText(tr("Go to %1…").arg(capitalized(m_model.traits().changeset)));
}

void MainWindow::updatePage()
{
    m_detail->setCurrentWidget(m_model.workspace().selectedRepository() ? static_cast<QWidget *>(m_workspace)
                                                                        : m_welcome);
}

QDialog *MainWindow::sheet(Workspace::Sheet sheet) const
{
    return m_sheets[static_cast<int>(sheet)];
}

QString MainWindow::editorTarget() const
{
    const std::optional<Repository> &repository = m_model.workspace().selectedRepository();
    if (!repository)
        return QString();
    const std::optional<WorkingFile> &file = m_model.diffSelection().selectedFile();
    return file && m_model.workspace().tab() == WorkspaceTab::changes ? repository->path + u'/' + file->path
                                                                      : repository->path;
}

void MainWindow::showError()
{
    const std::optional<PresentedError> &error = m_model.activityState().presentedError();
    if (!error) {
        if (m_errorAlert)
            m_errorAlert->close();
        return;
    }
    if (!m_errorAlert) {
        m_errorAlert = new QMessageBox(this);
        m_errorAlert->setIcon(QMessageBox::Warning);
        m_errorAlert->setStandardButtons(QMessageBox::Ok);
        m_errorAlert->setAttribute(Qt::WA_DeleteOnClose);
        connect(m_errorAlert, &QMessageBox::finished, this, [this] { m_model.dismissError(); });
    }
    // A newer error replaces the shown one.
    m_errorAlert->setWindowTitle(error->title);
    m_errorAlert->setText(error->title);
    m_errorAlert->setInformativeText(error->message);
    // Messages carry names and tool output, which must never be read as markup.
    showMessageAsPlainText(*m_errorAlert);
    m_errorAlert->open();
}

void MainWindow::showSheets()
{
    const auto make = [this](Workspace::Sheet sheet) -> QDialog * {
        switch (sheet) {
        case Workspace::Sheet::clone:
            return new CloneSheet(m_model, this);
        case Workspace::Sheet::bookmark:
            return new CreateBookmarkSheet(m_model, this);
        case Workspace::Sheet::remote:
            return new RepositorySettingsSheet(m_model, this);
        case Workspace::Sheet::about:
            return new AboutSheet(this);
        }
        return nullptr;
    };
    for (const Workspace::Sheet sheet :
         {Workspace::Sheet::clone, Workspace::Sheet::bookmark, Workspace::Sheet::remote, Workspace::Sheet::about}) {
        QPointer<QDialog> &dialog = m_sheets[static_cast<int>(sheet)];
        const bool shown = m_model.workspace().isSheetShown(sheet);
        if (shown && !dialog) {
            dialog = make(sheet);
            dialog->setAttribute(Qt::WA_DeleteOnClose);
            connect(dialog, &QDialog::finished, this, [this, sheet] { m_model.setSheetShown(sheet, false); });
            dialog->open();
        } else if (!shown && dialog) {
            dialog->close();
        }
    }
}

} // namespace tillery
