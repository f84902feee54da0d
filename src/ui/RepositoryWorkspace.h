#pragma once

#include <QWidget>

class QLabel;
class QStackedWidget;

namespace tillery {

class AppModel;
class ChangesView;
class EmptyState;
class ViewSettings;
class WorkspaceTabHeader;

// The detail column for the selected repository: its title, the tab header,
// and the page of the current tab.
class RepositoryWorkspace final : public QWidget {
    Q_OBJECT

public:
    RepositoryWorkspace(AppModel &model, ViewSettings &settings, QWidget *parent = nullptr);

    WorkspaceTabHeader *tabHeader() const { return m_tabs; }
    ChangesView *changesView() const { return m_changes; }
    QWidget *currentPage() const;

private:
    void update();

    AppModel &m_model;
    QLabel *m_title;
    WorkspaceTabHeader *m_tabs;
    QStackedWidget *m_pages;
    ChangesView *m_changes;
    EmptyState *m_history;
};

} // namespace tillery
