#include "ui/TextButton.h"

#include <QPainter>

namespace tillery {

TextButton::TextButton(QWidget *parent)
    : QAbstractButton(parent)
{
    setFocusPolicy(Qt::StrongFocus);
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
    const bool lit = isEnabled() && (m_hovered || hasFocus() || isDown());
    painter.setPen(palette().color(lit ? QPalette::Highlight : QPalette::WindowText));
    QFont shown = font();
    shown.setUnderline(hasFocus());
    painter.setFont(shown);
    painter.drawText(rect().adjusted(0, 0, -2, 0), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text());
}

void TextButton::enterEvent(QEnterEvent *event)
{
    m_hovered = true;
    update();
    QAbstractButton::enterEvent(event);
}

void TextButton::leaveEvent(QEvent *event)
{
    m_hovered = false;
    update();
    QAbstractButton::leaveEvent(event);
}

} // namespace tillery
