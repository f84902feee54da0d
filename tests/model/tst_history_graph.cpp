#include "TestEnvironment.h"

#include "model/HistoryGraph.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;

namespace {

// "m:x y|x:b|..." as changesets, newest first: a node, a colon, its parents.
QList<Changeset> historyOf(const QString &text)
{
    QList<Changeset> history;
    for (const QString &entry : text.split(u'|')) {
        Changeset changeset;
        changeset.node = entry.section(u':', 0, 0).trimmed();
        changeset.parents = entry.section(u':', 1).split(u' ', Qt::SkipEmptyParts);
        history.append(changeset);
    }
    return history;
}

// A row as "column/colour: upper half | lower half", a segment as "from-to".
QStringList describe(const HistoryGraph &graph)
{
    const auto segments = [](const QList<HistoryGraph::Segment> &half) {
        QStringList described;
        for (const HistoryGraph::Segment &segment : half)
            described.append(u"%1-%2"_s.arg(segment.from).arg(segment.to));
        return described.join(u' ');
    };
    QStringList rows;
    for (qsizetype index = 0; index < graph.rowCount(); ++index) {
        const HistoryGraph::Row &row = graph.row(index);
        rows.append(u"%1/%2: %3 | %4"_s.arg(row.column)
                        .arg(row.colour)
                        .arg(segments(graph.upperHalf(index)), segments(graph.lowerHalf(index)))
                        .trimmed());
    }
    return rows;
}

} // namespace

class HistoryGraphTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void lanes_data()
    {
        QTest::addColumn<QString>("history");
        QTest::addColumn<QStringList>("rows");
        QTest::newRow("a straight line") << u"c:b|b:a|a:"_s
                                         << QStringList{u"0/0:  | 0-0"_s, u"0/0: 0-0 | 0-0"_s, u"0/0: 0-0 |"_s};
        // The merge's second parent starts a lane in a colour of its own; the
        // two lines join where they forked, and the lane that remains keeps
        // its column.
        QTest::newRow("a fork and a merge")
            << u"m:x y|y:b|x:b|b:a|a:"_s
            << QStringList{u"0/0:  | 0-0 0-1"_s, u"1/1: 0-0 1-1 | 0-0 1-1"_s, u"0/0: 0-0 1-1 | 1-1 0-1"_s,
                           u"1/1: 1-1 | 1-1"_s, u"1/1: 1-1 |"_s};
        QTest::newRow("two tips on one parent")
            << u"t2:a|t1:a|a:"_s << QStringList{u"0/0:  | 0-0"_s, u"1/1: 0-0 | 0-0 1-0"_s, u"0/0: 0-0 |"_s};
        QTest::newRow("an unrelated root between")
            << u"b:a|z:|a:"_s << QStringList{u"0/0:  | 0-0"_s, u"1/1: 0-0 | 0-0"_s, u"0/0: 0-0 |"_s};
        QTest::newRow("three parents") << u"o:a b c|c:|b:|a:"_s
                                       << QStringList{u"0/0:  | 0-0 0-1 0-2"_s, u"2/2: 0-0 1-1 2-2 | 0-0 1-1"_s,
                                                      u"1/1: 0-0 1-1 | 0-0"_s, u"0/0: 0-0 |"_s};
    }

    void lanes()
    {
        QFETCH(QString, history);
        QFETCH(QStringList, rows);
        HistoryGraphLayout layout;
        layout.append(historyOf(history));
        QCOMPARE(describe(layout.graph()), rows);
    }

    // Pages laid out one after another make the graph of the whole, also
    // where a lane runs through thousands of rows.
    void pagesContinueTheLanes()
    {
        QStringList entries{u"m:x0 side"_s};
        for (int index = 0; index < 3000; ++index)
            entries.append(u"x%1:x%2"_s.arg(index).arg(index + 1));
        entries.append(u"x3000:|side:"_s);
        const QList<Changeset> history = historyOf(entries.join(u'|'));
        HistoryGraphLayout whole;
        whole.append(history);
        HistoryGraphLayout paged;
        for (qsizetype start = 0; start < history.size(); start += 250)
            paged.append(history.sliced(start, std::min<qsizetype>(250, history.size() - start)));
        const QStringList rows = describe(whole.graph());
        QCOMPARE(describe(paged.graph()), rows);
        QCOMPARE(rows.value(2500), u"0/0: 0-0 1-1 | 0-0 1-1"_s);
        QCOMPARE(rows.last(), u"1/1: 1-1 |"_s);
    }
};

QTEST_GUILESS_MAIN(HistoryGraphTest)
#include "tst_history_graph.moc"
