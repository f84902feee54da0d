#pragma once

#include <QWidget>

class QLineEdit;
class QPushButton;
class QSortFilterProxyModel;
class QTableView;

namespace tillery {

class AppModel;
class CommandLogModel;

// Every tool command Tillery ran, newest first, in a window of its own; the
// selected rows copy as lines to paste into a terminal.
class CommandLogWindow final : public QWidget {
    Q_OBJECT

public:
    explicit CommandLogWindow(AppModel &model, QWidget *parent = nullptr);

    QTableView *table() const { return m_table; }
    // The selected rows as shell lines, oldest first, so that they run in the order they ran.
    QString selectedCommands() const;

private:
    void copySelected();

    AppModel &m_model;
    CommandLogModel *m_rows;
    QSortFilterProxyModel *m_filtered;
    QLineEdit *m_filter;
    QTableView *m_table;
};

// Shows the owner's Command Log window, opening it first if needed.
CommandLogWindow *showCommandLog(AppModel &model, QWidget *owner);

} // namespace tillery
