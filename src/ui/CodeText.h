#pragma once

#include <QAbstractScrollArea>
#include <QFont>
#include <QPainter>
#include <QStringView>
#include <QTextOption>

namespace tillery {

// How the diff and the annotated file draw lines of code.
namespace codeText {

// The system's monospace font at the size.
QFont font(qreal pointSize);
// An option for one unwrapped line whose tabs stop every tabColumns cells.
QTextOption lineOption(const QFont &font);

// The fonts of a view of code: the lines' and the smaller one of their
// numbers, and how a line is laid out.
struct Style {
    QFont text = font(12);
    QFont small = font(11);
    QTextOption option = lineOption(text);
};

// A scroll area that draws rows of code itself: focusable, frameless, its
// viewport filled with the role's colour, one row a step down and four
// characters of the font a step sideways.
void setUpArea(QAbstractScrollArea &area, const QString &accessibleName, QPalette::ColorRole background, int rowHeight,
               const QFont &font);
// What a line shows: carriage returns and the like would draw as boxes.
QString shown(QStringView text);
// The width the line takes, measured as it is drawn (a font without a wide
// character's glyph draws something narrower than its cells).
qint64 measuredWidth(QStringView text, const QFont &font, const QTextOption &option);
// Draws the line from x, vertically centred in the row; tab stops count
// from the line's own start, wherever it is scrolled to.
void draw(QPainter &painter, int x, int y, int height, QStringView text, const QTextOption &option);

} // namespace codeText
} // namespace tillery
