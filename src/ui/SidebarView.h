#pragma once

#include <QWidget>

class QMenu;
class QModelIndex;
class QToolButton;
class QTreeView;

namespace tillery {

class ActivityRow;
class AppModel;
class SidebarModel;

// The left column: the "Repositories" section with its folders and rows,
// then the add menu and the activity row.
class SidebarView final : public QWidget {
    Q_OBJECT

public:
    explicit SidebarView(AppModel &model, QWidget *parent = nullptr);

    // The context menu of a row (the caller owns it); empty for the section.
    QMenu *contextMenuFor(const QModelIndex &index);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void activate(const QModelIndex &index);
    void showSelection();
    void expandFolders();

    AppModel &m_model;
    SidebarModel *m_sidebar;
    QTreeView *m_tree;
    QToolButton *m_add;
    ActivityRow *m_activity;
};

} // namespace tillery
