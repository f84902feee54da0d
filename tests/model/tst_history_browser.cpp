// The History page's rows through the model: older pages on demand, kept across a refresh that changes
// nothing, a search, going to a changeset and a file's history; and the lanes laid out for them.
#include "ModelHarness.h"
#include "RepositoryFixtures.h"
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

class HistoryBrowserTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void pagesAndSearch_data() { test::addKindColumn(); }
    void pagesAndSearch()
    {
        QFETCH(RepositoryKind, kind);
        const auto repository = test::makeLongHistory(kind, 300);
        test::ModelHarness harness;
        AppModel &model = harness.start();
        QVERIFY(harness.adopt(*repository));
        const HistoryBrowser &browser = model.historyBrowser();
        QCOMPARE(browser.changesets().size(), 250);
        QVERIFY(browser.hasMore());

        model.loadOlderHistory();
        QVERIFY(harness.settle());
        QCOMPARE(browser.changesets().size(), 300);
        QVERIFY(!browser.hasMore());
        QCOMPARE(browser.graph().rowCount(), 300);
        const QString deepest = browser.changesets().last().node;
        QCOMPARE(browser.changesets()[299].parents, QStringList());
        QCOMPARE(browser.changesets()[250].parents, QStringList{browser.changesets()[251].node});

        // Nothing changed: the older page stays. A new commit starts over.
        model.refresh();
        QVERIFY(harness.settle());
        QCOMPARE(browser.changesets().size(), 300);
        repository->write(u"new.txt"_s, "new\n");
        repository->commitAll(u"Newest"_s);
        model.refresh();
        QVERIFY(harness.settle());
        QCOMPARE(browser.changesets().size(), 250);
        QCOMPARE(browser.changesets().first().summary, u"Newest"_s);

        model.searchHistory(deepest.first(12));
        QVERIFY(harness.settle());
        QCOMPARE(browser.changesets().size(), 1);
        QCOMPARE(browser.changesets().first().node, deepest);
        QVERIFY(!browser.hasMore());
        model.searchHistory(u"newest"_s);
        QVERIFY(harness.settle());
        QCOMPARE(browser.changesets().size(), 1);
        model.searchHistory(QString());
        QCOMPARE(browser.changesets().size(), 250);
        QVERIFY(browser.hasMore());
    }

    // Going to a changeset beyond the loaded pages lands on it; the selection stays on it through a refresh
    // that starts the rows over and through leaving a search that found it.
    void goToAndKeepSelection_data() { test::addKindColumn(); }
    void goToAndKeepSelection()
    {
        QFETCH(RepositoryKind, kind);
        const auto repository = test::makeLongHistory(kind, 300);
        test::ModelHarness harness;
        AppModel &model = harness.start();
        model.setTab(WorkspaceTab::history);
        QVERIFY(harness.adopt(*repository));
        const HistoryBrowser &browser = model.historyBrowser();
        const auto selectedNode = [&model] {
            return model.diffSelection().selectedChangeset().value_or(Changeset()).node;
        };
        const QString deepest =
            kind == RepositoryKind::git
                ? QString::fromUtf8(repository->tool({u"rev-list"_s, u"--max-parents=0"_s, u"HEAD"_s}))
                : QString::fromUtf8(repository->tool({u"log"_s, u"-r0"_s, u"-T{node}"_s}));

        harness.prompts.textAnswers = {deepest.trimmed().first(12), u"nothing-here"_s};
        model.goToChangeset();
        QVERIFY(harness.settle());
        QCOMPARE(selectedNode(), deepest.trimmed());
        QCOMPARE(browser.changesets().size(), 300);
        model.goToChangeset();
        QVERIFY(harness.settle());
        QCOMPARE(harness.prompts.alerts.size(), 1);
        QCOMPARE(selectedNode(), deepest.trimmed());

        repository->write(u"new.txt"_s, "new\n");
        repository->commitAll(u"Newest"_s);
        model.refresh();
        QVERIFY(harness.settle());
        QCOMPARE(browser.changesets().first().summary, u"Newest"_s);
        QCOMPARE(selectedNode(), deepest.trimmed());
        QVERIFY(browser.rowOf(deepest.trimmed()) > 250);

        const Changeset older = browser.changesets().at(260);
        model.searchHistory(older.node.first(12));
        QVERIFY(harness.settle());
        QCOMPARE(selectedNode(), older.node);
        model.searchHistory(QString());
        QVERIFY(harness.settle());
        QCOMPARE(browser.rowOf(older.node), 260);
        QCOMPARE(selectedNode(), older.node);
    }

    // A file's history follows it back through a rename, with the file selected in each changeset
    // under the name it had then.
    void fileHistory_data() { test::addKindColumn(); }
    void fileHistory()
    {
        QFETCH(RepositoryKind, kind);
        const auto repository = test::makeFixture(kind);
        repository->write(u"a.txt"_s, "one\ntwo\nthree\nfour\n");
        repository->write(u"0-other.txt"_s, "other\n");
        repository->commitAll(u"Start"_s);
        repository->write(u"0-other.txt"_s, "changed\n");
        repository->commitAll(u"Other"_s);
        repository->tool({kind == RepositoryKind::git ? u"mv"_s : u"rename"_s, u"a.txt"_s, u"b.txt"_s});
        repository->write(u"0-other.txt"_s, "again\n");
        repository->commitAll(u"Rename"_s);
        repository->write(u"b.txt"_s, "one\ntwo\nthree\nfour\nfive\n");
        repository->commitAll(u"Change b"_s);

        test::ModelHarness harness;
        AppModel &model = harness.start();
        QVERIFY(harness.adopt(*repository));
        model.showFileHistory(u"b.txt"_s);
        QVERIFY(harness.settle());
        QStringList found;
        for (const Changeset &changeset : model.historyBrowser().changesets())
            found.append(changeset.summary);
        QCOMPARE(found, (QStringList{u"Change b"_s, u"Rename"_s, u"Start"_s}));
        QCOMPARE(model.historyNavigation().searchText(), u"file:\"b.txt\""_s);
        model.selectChangeset(model.historyBrowser().changesets().last());
        QVERIFY(harness.settle());
        QCOMPARE(model.diffSelection().selectedChangesetFile().value_or(WorkingFile()).path, u"a.txt"_s);
    }

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

QTEST_GUILESS_MAIN(HistoryBrowserTest)
#include "tst_history_browser.moc"
