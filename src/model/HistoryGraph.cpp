#include "model/HistoryGraph.h"

namespace tillery {

qint32 HistoryGraphLayout::freeColumn()
{
    for (qsizetype column = 0; column < m_lanes.size(); ++column) {
        if (m_lanes[column].expected.isEmpty())
            return static_cast<qint32>(column);
    }
    m_lanes.append(Lane{});
    return static_cast<qint32>(m_lanes.size() - 1);
}

void HistoryGraphLayout::append(const QList<Changeset> &page)
{
    m_graph.rows.reserve(m_graph.rows.size() + page.size());
    for (const Changeset &changeset : page) {
        HistoryGraph::Row row;
        row.firstSegment = m_graph.segments.size();
        const auto addSegment = [this](qint32 from, qint32 to, qint32 colour) {
            m_graph.segments.append(HistoryGraph::Segment{from, to, colour});
        };

        // Every lane that waits for this changeset ends in its dot, drawn in
        // the first of them; the others pass by.
        qint32 column = -1;
        for (qint32 lane = 0; lane < m_lanes.size(); ++lane) {
            if (m_lanes[lane].expected.isEmpty())
                continue;
            const bool endsHere = m_lanes[lane].expected == changeset.node;
            if (endsHere && column < 0)
                column = lane;
            addSegment(lane, endsHere ? column : lane, m_lanes[lane].colour);
            ++row.upperCount;
        }
        for (qint32 lane = column + 1; column >= 0 && lane < m_lanes.size(); ++lane) {
            if (m_lanes[lane].expected == changeset.node)
                m_lanes[lane].expected.clear();
        }
        // Nothing waited for it: the newest changeset of a line of its own.
        if (column < 0) {
            column = freeColumn();
            m_lanes[column].colour = m_nextColour++;
        }
        row.column = column;
        row.colour = m_lanes[column].colour;

        // Below the dot, a line to each parent: into a lane that already
        // waits for it, else the first parent carries this lane on and each
        // other parent starts a lane of its own.
        m_lanes[column].expected.clear();
        QList<qint32> targets;
        QList<qint32> startedHere;
        for (qsizetype index = 0; index < changeset.parents.size(); ++index) {
            const QString &parent = changeset.parents[index];
            qint32 target = -1;
            for (qint32 lane = 0; lane < m_lanes.size() && target < 0; ++lane) {
                if (m_lanes[lane].expected == parent)
                    target = lane;
            }
            if (target < 0) {
                target = index == 0 ? column : freeColumn();
                if (target != column)
                    m_lanes[target].colour = m_nextColour++;
                m_lanes[target].expected = parent;
                startedHere.append(target);
            }
            targets.append(target);
        }
        for (qint32 lane = 0; lane < m_lanes.size(); ++lane) {
            if (!m_lanes[lane].expected.isEmpty() && !startedHere.contains(lane)) {
                addSegment(lane, lane, m_lanes[lane].colour);
                ++row.lowerCount;
            }
        }
        for (const qint32 target : std::as_const(targets)) {
            addSegment(column, target, m_lanes[target].colour);
            ++row.lowerCount;
        }
        while (!m_lanes.isEmpty() && m_lanes.last().expected.isEmpty())
            m_lanes.removeLast();
        m_graph.rows.append(row);
    }
}

} // namespace tillery
