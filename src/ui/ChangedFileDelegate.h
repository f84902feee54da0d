#pragma once

#include "records/FileState.h"

#include <QStyledItemDelegate>

namespace tillery {

// A changed-file row: the check box (working-copy rows only), the status
// badge, then the path on one line, cut in the middle when it does not fit.
// Clicking the check box marks the file without touching the list's selection.
class ChangedFileDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    static constexpr int rowHeight = 24;
    static QRect checkBoxRect(const QRect &row);
    // Where the status letter sits; hovering it tells the state in words.
    static QRect badgeRect(const QRect &row, const QModelIndex &index);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;
    bool editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                     const QModelIndex &index) override;

private:
    static FileState stateOf(const QModelIndex &index);
};

} // namespace tillery
