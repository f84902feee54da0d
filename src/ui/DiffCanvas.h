#pragma once

#include "diff/DiffDocument.h"
#include "diff/WordDiff.h"

#include "ui/CodeText.h"

#include <QAbstractScrollArea>
#include <QHash>
#include <QSet>

#include <functional>
#include <optional>
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
    static constexpr int choiceWidth = 22;

    // Whether a unified line is chosen (for a hunk's header: all, some or
    // none of its lines); nothing for a line that cannot be.
    using ChoiceState = std::function<std::optional<Qt::CheckState>(qsizetype unifiedIndex)>;

    explicit DiffCanvas(QWidget *parent = nullptr);

    void setDocument(const PresentedDiffDocument &document);
    void setLayout(Layout layout);
    Layout layout() const { return m_layout; }
    // With a state, a column of boxes before the line numbers lets lines be
    // chosen (choiceClicked); without one there is none.
    void setChoices(ChoiceState state);
    // The unified lines of the selected rows, on the selected side.
    QList<qsizetype> selectedUnifiedLines() const;
    // The unified line of the row at a viewport point (its side in a split).
    qsizetype unifiedLineAt(const QPoint &point) const;

    qsizetype rowCount() const;
    // The width of each half of a split row for the current viewport.
    int splitHalfWidth() const;
    int contentWidth() const;

    // Selects whole rows (inclusive), on the left or right side of a split.
    void selectRows(qsizetype first, qsizetype last, bool rightSide = false);
    QString selectedText() const;
    void copySelection() const;

Q_SIGNALS:
    // A box was clicked (with Shift: the range from the box clicked before).
    void choiceClicked(qsizetype unifiedIndex, bool extendsRange);
    // Space on selected rows.
    void choiceKeyPressed(const QList<qsizetype> &unifiedIndices);

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
    void paintChoice(QPainter &painter, const PresentedDiffLine *line, int x, int y);
    void paintChangedWords(QPainter &painter, const PresentedDiffLine &line, int textX, int y);
    // Asks for the word changes of the blocks of unified lines first to last
    // not asked for yet; they are worked out off the main thread and shown
    // when they arrive.
    void askWordChanges(qsizetype first, qsizetype last);
    int choiceColumnWidth() const { return m_choices ? choiceWidth : 0; }
    bool isSelected(qsizetype row) const;

    PresentedDiffDocument m_document;
    Layout m_layout = Layout::unified;
    codeText::Style m_style;
    int m_characterWidth = 7;
    qint64 m_widestLineWidth = 0;
    qsizetype m_selectionAnchor = -1;
    qsizetype m_selectionEnd = -1;
    bool m_selectionOnRight = false;
    ChoiceState m_choices;
    QHash<qsizetype, QList<ChangedSpan>> m_wordChanges;
    QSet<qsizetype> m_wordBlocksAsked;
    // Tells word changes of a document no longer shown from those of this one.
    quint64 m_documentGeneration = 0;
};

} // namespace tillery
