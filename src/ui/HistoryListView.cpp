#include "ui/HistoryListView.h"

#include "ui/CommitRowDelegate.h"

#include <QHeaderView>

namespace tillery {

HistoryListView::HistoryListView(QWidget *parent)
    : QTableView(parent)
{
    horizontalHeader()->hide();
    horizontalHeader()->setStretchLastSection(true);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(CommitRowDelegate::rowHeight);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setShowGrid(false);
    setWordWrap(false);
    // Tab leaves the list, as it does any other list.
    setTabKeyNavigation(false);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setFrameShape(QFrame::NoFrame);
    setItemDelegate(new CommitRowDelegate(this));
}

QModelIndex HistoryListView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    // Home and End go to the first and last rows, as in a list; a table
    // would stay in the row.
    if (action == MoveHome || action == MoveEnd)
        modifiers |= Qt::ControlModifier;
    return QTableView::moveCursor(action, modifiers);
}

} // namespace tillery
