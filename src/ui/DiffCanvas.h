#pragma once

#include "diff/DiffDocument.h"

#include "ui/CodeText.h"

#include <QAbstractScrollArea>

#include <span>

namespace tillery {

// Draws a diff document's rows, unified or side by side, at a fixed row
// height, painting only the rows in view: a million-line diff scrolls like
// a ten-line one. Rows can be selected by dragging across them and copied.
class DiffCanvas final : public QAbstractScrollArea {
    Q_OBJECT

public:
    enum class Layout { unified, split };

    static constexpr int rowHeight = 21;
    static constexpr int gutterWidth = 45;
    static constexpr int textPadding = 9;
    static constexpr int minimumHalfWidth = 360;

    explicit DiffCanvas(QWidget *parent = nullptr);

    void setDocument(const PresentedDiffDocument &document);
    void setLayout(Layout layout);
    Layout layout() const { return m_layout; }

    qsizetype rowCount() const;
    // The width of each half of a split row for the current viewport.
    int splitHalfWidth() const;
    int contentWidth() const;

    // Selects whole rows (inclusive), on the left or right side of a split.
    void selectRows(qsizetype first, qsizetype last, bool rightSide = false);
    QString selectedText() const;
    void copySelection() const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void updateScrollBars();
    qsizetype rowAt(int viewportY) const;
    // A line with its number cells (one per gutter) at x; an absent line is an empty pane.
    void paintLine(QPainter &painter, const PresentedDiffLine *line, std::span<const qint64> numbers, int x, int y,
                   int width, bool selected);
    bool isSelected(qsizetype row) const;

    PresentedDiffDocument m_document;
    Layout m_layout = Layout::unified;
    codeText::Style m_style;
    int m_characterWidth = 7;
    qint64 m_widestLineWidth = 0;
    qsizetype m_selectionAnchor = -1;
    qsizetype m_selectionEnd = -1;
    bool m_selectionOnRight = false;
};

} // namespace tillery
