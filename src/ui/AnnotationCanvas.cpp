#include "ui/AnnotationCanvas.h"

#include "diff/DiffDocument.h"
#include "ui/ChangesetText.h"
#include "ui/CodeText.h"
#include "ui/DiffColors.h"
#include "ui/RelativeDate.h"
#include "ui/ShownText.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace tillery {

AnnotationCanvas::AnnotationCanvas(QWidget *parent)
    : QAbstractScrollArea(parent)
{
    codeText::setUpArea(*this, tr("Annotated file"), QPalette::Base, rowHeight, m_style.text);
    viewport()->setMouseTracking(true);
}

void AnnotationCanvas::setLines(const FileAnnotation &annotation)
{
    m_annotation = annotation;
    m_now = QDateTime::currentDateTimeUtc();
    m_runStarts.clear();
    qint64 widestColumns = 0;
    qsizetype widest = -1;
    const QList<AnnotatedLine> &lines = std::as_const(m_annotation).lines;
    for (qsizetype row = 0; row < lines.size(); ++row) {
        if (row == 0 || lines[row].node != lines[row - 1].node)
            m_runStarts.append(row);
        const QString &text = lines[row].text;
        // A line without tabs is no wider than two cells a character.
        if (text.size() * 2 <= widestColumns && !text.contains(u'\t'))
            continue;
        if (const qint64 columns = displayColumns(text); columns > widestColumns || widest < 0) {
            widestColumns = columns;
            widest = row;
        }
    }
    m_widestLineWidth = widest < 0 ? 0 : codeText::measuredWidth(lines[widest].text, m_style.text, m_style.option);
    verticalScrollBar()->setValue(0);
    horizontalScrollBar()->setValue(0);
    updateScrollBars();
    viewport()->update();
}

qsizetype AnnotationCanvas::runOf(qsizetype row) const
{
    return std::upper_bound(m_runStarts.cbegin(), m_runStarts.cend(), row) - m_runStarts.cbegin() - 1;
}

QStringList AnnotationCanvas::blockTexts(qsizetype run) const
{
    const AnnotatedLine &line = m_annotation.lines.at(m_runStarts.at(run));
    return {changesetText::shortHash(line.node), changesetText::authorName(line.author),
            relativeDateText(QDateTime::fromSecsSinceEpoch(line.date, Qt::UTC), m_now)};
}

void AnnotationCanvas::updateScrollBars()
{
    const qint64 height = static_cast<qint64>(rowCount()) * rowHeight;
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setRange(0, static_cast<int>(std::max<qint64>(0, height - viewport()->height())));
    const qint64 textWidth = std::min<qint64>(m_widestLineWidth + padding, 1 << 24);
    const int textArea = std::max(0, viewport()->width() - textStart());
    horizontalScrollBar()->setPageStep(textArea);
    horizontalScrollBar()->setRange(0, static_cast<int>(std::max<qint64>(0, textWidth - textArea)));
}

void AnnotationCanvas::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    updateScrollBars();
}

void AnnotationCanvas::paintEvent(QPaintEvent *)
{
    if (rowCount() == 0)
        return;
    m_now = QDateTime::currentDateTimeUtc();
    QPainter painter(viewport());
    const QList<AnnotatedLine> &lines = std::as_const(m_annotation).lines;
    const int top = verticalScrollBar()->value();
    const int left = horizontalScrollBar()->value();
    const int width = viewport()->width();
    const qsizetype first = top / rowHeight;
    const qsizetype last =
        std::min<qsizetype>(rowCount(), (static_cast<qint64>(top) + viewport()->height()) / rowHeight + 1);
    const QColor numberColour = palette().color(QPalette::PlaceholderText);
    const QColor gutterLine = palette().color(QPalette::Mid);
    const int numberX = blockWidth;
    const int textX = textStart();

    qsizetype run = runOf(first);
    for (qsizetype row = first; row < last; ++row) {
        if (run + 1 < m_runStarts.size() && m_runStarts[run + 1] == row)
            ++run;
        const int y = static_cast<int>(static_cast<qint64>(row) * rowHeight - top);
        painter.fillRect(0, y, width, rowHeight, annotationRunColor(run, palette()));
        painter.fillRect(numberX, y, numberWidth, rowHeight, gutterColor(palette()));
        painter.fillRect(numberX + numberWidth, y, 1, rowHeight, gutterLine);
        painter.setFont(m_style.small);
        painter.setPen(numberColour);
        painter.drawText(QRect(numberX, y, numberWidth - 6, rowHeight), Qt::AlignRight | Qt::AlignVCenter,
                         QString::number(row + 1));
        painter.save();
        painter.setClipRect(textX - padding + 1, y, std::max(0, width - textX + padding - 1), rowHeight);
        painter.setFont(m_style.text);
        painter.setPen(palette().color(QPalette::Text));
        codeText::draw(painter, textX - left, y, rowHeight, lines[row].text, m_style.option);
        painter.restore();
    }
    painter.fillRect(blockWidth - 1, 0, 1, static_cast<int>(static_cast<qint64>(last) * rowHeight - top), gutterLine);

    // A run that began above the top keeps its block in its first row in view.
    for (qsizetype shown = runOf(first); shown < m_runStarts.size() && m_runStarts[shown] < last; ++shown) {
        const qsizetype end = shown + 1 < m_runStarts.size() ? m_runStarts[shown + 1] : rowCount();
        const qint64 runTop = static_cast<qint64>(m_runStarts[shown]) * rowHeight - top;
        const qint64 runBottom = static_cast<qint64>(end) * rowHeight - top;
        paintBlock(painter, shown, static_cast<int>(std::min(std::max<qint64>(runTop, 0), runBottom - rowHeight)));
    }
}

void AnnotationCanvas::paintBlock(QPainter &painter, qsizetype run, int y)
{
    const QStringList texts = blockTexts(run);
    const QFontMetrics hashMetrics(m_style.small);
    const QFontMetrics metrics(font());
    const int hashWidth = hashMetrics.horizontalAdvance(texts[0]);
    const int ageWidth = metrics.horizontalAdvance(texts[2]);
    const int authorX = padding + hashWidth + padding;
    const int authorWidth = std::max(0, blockWidth - padding - ageWidth - padding - authorX);
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.setFont(m_style.small);
    painter.drawText(QRect(padding, y, hashWidth, rowHeight), Qt::AlignLeft | Qt::AlignVCenter, texts[0]);
    painter.setFont(font());
    painter.drawText(QRect(blockWidth - padding - ageWidth, y, ageWidth, rowHeight), Qt::AlignLeft | Qt::AlignVCenter,
                     texts[2]);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(QRect(authorX, y, authorWidth, rowHeight), Qt::AlignLeft | Qt::AlignVCenter,
                     metrics.elidedText(texts[1], Qt::ElideRight, authorWidth));
}

std::optional<qsizetype> AnnotationCanvas::blockRowAt(const QPoint &point) const
{
    const qint64 y = static_cast<qint64>(verticalScrollBar()->value()) + point.y();
    if (point.x() < 0 || point.x() >= blockWidth || y < 0 || y >= static_cast<qint64>(rowCount()) * rowHeight)
        return std::nullopt;
    return static_cast<qsizetype>(y / rowHeight);
}

void AnnotationCanvas::mousePressEvent(QMouseEvent *event)
{
    const std::optional<qsizetype> row = blockRowAt(event->position().toPoint());
    if (event->button() != Qt::LeftButton || !row)
        return QAbstractScrollArea::mousePressEvent(event);
    Q_EMIT changesetClicked(m_annotation.lines.at(*row).node);
}

void AnnotationCanvas::mouseMoveEvent(QMouseEvent *event)
{
    viewport()->setCursor(blockRowAt(event->position().toPoint()) ? Qt::PointingHandCursor : Qt::ArrowCursor);
    QAbstractScrollArea::mouseMoveEvent(event);
}

bool AnnotationCanvas::viewportEvent(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QAbstractScrollArea::viewportEvent(event);
    const auto *help = static_cast<QHelpEvent *>(event);
    if (const std::optional<qsizetype> row = blockRowAt(help->pos())) {
        const AnnotatedLine &line = m_annotation.lines.at(*row);
        QToolTip::showText(help->globalPos(),
                           plainToolTip(line.node + u'\n' + line.author + u'\n'
                                        + changesetText::longDate(QDateTime::fromSecsSinceEpoch(line.date, Qt::UTC))),
                           viewport());
    } else {
        QToolTip::hideText();
    }
    return true;
}

void AnnotationCanvas::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Home || event->key() == Qt::Key_End) {
        verticalScrollBar()->setValue(event->key() == Qt::Key_End ? verticalScrollBar()->maximum() : 0);
        horizontalScrollBar()->setValue(0);
        return;
    }
    QAbstractScrollArea::keyPressEvent(event);
}

} // namespace tillery
