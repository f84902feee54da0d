#include "ui/ChangedFileDelegate.h"

#include "ui/ChangedFilesModel.h"
#include "ui/StatusBadge.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

namespace tillery {

QRect ChangedFileDelegate::checkBoxRect(const QRect &row)
{
    return QRect(row.x() + 6, row.y() + (row.height() - 16) / 2, 16, 16);
}

void ChangedFileDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem background = option;
    initStyleOption(&background, index);
    background.text.clear();
    background.features &= ~QStyleOptionViewItem::HasCheckIndicator;
    QStyle *style = option.widget ? option.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &background, painter, option.widget);

    if (index.flags() & Qt::ItemIsUserCheckable) {
        QStyleOptionButton check;
        check.rect = checkBoxRect(option.rect);
        const int state = index.data(Qt::CheckStateRole).toInt();
        check.state = QStyle::State_Enabled
                      | (state == Qt::Checked             ? QStyle::State_On
                         : state == Qt::PartiallyChecked ? QStyle::State_NoChange
                                                          : QStyle::State_Off);
        style->drawPrimitive(QStyle::PE_IndicatorCheckBox, &check, painter, option.widget);
    }

    const bool selected = option.state & QStyle::State_Selected;
    const QRect badge = badgeRect(option.rect, index);
    statusBadge::paint(*painter, badge, stateOf(index),
                       selected ? std::optional(option.palette.color(QPalette::HighlightedText)) : std::nullopt);

    const int textX = badge.right() + 1 + 6;
    const QRect textRect(textX, option.rect.y(), option.rect.right() - textX - 4, option.rect.height());
    painter->save();
    painter->setPen(option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
    painter->drawText(textRect, Qt::AlignVCenter | Qt::AlignLeft,
                      option.fontMetrics.elidedText(index.data().toString(), Qt::ElideMiddle, textRect.width()));
    painter->restore();
}

QRect ChangedFileDelegate::badgeRect(const QRect &row, const QModelIndex &index)
{
    // Rows of a changeset have no check box; the badge then leads.
    const int x = index.flags() & Qt::ItemIsUserCheckable ? checkBoxRect(row).right() + 6 : row.x() + 6;
    return QRect(x, row.y(), statusBadge::width, row.height());
}

FileState ChangedFileDelegate::stateOf(const QModelIndex &index)
{
    return static_cast<FileState>(index.data(ChangedFilesModel::StateRole).toInt());
}

bool ChangedFileDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                                    const QModelIndex &index)
{
    if (event->type() == QEvent::ToolTip && badgeRect(option.rect, index).contains(event->pos())) {
        QToolTip::showText(event->globalPos(), fileStateLabel(stateOf(index)), view);
        return true;
    }
    return QStyledItemDelegate::helpEvent(event, view, option, index);
}

QSize ChangedFileDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    return {QStyledItemDelegate::sizeHint(option, index).width(), rowHeight};
}

bool ChangedFileDelegate::editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                                      const QModelIndex &index)
{
    // Space ticks the current row's box, as a click on the box does.
    if (event->type() == QEvent::KeyPress && (index.flags() & Qt::ItemIsUserCheckable)) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key != Qt::Key_Space && key != Qt::Key_Select)
            return false;
        // Some lines chosen, a click takes the whole file.
        const bool checked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
        model->setData(index, checked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
        return true;
    }
    if (event->type() != QEvent::MouseButtonRelease && event->type() != QEvent::MouseButtonPress
        && event->type() != QEvent::MouseButtonDblClick)
        return false;
    const auto *mouse = static_cast<QMouseEvent *>(event);
    if (!(index.flags() & Qt::ItemIsUserCheckable)
        || !checkBoxRect(option.rect).adjusted(-3, -3, 3, 3).contains(mouse->position().toPoint()))
        return false;
    if (event->type() == QEvent::MouseButtonRelease && mouse->button() == Qt::LeftButton) {
        const bool checked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
        model->setData(index, checked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
    }
    // Swallowed, so that the click changes no selection.
    return true;
}

} // namespace tillery
