#include "model/HistoryGraph.h"

#include <algorithm>

namespace tillery {

QList<HistoryGraph::Segment> HistoryGraph::straightLines(qsizetype row) const
{
    const qsizetype block = row / blockRows;
    const qsizetype blockStart = block * blockRows;
    // The spans open where the block begins, then those that start in it before the row.
    QList<qsizetype> candidates = m_openAtBlock.value(block);
    const auto firstInBlock = std::lower_bound(m_spans.cbegin(), m_spans.cend(), blockStart,
                                               [](const Span &span, qsizetype start) { return span.startRow < start; });
    for (auto span = firstInBlock; span != m_spans.cend() && span->startRow < row; ++span)
        candidates.append(span - m_spans.cbegin());

    QList<Segment> lines;
    for (const qsizetype index : std::as_const(candidates)) {
        const Span &span = m_spans[index];
        if (span.startRow < row && (span.endRow < 0 || span.endRow > row))
            lines.append(Segment{span.column, span.column, span.colour});
    }
    std::sort(lines.begin(), lines.end(), [](const Segment &a, const Segment &b) { return a.from < b.from; });
    return lines;
}

QList<HistoryGraph::Segment> HistoryGraph::upperHalf(qsizetype row) const
{
    const Row &dot = m_rows[row];
    QList<Segment> lines = straightLines(row) + m_dotSegments.sliced(dot.firstSegment, dot.upperCount);
    std::stable_sort(lines.begin(), lines.end(), [](const Segment &a, const Segment &b) { return a.from < b.from; });
    return lines;
}

QList<HistoryGraph::Segment> HistoryGraph::lowerHalf(qsizetype row) const
{
    const Row &dot = m_rows[row];
    return straightLines(row) + m_dotSegments.sliced(dot.firstSegment + dot.upperCount, dot.lowerCount);
}

qint32 HistoryGraphLayout::freeColumn()
{
    for (qsizetype column = 0; column < m_lanes.size(); ++column) {
        if (m_lanes[column].expected.isEmpty())
            return static_cast<qint32>(column);
    }
    m_lanes.append(Lane{});
    return static_cast<qint32>(m_lanes.size() - 1);
}

void HistoryGraphLayout::startSpan(qint32 column, qsizetype row)
{
    m_lanes[column].span = m_graph.m_spans.size();
    m_graph.m_spans.append(HistoryGraph::Span{column, m_lanes[column].colour, row, -1});
}

void HistoryGraphLayout::endSpan(qint32 column, qsizetype row)
{
    m_graph.m_spans[m_lanes[column].span].endRow = row;
    m_lanes[column].span = -1;
    m_lanes[column].expected.clear();
}

void HistoryGraphLayout::append(const QList<Changeset> &page)
{
    // Only the first page sizes the rows: reserving for each later one would
    // reallocate (and copy) them all every page.
    if (m_graph.m_rows.isEmpty())
        m_graph.m_rows.reserve(page.size());
    for (const Changeset &changeset : page) {
        const qsizetype rowIndex = m_graph.m_rows.size();
        if (rowIndex % HistoryGraph::blockRows == 0) {
            QList<qsizetype> open;
            for (const Lane &lane : std::as_const(m_lanes)) {
                if (lane.span >= 0)
                    open.append(lane.span);
            }
            m_graph.m_openAtBlock.append(open);
        }
        HistoryGraph::Row row;
        row.firstSegment = m_graph.m_dotSegments.size();
        const auto addUpper = [&](qint32 from, qint32 to, qint32 colour) {
            m_graph.m_dotSegments.append(HistoryGraph::Segment{from, to, colour});
            ++row.upperCount;
        };
        const auto addLower = [&](qint32 from, qint32 to, qint32 colour) {
            m_graph.m_dotSegments.append(HistoryGraph::Segment{from, to, colour});
            ++row.lowerCount;
        };

        // Every lane that waits for this changeset ends in its dot, drawn in
        // the first of them.
        qint32 column = -1;
        for (qint32 lane = 0; lane < m_lanes.size(); ++lane) {
            if (m_lanes[lane].expected != changeset.node)
                continue;
            if (column < 0) {
                column = lane;
                continue;
            }
            addUpper(lane, column, m_lanes[lane].colour);
            endSpan(lane, rowIndex);
        }
        const QStringList &parents = changeset.parents;
        const auto laneWaitingFor = [this](const QString &node) {
            for (qint32 lane = 0; lane < m_lanes.size(); ++lane) {
                if (m_lanes[lane].expected == node)
                    return lane;
            }
            return -1;
        };

        // The first parent carries the dot's lane on unless another lane
        // already waits for it.
        bool firstParentHandled = false;
        if (column >= 0) {
            m_lanes[column].expected.clear();
            if (!parents.isEmpty() && laneWaitingFor(parents.first()) < 0) {
                m_lanes[column].expected = parents.first();
                firstParentHandled = true;
            } else {
                addUpper(column, column, m_lanes[column].colour);
                endSpan(column, rowIndex);
            }
        } else {
            // Nothing waited for it: the newest changeset of a line of its own.
            column = freeColumn();
            m_lanes[column].colour = m_nextColour++;
            if (!parents.isEmpty() && laneWaitingFor(parents.first()) < 0) {
                m_lanes[column].expected = parents.first();
                startSpan(column, rowIndex);
                addLower(column, column, m_lanes[column].colour);
                firstParentHandled = true;
            }
        }
        row.column = column;
        row.colour = m_lanes[column].colour;

        // A line to each other parent: into the lane that waits for it, or a lane of its own.
        for (qsizetype index = firstParentHandled ? 1 : 0; index < parents.size(); ++index) {
            qint32 target = laneWaitingFor(parents[index]);
            if (target < 0) {
                target = freeColumn();
                m_lanes[target].colour = m_nextColour++;
                m_lanes[target].expected = parents[index];
                startSpan(target, rowIndex);
            }
            addLower(column, target, m_lanes[target].colour);
        }
        while (!m_lanes.isEmpty() && m_lanes.last().expected.isEmpty())
            m_lanes.removeLast();
        m_graph.m_rows.append(row);
    }
}

} // namespace tillery
