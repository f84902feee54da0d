#pragma once

#include <QWidget>

class QLabel;
class QMenu;
class QToolButton;

namespace tillery {

class AppModel;

// The bar over the selected repository: its name, the branch picker (the
// bookmarks or branches, the active one checked; choosing one switches to
// it), then fetch, pull, push (or "Publish this branch" while the current
// branch has no counterpart on the remote), open in terminal, open in the
// editor and refresh. Everything waits while an operation runs.
class WorkspaceToolbar final : public QWidget {
    Q_OBJECT

public:
    explicit WorkspaceToolbar(AppModel &model, QWidget *parent = nullptr);

    QLabel *title() const { return m_title; }
    QToolButton *branchPicker() const { return m_branch; }
    QToolButton *fetchButton() const { return m_fetch; }
    QToolButton *pullButton() const { return m_pull; }
    QToolButton *pushButton() const { return m_push; }
    QToolButton *terminalButton() const { return m_terminal; }
    QToolButton *editorButton() const { return m_editor; }
    QToolButton *refreshButton() const { return m_refresh; }
    // Fills the picker's menu from the repository as it is now.
    QMenu *branchMenu();

    // The name the picker shows: the active bookmark, else the branch.
    static QString currentName(const AppModel &model);

private:
    void update();

    AppModel &m_model;
    QLabel *m_title;
    QToolButton *m_branch;
    QToolButton *m_fetch;
    QToolButton *m_pull;
    QToolButton *m_push;
    QToolButton *m_terminal;
    QToolButton *m_editor;
    QToolButton *m_refresh;
};

} // namespace tillery
