#pragma once

#include <QStyledItemDelegate>

namespace tillery {

// A history row on two lines: the title with its badges (bookmarks or
// branches, named branch, tags; an orange mark after one not pushed yet),
// then the author's name, the relative date and the short hash in small
// quiet type.
class CommitRowDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    static constexpr int rowHeight = 46;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;
};

} // namespace tillery
