#include "ui/StatusBadge.h"

#include <QFontDatabase>
#include <QPainter>

namespace tillery::statusBadge {

QColor color(FileState state)
{
    switch (state) {
    case FileState::added:
    case FileState::untracked:
        return QColor(40, 167, 69);
    case FileState::removed:
    case FileState::missing:
        return QColor(220, 53, 69);
    case FileState::unresolved:
        return QColor(230, 126, 34);
    case FileState::modified:
    case FileState::ignored:
    case FileState::clean:
        break;
    }
    return QColor(0, 122, 255);
}

QFont font(const QFont &base)
{
    QFont badge = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    badge.setPointSizeF(base.pointSizeF() * 0.85);
    badge.setBold(true);
    return badge;
}

void paint(QPainter &painter, const QRect &rect, FileState state, const std::optional<QColor> &selectedText)
{
    painter.save();
    painter.setFont(font(painter.font()));
    painter.setPen(selectedText.value_or(color(state)));
    painter.drawText(QRect(rect.x(), rect.y(), width, rect.height()), Qt::AlignCenter, fileStateLetter(state));
    painter.restore();
}

} // namespace tillery::statusBadge
