#pragma once

#include <QWidget>

class QStackedWidget;

namespace tillery {

class AppModel;
class ChangesView;
class HistoryView;
class ShelvesView;
class ViewSettings;
class WorkspaceTabHeader;
class WorkspaceToolbar;

// The detail column for the selected repository: its toolbar, the tab header,
// and the page of the current tab.
class RepositoryWorkspace final : public QWidget {
    Q_OBJECT

public:
    RepositoryWorkspace(AppModel &model, ViewSettings &settings, QWidget *parent = nullptr);

    WorkspaceToolbar *toolbar() const { return m_toolbar; }
    WorkspaceTabHeader *tabHeader() const { return m_tabs; }
    ChangesView *changesView() const { return m_changes; }
    HistoryView *historyView() const { return m_history; }
    QWidget *currentPage() const;

private:
    void update();

    AppModel &m_model;
    WorkspaceToolbar *m_toolbar;
    WorkspaceTabHeader *m_tabs;
    QStackedWidget *m_pages;
    ChangesView *m_changes;
    HistoryView *m_history;
    ShelvesView *m_shelves;
};

} // namespace tillery
