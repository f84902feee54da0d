#include "ui/TextButton.h"

#include <QPainter>

namespace tillery {

TextButton::TextButton(QWidget *parent)
    : QAbstractButton(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    // Repaints as the pointer comes and goes.
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::PointingHandCursor);
}

QSize TextButton::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    return {metrics.horizontalAdvance(text()) + 2, metrics.height() + 2};
}

void TextButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const bool lit = isEnabled() && (underMouse() || hasFocus() || isDown());
    painter.setPen(palette().color(lit ? QPalette::Highlight : QPalette::WindowText));
    QFont shown = font();
    shown.setUnderline(hasFocus());
    painter.setFont(shown);
    painter.drawText(rect().adjusted(0, 0, -2, 0), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text());
}

} // namespace tillery
