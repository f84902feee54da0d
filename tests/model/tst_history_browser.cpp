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
        const std::unique_ptr<test::RepositoryFixture> repository = test::makeFixture(kind);
        // 300 changesets, made by the tool in one go.
        if (kind == RepositoryKind::git) {
            auto &git = static_cast<test::GitFixture &>(*repository);
            git.importCommits(u"main"_s, 300);
            git.checkOut(u"main"_s);
        } else {
            repository->tool({u"debugbuilddag"_s, u"+300"_s});
            repository->tool({u"update"_s, u"--quiet"_s, u"tip"_s});
        }
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
};

QTEST_MAIN(HistoryBrowserTest)
#include "tst_history_browser.moc"
