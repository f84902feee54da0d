// The History page's search field, older pages, file history and going to a
// changeset, driven as a person does, over both kinds.
#include "WindowHarness.h"

#include "ui/HistoryModel.h"
#include "ui/HistoryView.h"

using namespace Qt::StringLiterals;
using namespace tillery;

namespace {

// 300 changesets (or as many as asked) and, newest, one that adds notes.txt.
struct Scene {
    explicit Scene(RepositoryKind kind, int count = 300)
        : repository(test::makeLongHistory(kind, count))
    {
        repository->write(u"notes.txt"_s, "notes\n");
        repository->commitAll(u"Add notes"_s);
        harness.open();
        harness.model().adoptRepository(Repository{repository->path(), kind});
        harness.model().setTab(WorkspaceTab::history);
        harness.settle();
    }

    // The id of the changeset made `fromOldest`-th, the first being 0.
    QString nodeOf(int fromOldest) const
    {
        return model().historyBrowser().changesets().size() > 300 - fromOldest
                   ? model().historyBrowser().changesets().at(300 - fromOldest).node
                   : QString();
    }
    const AppModel &model() const { return const_cast<test::WindowHarness &>(harness).model(); }
    HistoryView &view() { return *harness.window().workspace()->historyView(); }
    QAbstractItemView *list() { return test::child<QAbstractItemView>(view(), u"history"_s); }
    QLineEdit *search() { return test::child<QLineEdit>(view(), u"historySearch"_s); }
    QString selectedNode() const { return model().diffSelection().selectedChangeset().value_or(Changeset()).node; }
    QString currentNode()
    {
        const QModelIndex current = list()->currentIndex();
        return current.isValid() ? static_cast<HistoryModel *>(list()->model())->changesetAt(current.row()).node
                                 : QString();
    }

    std::unique_ptr<test::RepositoryFixture> repository;
    test::WindowHarness harness;
};

} // namespace

class HistoryWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    // Going to the end shows the next older page, read while the rows before it were looked at;
    // the page after that is not there yet, and a loading row says so until it is.
    void scrollingLoadsOlderPages_data() { test::addKindColumn(); }
    void scrollingLoadsOlderPages()
    {
        QFETCH(RepositoryKind, kind);
        Scene scene(kind, 600);
        QCOMPARE(scene.list()->model()->rowCount(), 250);
        QWidget *loadingRow = test::child<QWidget>(scene.view(), u"historyLoadingRow"_s);
        QVERIFY(!loadingRow->isVisible());
        // End goes to the last row, as in any list.
        QTest::keyClick(scene.list(), Qt::Key_End);
        QCOMPARE(scene.list()->currentIndex().row(), 249);
        QCOMPARE(scene.list()->model()->rowCount(), 500);
        scene.list()->scrollToBottom();
        QVERIFY(loadingRow->isVisible());
        QTRY_COMPARE(scene.list()->model()->rowCount(), 601);
        QVERIFY(scene.harness.settle());
        QVERIFY(!loadingRow->isVisible());
    }

    // A hash typed into the field finds the changeset; Escape brings back the whole history with it
    // selected, pages loaded down to it. A word that matches nothing says so.
    void searchAndEscape_data() { test::addKindColumn(); }
    void searchAndEscape()
    {
        QFETCH(RepositoryKind, kind);
        Scene scene(kind);
        const QString wanted = kind == RepositoryKind::git
                                   ? QString::fromUtf8(scene.repository->tool({u"rev-list"_s, u"--skip=290"_s,
                                                                                u"--max-count=1"_s, u"HEAD"_s}))
                                   : QString::fromUtf8(scene.repository->tool({u"log"_s, u"-r10"_s, u"-T{node}"_s}));
        QTest::keyClicks(scene.search(), wanted.trimmed().first(12));
        QTest::keyClick(scene.search(), Qt::Key_Return);
        QVERIFY(scene.harness.settle());
        QCOMPARE(scene.list()->model()->rowCount(), 1);
        QCOMPARE(scene.currentNode(), wanted.trimmed());

        QTest::keyClick(scene.search(), Qt::Key_Escape);
        QVERIFY(scene.harness.settle());
        QCOMPARE(scene.search()->text(), QString());
        QVERIFY(scene.list()->model()->rowCount() > 290);
        QCOMPARE(scene.currentNode(), wanted.trimmed());
        QCOMPARE(scene.selectedNode(), wanted.trimmed());

        QTest::keyClicks(scene.search(), u"-nothing-matches-this"_s);
        QTest::keyClick(scene.search(), Qt::Key_Return);
        QVERIFY(scene.harness.settle());
        QVERIFY(test::child<QWidget>(scene.view(), u"noMatches"_s)->isVisible());
    }

    // A file's history from the changeset's file menu; the field shows what it is filtered on.
    void fileHistoryFromTheMenu_data() { test::addKindColumn(); }
    void fileHistoryFromTheMenu()
    {
        QFETCH(RepositoryKind, kind);
        Scene scene(kind);
        const std::unique_ptr<QMenu> menu(scene.view().fileContextMenuFor(0));
        test::findAction(menu.get(), u"Show History of This File"_s)->trigger();
        QVERIFY(scene.harness.settle());
        QCOMPARE(scene.search()->text(), u"file:\"notes.txt\""_s);
        QCOMPARE(test::rowValues(scene.list()), QStringList{u"Add notes"_s});
        QCOMPARE(scene.model().diffSelection().selectedChangesetFile().value_or(WorkingFile()).path, u"notes.txt"_s);
    }

    // Go to (Ctrl+L) lands on the oldest changeset, pages loaded and the row scrolled into view; a name
    // that names nothing says so.
    void goToChangeset_data() { test::addKindColumn(); }
    void goToChangeset()
    {
        QFETCH(RepositoryKind, kind);
        Scene scene(kind);
        const QString oldest = kind == RepositoryKind::git
                                   ? QString::fromUtf8(scene.repository->tool(
                                         {u"rev-list"_s, u"--max-parents=0"_s, u"HEAD"_s}))
                                   : QString::fromUtf8(scene.repository->tool({u"log"_s, u"-r0"_s, u"-T{node}"_s}));
        scene.harness.models.prompts.textAnswers = {oldest.trimmed().first(10), u"no-such-name"_s};
        QTest::keyClick(scene.list(), Qt::Key_L, Qt::ControlModifier);
        QVERIFY(scene.harness.settle());
        QCOMPARE(scene.currentNode(), oldest.trimmed());
        QCOMPARE(scene.list()->currentIndex().row(), 300);
        QVERIFY(scene.list()->viewport()->rect().intersects(scene.list()->visualRect(scene.list()->currentIndex())));
        QTest::keyClick(scene.list(), Qt::Key_L, Qt::ControlModifier);
        QVERIFY(scene.harness.settle());
        QCOMPARE(scene.harness.models.prompts.alerts.size(), 1);
        QCOMPARE(scene.currentNode(), oldest.trimmed());
    }
};

QTEST_MAIN(HistoryWindowTest)
#include "tst_history_window.moc"
