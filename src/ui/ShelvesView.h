#pragma once

#include <QTimer>
#include <QWidget>

class QLabel;
class QListView;
class QPushButton;
class QStackedWidget;

namespace tillery {

class AppModel;
class ChangedFilesModel;
class DiffView;
class EmptyState;
class ShelfListModel;
class ViewSettings;

// The Shelves (or Stashes) page: the list of shelves with their ages, the
// selected one's files and the actions on it, and the diff of its selected
// file.
class ShelvesView final : public QWidget {
    Q_OBJECT

public:
    ShelvesView(AppModel &model, ViewSettings &settings, QWidget *parent = nullptr);

    QListView *list() const { return m_list; }
    QListView *fileList() const { return m_fileList; }

private:
    void update();
    void showSelection();

    AppModel &m_model;
    ShelfListModel *m_shelves;
    ChangedFilesModel *m_files;
    QStackedWidget *m_pages;
    EmptyState *m_empty;
    QListView *m_list;
    QListView *m_fileList;
    QLabel *m_filesTitle;
    QPushButton *m_restore;
    QPushButton *m_restoreAndDelete;
    QPushButton *m_delete;
    DiffView *m_diffView;
    QTimer m_ageTimer;
    bool m_updatingSelection = false;
};

} // namespace tillery
