#pragma once

#include <QString>
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

private:
    // How wide the lanes' gutter is for the rows on screen.
    int gutterWidth(const QStyleOptionViewItem &option, const QModelIndex &index) const;

    struct Gutter {
        const void *graph = nullptr;
        qsizetype rows = 0;
        int topRow = -1;
        int viewportHeight = 0;
        QString topNode;
        friend bool operator==(const Gutter &, const Gutter &) = default;
    };
    mutable Gutter m_gutter;
    mutable int m_gutterColumns = 0;
};

} // namespace tillery
