#pragma once

#include <QTableView>

namespace tillery {

// The History page's list of changesets: one column of rows of one height,
// drawn by the commit row delegate. A table keeps its rows' places in its
// header, so a page appended below a few hundred thousand rows costs only
// the new rows; a list view lays every row out again.
class HistoryListView final : public QTableView {
    Q_OBJECT

public:
    explicit HistoryListView(QWidget *parent = nullptr);

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
};

} // namespace tillery
