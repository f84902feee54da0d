#include "ui/CodeText.h"

#include "diff/DiffDocument.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QScrollBar>
#include <QTextLayout>

#include <cmath>

namespace tillery::codeText {

void setUpArea(QAbstractScrollArea &area, const QString &accessibleName, QPalette::ColorRole background, int rowHeight,
               const QFont &font)
{
    area.setFocusPolicy(Qt::StrongFocus);
    area.setAccessibleName(accessibleName);
    area.setFrameShape(QFrame::NoFrame);
    area.viewport()->setBackgroundRole(background);
    area.viewport()->setAutoFillBackground(true);
    area.verticalScrollBar()->setSingleStep(rowHeight);
    area.horizontalScrollBar()->setSingleStep(std::max(1, QFontMetrics(font).horizontalAdvance(u'M')) * 4);
}

QFont font(qreal pointSize)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(pointSize);
    return font;
}

QTextOption lineOption(const QFont &font)
{
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    option.setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    option.setTabStopDistance(tabColumns * std::max(1, QFontMetrics(font).horizontalAdvance(u'M')));
    return option;
}

QString shown(QStringView text)
{
    QString shown = text.toString();
    for (QChar &character : shown) {
        if (character == u'\r' || character == u'\n')
            character = u' ';
    }
    return shown;
}

qint64 measuredWidth(QStringView text, const QFont &font, const QTextOption &option)
{
    QTextLayout layout(shown(text), font);
    layout.setTextOption(option);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    qint64 width = 0;
    if (line.isValid()) {
        line.setLineWidth(1 << 24);
        width = qint64(std::ceil(line.naturalTextWidth()));
    }
    layout.endLayout();
    return width;
}

void draw(QPainter &painter, int x, int y, int height, QStringView text, const QTextOption &option)
{
    const QRect area(x, y, 1 << 24, height);
    if (text.contains(u'\t')) {
        painter.save();
        painter.translate(x, y);
        painter.drawText(QRectF(0, 0, area.width(), height), shown(text), option);
        painter.restore();
    } else {
        painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shown(text));
    }
}

} // namespace tillery::codeText
