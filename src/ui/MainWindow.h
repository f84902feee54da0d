#pragma once

#include "model/Workspace.h"
#include "ui/SettingsWindow.h"

#include <QDialog>
#include <QMainWindow>
#include <QMessageBox>
#include <QPointer>

class QAction;
class QSplitter;
class QStackedWidget;

namespace tillery {

class AppModel;
class RepositoryWorkspace;
class SidebarView;
class ViewSettings;
class WelcomeView;

// The one main window: the sidebar and the selected repository's workspace
// (or the start page), the menus, the error alert and the sheets.
class MainWindow final : public QMainWindow {
    Q_OBJECT

public:
    MainWindow(AppModel &model, ViewSettings &settings, QWidget *parent = nullptr);

    RepositoryWorkspace *workspace() const { return m_workspace; }
    QSplitter *splitter() const { return m_splitter; }
    QDialog *sheet(Workspace::Sheet sheet) const;
    // Shows the Settings window, opening it when it is not open yet.
    void openSettings();
    SettingsWindow *settingsWindow() const { return m_settingsWindow; }

private:
    void buildMenus();
    void updateActions();
    void updatePage();
    void showError();
    void showSheets();
    // The selected working file as an absolute path, else the repository.
    QString editorTarget() const;

    AppModel &m_model;
    ViewSettings &m_settings;
    QSplitter *m_splitter;
    SidebarView *m_sidebar;
    QStackedWidget *m_detail;
    WelcomeView *m_welcome;
    RepositoryWorkspace *m_workspace;
    QPointer<QMessageBox> m_errorAlert;
    QPointer<QDialog> m_sheets[4];
    QPointer<SettingsWindow> m_settingsWindow;

    QList<QAction *> m_repositoryActions;
    QList<QAction *> m_operationActions;
    QAction *m_rename = nullptr;
    QAction *m_delete = nullptr;
    QAction *m_squashMerge = nullptr;
    QAction *m_undoLastCommit = nullptr;
    QAction *m_updateFromDefault = nullptr;
    QAction *m_goToChangeset = nullptr;
    QAction *m_openInEditor = nullptr;
};

} // namespace tillery
