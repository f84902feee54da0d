#pragma once

#include "records/Annotation.h"

#include "ui/CodeText.h"

#include <QAbstractScrollArea>
#include <QDateTime>

namespace tillery {

// Draws an annotated file at a fixed row height, painting only the rows in
// view, so that a file of any length scrolls alike: each line's number and
// text, and for every run of lines from one changeset a block in the gutter
// with its short id, author and age (kept in view while the run is), on
// backgrounds that alternate from run to run. The gutter stays put while the
// text scrolls sideways. Clicking a block reports its changeset.
class AnnotationCanvas final : public QAbstractScrollArea {
    Q_OBJECT

public:
    static constexpr int rowHeight = 21;
    static constexpr int blockWidth = 320;
    static constexpr int numberWidth = 52;
    static constexpr int padding = 9;

    explicit AnnotationCanvas(QWidget *parent = nullptr);

    void setLines(const FileAnnotation &annotation);

    qsizetype rowCount() const { return m_annotation.lines.size(); }
    // The first row of each run of lines from one changeset.
    const QList<qsizetype> &runStarts() const { return m_runStarts; }
    qsizetype runOf(qsizetype row) const;
    // What a run's block shows: the short id, the author's name and the age
    // (as of the last paint).
    QStringList blockTexts(qsizetype run) const;
    // The text column's left edge in the viewport; the gutter lies before it.
    static constexpr int textStart() { return blockWidth + numberWidth + 1 + padding; }

Q_SIGNALS:
    void changesetClicked(const QString &node);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool viewportEvent(QEvent *event) override;

private:
    void updateScrollBars();
    // The row under a viewport point in the gutter's block column, if any.
    std::optional<qsizetype> blockRowAt(const QPoint &point) const;
    void paintBlock(QPainter &painter, qsizetype run, int y);

    FileAnnotation m_annotation;
    QList<qsizetype> m_runStarts;
    // What the ages count to.
    QDateTime m_now;
    codeText::Style m_style;
    qint64 m_widestLineWidth = 0;
};

} // namespace tillery
