// The History page's rows through the model: older pages on demand, kept
// across a refresh that changes nothing, and a search.
#include "ModelHarness.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;

class HistoryBrowserTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void pagesAndSearch_data() { test::addKindColumn(); }
    void pagesAndSearch()
    {
        QFETCH(RepositoryKind, kind);
        const std::unique_ptr<test::RepositoryFixture> repository = test::makeLongHistory(kind, 300);
        test::ModelHarness harness;
        AppModel &model = harness.start();
        model.adoptRepository(Repository{repository->path(), kind});
        QVERIFY(harness.settle());
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
        const std::unique_ptr<test::RepositoryFixture> repository = test::makeLongHistory(kind, 300);
        test::ModelHarness harness;
        AppModel &model = harness.start();
        model.adoptRepository(Repository{repository->path(), kind});
        model.setTab(WorkspaceTab::history);
        QVERIFY(harness.settle());
        const HistoryBrowser &browser = model.historyBrowser();
        const auto selectedNode = [&model] { return model.diffSelection().selectedChangeset().value_or(Changeset()).node; };
        const QString deepest = kind == RepositoryKind::git
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
        const std::unique_ptr<test::RepositoryFixture> repository = test::makeFixture(kind);
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
        model.adoptRepository(Repository{repository->path(), kind});
        QVERIFY(harness.settle());
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
};

QTEST_MAIN(HistoryBrowserTest)
#include "tst_history_browser.moc"
