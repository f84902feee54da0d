#include "ui/DiffCanvas.h"

#include "ui/CodeText.h"
#include "ui/DiffColors.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QtConcurrent>
#include <QStyleOptionButton>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace tillery {

DiffCanvas::DiffCanvas(QWidget *parent)
    : QAbstractScrollArea(parent)
{
    m_characterWidth = std::max(1, QFontMetrics(m_style.text).horizontalAdvance(u'M'));
    codeText::setUpArea(*this, tr("Diff"), QPalette::Window, rowHeight, m_style.text);
}

void DiffCanvas::setDocument(const PresentedDiffDocument &document)
{
    m_document = document;
    // Cells find the widest line; it is measured as it is drawn (a font
    // without a wide character's glyph draws something narrower).
    m_widestLineWidth = m_document.widestLineColumns * m_characterWidth;
    if (m_document.widestLine >= 0) {
        // Through a const view: the rows are shared with the model's document.
        const QStringView widest = m_document.textOf(std::as_const(m_document).unifiedLines.at(m_document.widestLine));
        m_widestLineWidth = codeText::measuredWidth(widest, m_style.text, m_style.option);
    }
    m_selectionAnchor = m_selectionEnd = -1;
    m_wordChanges.clear();
    m_wordBlocksAsked.clear();
    ++m_documentGeneration;
    verticalScrollBar()->setValue(0);
    horizontalScrollBar()->setValue(0);
    updateScrollBars();
    viewport()->update();
}

void DiffCanvas::setLayout(Layout layout)
{
    if (m_layout == layout)
        return;
    m_layout = layout;
    m_selectionAnchor = m_selectionEnd = -1;
    updateScrollBars();
    viewport()->update();
}

void DiffCanvas::setChoices(ChoiceState state)
{
    const bool hadColumn = static_cast<bool>(m_choices);
    m_choices = std::move(state);
    if (hadColumn != static_cast<bool>(m_choices))
        updateScrollBars();
    viewport()->update();
}

qsizetype DiffCanvas::rowCount() const
{
    return m_layout == Layout::unified ? m_document.unifiedLines.size() : m_document.splitLines.size();
}

int DiffCanvas::splitHalfWidth() const
{
    return std::max((viewport()->width() - 1) / 2, minimumHalfWidth);
}

int DiffCanvas::contentWidth() const
{
    if (m_layout == Layout::split)
        return 2 * splitHalfWidth() + 1;
    const qint64 text = m_widestLineWidth + 2 * textPadding;
    return static_cast<int>(std::min<qint64>(choiceColumnWidth() + 2 * gutterWidth + 1 + text, 1 << 24));
}

void DiffCanvas::updateScrollBars()
{
    const qint64 height = static_cast<qint64>(rowCount()) * rowHeight;
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setRange(0, static_cast<int>(std::max<qint64>(0, height - viewport()->height())));
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setRange(0, std::max(0, contentWidth() - viewport()->width()));
}

void DiffCanvas::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    updateScrollBars();
}

qsizetype DiffCanvas::rowAt(int viewportY) const
{
    const qint64 y = static_cast<qint64>(verticalScrollBar()->value()) + viewportY;
    return std::clamp<qsizetype>(static_cast<qsizetype>(y / rowHeight), 0, std::max<qsizetype>(0, rowCount() - 1));
}

bool DiffCanvas::isSelected(qsizetype row) const
{
    if (m_selectionAnchor < 0)
        return false;
    return row >= std::min(m_selectionAnchor, m_selectionEnd) && row <= std::max(m_selectionAnchor, m_selectionEnd);
}

void DiffCanvas::paintLine(QPainter &painter, const PresentedDiffLine *line, std::span<const qint64> numbers, int x,
                           int y, int width, bool selected)
{
    const int gutters = static_cast<int>(numbers.size());
    const DiffRowColors colors =
        line ? diffRowColors(*line, palette()) : diffRowColors(DiffLineKind::context, palette());
    painter.fillRect(x, y, width, rowHeight, colors.background);
    if (selected) {
        QColor highlight = palette().color(QPalette::Highlight);
        highlight.setAlphaF(0.3);
        painter.fillRect(x, y, width, rowHeight, highlight);
    }
    const QColor gutter = gutterColor(palette());
    const int choices = choiceColumnWidth();
    painter.fillRect(x, y, choices + gutters * gutterWidth, rowHeight, gutter);
    if (choices > 0)
        paintChoice(painter, line, x, y);
    x += choices;
    width -= choices;
    painter.fillRect(x + gutters * gutterWidth, y, 1, rowHeight, palette().color(QPalette::Mid));
    if (!line)
        return;

    painter.setFont(m_style.small);
    painter.setPen(palette().color(QPalette::PlaceholderText));
    for (int cell = 0; cell < gutters; ++cell) {
        if (numbers[cell] != noLineNumber)
            painter.drawText(QRect(x + cell * gutterWidth, y, gutterWidth - 6, rowHeight),
                             Qt::AlignRight | Qt::AlignVCenter, QString::number(numbers[cell]));
    }
    painter.setFont(m_style.text);
    painter.setPen(colors.text);
    const int textX = x + gutters * gutterWidth + 1 + textPadding;
    painter.save();
    painter.setClipRect(x + gutters * gutterWidth + 1, y, width - gutters * gutterWidth - 1, rowHeight);
    paintChangedWords(painter, *line, textX, y);
    codeText::draw(painter, textX, y, rowHeight, std::as_const(m_document).textOf(*line), m_style.option);
    painter.restore();
}

void DiffCanvas::paintChangedWords(QPainter &painter, const PresentedDiffLine &line, int textX, int y)
{
    const auto spans = m_wordChanges.constFind(&line - std::as_const(m_document).unifiedLines.constData());
    if (spans == m_wordChanges.cend())
        return;
    const QStringView text = std::as_const(m_document).textOf(line);
    const QColor colour = changedWordsColor(line.kind, palette());
    for (const ChangedSpan &span : *spans) {
        const qint64 start = codeText::measuredWidth(text.first(span.start), m_style.text, m_style.option);
        const qint64 end =
            codeText::measuredWidth(text.first(span.start + span.length), m_style.text, m_style.option);
        painter.fillRect(QRectF(textX + start, y + 2, end - start, rowHeight - 4), colour);
    }
}

void DiffCanvas::askWordChanges(qsizetype first, qsizetype last)
{
    constexpr qsizetype blockLines = 256;
    for (qsizetype block = first / blockLines; block <= last / blockLines; ++block) {
        if (m_wordBlocksAsked.contains(block))
            continue;
        m_wordBlocksAsked.insert(block);
        const qsizetype from = block * blockLines;
        const qsizetype to = std::min(from + blockLines, m_document.unifiedLines.size()) - 1;
        QtConcurrent::run([document = m_document, from, to] { return wordChangesInRange(document, from, to); })
            .then(this, [this, generation = m_documentGeneration](const QHash<qsizetype, QList<ChangedSpan>> &found) {
                if (generation != m_documentGeneration)
                    return;
                m_wordChanges.insert(found);
                viewport()->update();
            });
    }
}

void DiffCanvas::paintChoice(QPainter &painter, const PresentedDiffLine *line, int x, int y)
{
    const std::optional<Qt::CheckState> state =
        line ? m_choices(line - std::as_const(m_document).unifiedLines.constData()) : std::nullopt;
    if (!state)
        return;
    QStyleOptionButton box;
    box.rect = QRect(x + (choiceWidth - 14) / 2, y + (rowHeight - 14) / 2, 14, 14);
    box.state = QStyle::State_Enabled
                | (*state == Qt::Checked            ? QStyle::State_On
                   : *state == Qt::PartiallyChecked ? QStyle::State_NoChange
                                                    : QStyle::State_Off);
    style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &box, &painter, this);
}

QList<qsizetype> DiffCanvas::selectedUnifiedLines() const
{
    QList<qsizetype> lines;
    if (m_selectionAnchor < 0 || rowCount() == 0)
        return lines;
    const qsizetype last = std::min(std::max(m_selectionAnchor, m_selectionEnd), rowCount() - 1);
    for (qsizetype row = std::min(m_selectionAnchor, m_selectionEnd); row <= last; ++row) {
        if (m_layout == Layout::unified) {
            lines.append(row);
            continue;
        }
        const SplitDiffLine &split = m_document.splitLines[row];
        const qint32 side = m_selectionOnRight ? split.right : split.left;
        if (side >= 0)
            lines.append(side);
    }
    return lines;
}

qsizetype DiffCanvas::unifiedLineAt(const QPoint &point) const
{
    if (rowCount() == 0
        || static_cast<qint64>(verticalScrollBar()->value()) + point.y() >= static_cast<qint64>(rowCount()) * rowHeight)
        return -1;
    const qsizetype row = rowAt(point.y());
    if (m_layout == Layout::unified)
        return row;
    const SplitDiffLine &split = m_document.splitLines[row];
    return point.x() + horizontalScrollBar()->value() > splitHalfWidth() ? split.right : split.left;
}

void DiffCanvas::paintEvent(QPaintEvent *)
{
    // Read through a const view: the rows are shared with the model's document
    // and must not be copied.
    const PresentedDiffDocument &document = m_document;
    QPainter painter(viewport());
    const int top = verticalScrollBar()->value();
    const int left = horizontalScrollBar()->value();
    const qsizetype first = top / rowHeight;
    const qsizetype last =
        std::min<qsizetype>(rowCount(), (static_cast<qint64>(top) + viewport()->height()) / rowHeight + 1);
    const int width = std::max(contentWidth(), viewport()->width());
    if (first < last) {
        if (m_layout == Layout::unified) {
            askWordChanges(first, last - 1);
        } else {
            const SplitDiffLine &firstRow = document.splitLines[first];
            const SplitDiffLine &lastRow = document.splitLines[last - 1];
            askWordChanges(std::max(std::min(firstRow.left, firstRow.right), 0), std::max(lastRow.left, lastRow.right));
        }
    }

    for (qsizetype row = first; row < last; ++row) {
        const int y = static_cast<int>(static_cast<qint64>(row) * rowHeight - top);
        if (m_layout == Layout::unified) {
            const PresentedDiffLine &line = document.unifiedLines[row];
            const std::array numbers{line.oldLine, line.newLine};
            paintLine(painter, &line, numbers, -left, y, width, isSelected(row));
            continue;
        }
        // The old side numbers its lines by the old file, the new side by the new one.
        const SplitDiffLine &split = document.splitLines[row];
        const int half = splitHalfWidth();
        const PresentedDiffLine *leftLine = document.leftOf(split);
        const PresentedDiffLine *rightLine = document.rightOf(split);
        const std::array leftNumber{leftLine ? leftLine->oldLine : noLineNumber};
        const std::array rightNumber{rightLine ? rightLine->newLine : noLineNumber};
        paintLine(painter, leftLine, leftNumber, -left, y, half, isSelected(row) && !m_selectionOnRight);
        painter.fillRect(-left + half, y, 1, rowHeight, palette().color(QPalette::Mid));
        paintLine(painter, rightLine, rightNumber, -left + half + 1, y, half, isSelected(row) && m_selectionOnRight);
    }
}

void DiffCanvas::selectRows(qsizetype first, qsizetype last, bool rightSide)
{
    m_selectionAnchor = first;
    m_selectionEnd = last;
    m_selectionOnRight = rightSide;
    viewport()->update();
}

QString DiffCanvas::selectedText() const
{
    if (m_selectionAnchor < 0 || rowCount() == 0)
        return QString();
    QStringList lines;
    const qsizetype first = std::min(m_selectionAnchor, m_selectionEnd);
    const qsizetype last = std::min(std::max(m_selectionAnchor, m_selectionEnd), rowCount() - 1);
    for (qsizetype row = first; row <= last; ++row) {
        if (m_layout == Layout::unified) {
            lines.append(m_document.textOf(m_document.unifiedLines[row]).toString());
            continue;
        }
        const SplitDiffLine &split = m_document.splitLines[row];
        if (const PresentedDiffLine *side = m_selectionOnRight ? m_document.rightOf(split) : m_document.leftOf(split))
            lines.append(m_document.textOf(*side).toString());
    }
    return lines.join(u'\n');
}

void DiffCanvas::copySelection() const
{
    const QString text = selectedText();
    if (!text.isEmpty())
        QApplication::clipboard()->setText(text);
}

void DiffCanvas::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || rowCount() == 0)
        return QAbstractScrollArea::mousePressEvent(event);
    // Below the last row there is nothing to select.
    const qint64 contentY = static_cast<qint64>(verticalScrollBar()->value()) + event->position().toPoint().y();
    if (contentY >= static_cast<qint64>(rowCount()) * rowHeight) {
        m_selectionAnchor = m_selectionEnd = -1;
        viewport()->update();
        return;
    }
    const int contentX = event->position().toPoint().x() + horizontalScrollBar()->value();
    const bool onRight = m_layout == Layout::split && contentX > splitHalfWidth();
    // A click on a box chooses rather than selects.
    const int paneX = onRight ? contentX - splitHalfWidth() - 1 : contentX;
    if (m_choices && paneX < choiceWidth) {
        const qsizetype line = unifiedLineAt(event->position().toPoint());
        if (line >= 0 && m_choices(line)) {
            Q_EMIT choiceClicked(line, event->modifiers() & Qt::ShiftModifier);
            return;
        }
    }
    selectRows(rowAt(event->position().toPoint().y()), rowAt(event->position().toPoint().y()), onRight);
}

void DiffCanvas::mouseMoveEvent(QMouseEvent *event)
{
    if (!(event->buttons() & Qt::LeftButton) || m_selectionAnchor < 0)
        return QAbstractScrollArea::mouseMoveEvent(event);
    m_selectionEnd = rowAt(event->position().toPoint().y());
    viewport()->update();
}

void DiffCanvas::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Copy)) {
        copySelection();
        return;
    }
    if (event->key() == Qt::Key_Space && m_choices && m_selectionAnchor >= 0) {
        Q_EMIT choiceKeyPressed(selectedUnifiedLines());
        return;
    }
    // Where lines can be chosen, the arrows move the selected row (Shift
    // stretches it) for Space to choose, instead of scrolling.
    const bool up = event->key() == Qt::Key_Up;
    if ((up || event->key() == Qt::Key_Down) && m_choices && rowCount() > 0) {
        const qsizetype row = m_selectionAnchor < 0 ? rowAt(0)
                                                    : std::clamp<qsizetype>(m_selectionEnd + (up ? -1 : 1), 0,
                                                                            rowCount() - 1);
        if (event->modifiers() & Qt::ShiftModifier && m_selectionAnchor >= 0)
            selectRows(m_selectionAnchor, row, m_selectionOnRight);
        else
            selectRows(row, row, m_selectionOnRight);
        const qint64 top = row * rowHeight;
        const int shown = verticalScrollBar()->value();
        if (top < shown)
            verticalScrollBar()->setValue(static_cast<int>(top));
        else if (top + rowHeight > shown + viewport()->height())
            verticalScrollBar()->setValue(static_cast<int>(top + rowHeight - viewport()->height()));
        return;
    }
    if (event->matches(QKeySequence::SelectAll) && rowCount() > 0) {
        selectRows(0, rowCount() - 1, m_selectionOnRight);
        return;
    }
    // Home and End (with Ctrl too) go to the first and the last row, at the
    // start of the lines.
    if (event->key() == Qt::Key_Home || event->key() == Qt::Key_End) {
        const bool toEnd = event->key() == Qt::Key_End;
        verticalScrollBar()->setValue(toEnd ? verticalScrollBar()->maximum() : 0);
        horizontalScrollBar()->setValue(0);
        return;
    }
    QAbstractScrollArea::keyPressEvent(event);
}

} // namespace tillery
