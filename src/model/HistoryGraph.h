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
struct HistoryGraph {
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
        // The row's segments in `segments`: first the upper half, then the lower.
        qsizetype firstSegment = 0;
        qint32 upperCount = 0;
        qint32 lowerCount = 0;
    };

    QList<Row> rows;
    QList<Segment> segments;

    QList<Segment> upperHalf(const Row &row) const { return segments.sliced(row.firstSegment, row.upperCount); }
    QList<Segment> lowerHalf(const Row &row) const
    {
        return segments.sliced(row.firstSegment + row.upperCount, row.lowerCount);
    }
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
    };
    qint32 freeColumn();

    HistoryGraph m_graph;
    QList<Lane> m_lanes;
    qint32 m_nextColour = 0;
};

} // namespace tillery
