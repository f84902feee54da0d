#pragma once

#include "ui/HistoryModel.h"

#include <QTimer>
#include <QWidget>

#include <chrono>

class QLabel;
class QLineEdit;
class QListView;
class QTableView;
class QPushButton;
class QMenu;
class QStackedWidget;

namespace tillery {

class AnnotationView;
class AppModel;
class ChangedFilesModel;
class ChangesetHeader;
class DiffView;
class EmptyState;
class ViewSettings;

// The History page: the changesets (Git: commits), newest first, and for
// the selected one its header, its changed files and the diff of the file
// selected among them. Moving through the list with the keyboard loads each
// changeset in turn.
class HistoryView final : public QWidget {
    Q_OBJECT

public:
    enum class Detail { nothingSelected, loading, changeset };
    static constexpr std::chrono::milliseconds dateRefreshPeriod{60000};

    HistoryView(AppModel &model, ViewSettings &settings, QWidget *parent = nullptr);

    // The clock the relative dates are read from and how often they are read again.
    void setClock(HistoryModel::Clock clock, std::chrono::milliseconds period = dateRefreshPeriod);
    AnnotationView *annotationView() const { return m_annotation; }
    // The context menu of a row of the changeset's files (the caller owns it).
    QMenu *fileContextMenuFor(int row);
    // Puts the keyboard in the search field, its text selected.
    void focusSearch();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void updateForRepository();
    void updateState();
    void updateLoadingRow();
    void loadOlderNearTheEnd();
    void showSearchText();
    void showInsertedSelection();
    void updateDetail();
    void showSelectedChangeset();
    void showSelectedFile();

    AppModel &m_model;
    HistoryModel *m_history;
    ChangedFilesModel *m_files;
    QStackedWidget *m_pages;
    EmptyState *m_empty;
    EmptyState *m_noMatches;
    QWidget *m_searching;
    QLineEdit *m_search;
    QTimer m_searchDelay;
    QTableView *m_list;
    // Below the list while an older page loads, or saying why it did not.
    QWidget *m_loadingRow;
    QWidget *m_loadingSpinner;
    QLabel *m_loadingText;
    QPushButton *m_retry;
    QStackedWidget *m_details;
    EmptyState *m_nothingSelected;
    // The selected changeset's header and files, over its diff.
    QWidget *m_changesetPart;
    ChangesetHeader *m_header;
    QLabel *m_filesCount;
    QStackedWidget *m_filesArea;
    QListView *m_fileList;
    DiffView *m_diffView;
    AnnotationView *m_annotation;
    QTimer m_dateTimer;
    bool m_updatingSelection = false;
};

} // namespace tillery
