#pragma once

#include <QWidget>

class QCheckBox;
class QListView;
class QMenu;
class QStackedWidget;

namespace tillery {

class AnnotationView;
class AppModel;
class ChangedFilesModel;
class CommitBox;
class DiffView;
class ViewSettings;

// The Changes page: the changed files with their check boxes, the commit
// box under them, and the diff of the file selected in the list.
class ChangesView final : public QWidget {
    Q_OBJECT

public:
    enum class State { loading, clean, list };

    ChangesView(AppModel &model, ViewSettings &settings, QWidget *parent = nullptr);

    QListView *list() const { return m_list; }
    AnnotationView *annotationView() const { return m_annotation; }

    // The context menu of a row (the caller owns it).
    QMenu *contextMenuFor(int row);

private:
    void updateState();
    void updateSelectAll();
    void showSelectionFromModel();
    void listSelectionChanged();

    AppModel &m_model;
    ChangedFilesModel *m_files;
    QStackedWidget *m_pages;
    QListView *m_list;
    QCheckBox *m_selectAll;
    CommitBox *m_commitBox;
    DiffView *m_diffView;
    AnnotationView *m_annotation;
    bool m_updatingSelection = false;
};

} // namespace tillery
