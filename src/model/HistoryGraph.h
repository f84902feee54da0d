#pragma once

#include "records/Changeset.h"

#include <QList>
#include <QString>

namespace tillery {

// The lanes beside the History list: one column per line of descent, with
// joins where lines meet at a merge and splits where they fork. Rows follow
// the history's order, newest first. A lane keeps its column while it runs,
// so a straight line stays straight, and keeps its colour from top to
// bottom.
//
// Straight runs are kept as spans and each row keeps only the lines of its
// own dot, so the graph of a long history stays small.
class HistoryGraph {
public:
    // A line within one row, from a column at one edge to a column at the
    // middle (the upper half) or from the middle to the lower edge.
    struct Segment {
        qint32 from = 0;
        qint32 to = 0;
        qint32 colour = 0;
        friend bool operator==(const Segment &, const Segment &) = default;
    };
    struct Row {
        // Where the changeset's dot is, and its lane's colour.
        qint32 column = 0;
        qint32 colour = 0;
        // The dot's own lines in `m_dotSegments`: first those that end in it, then those that leave it.
        qsizetype firstSegment = 0;
        qint32 upperCount = 0;
        qint32 lowerCount = 0;
    };

    qsizetype rowCount() const { return m_rows.size(); }
    const Row &row(qsizetype index) const { return m_rows[index]; }
    // Every line of the row's upper and lower half, left to right.
    QList<Segment> upperHalf(qsizetype row) const;
    QList<Segment> lowerHalf(qsizetype row) const;

private:
    friend class HistoryGraphLayout;
    // A lane that runs straight down its column through every row after
    // `startRow` and before `endRow` (-1 while it is still open).
    struct Span {
        qint32 column = 0;
        qint32 colour = 0;
        qsizetype startRow = 0;
        qsizetype endRow = -1;
    };
    static constexpr qsizetype blockRows = 1024;

    QList<Segment> straightLines(qsizetype row) const;

    QList<Row> m_rows;
    QList<Segment> m_dotSegments;
    // In the order they start.
    QList<Span> m_spans;
    // For each block of rows, the spans open where the block begins.
    QList<QList<qsizetype>> m_openAtBlock;
};

// Lays out the graph a page at a time: each page continues the lanes where
// the one before left them, as more history loads.
class HistoryGraphLayout {
public:
    void append(const QList<Changeset> &page);
    const HistoryGraph &graph() const { return m_graph; }

private:
    struct Lane {
        // The changeset the lane waits for; empty for a free column.
        QString expected;
        qint32 colour = 0;
        qsizetype span = -1;
    };
    qint32 freeColumn();
    void startSpan(qint32 column, qsizetype row);
    void endSpan(qint32 column, qsizetype row);

    HistoryGraph m_graph;
    QList<Lane> m_lanes;
    qint32 m_nextColour = 0;
};

} // namespace tillery
