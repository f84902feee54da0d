// The History page's older pages, search field, file history and going to a changeset, driven as a
// person does, over both kinds. (What the rows hold: tst_history_browser.)
#include "WindowHarness.h"

#include "ui/HistoryModel.h"
#include "ui/HistoryView.h"

using namespace Qt::StringLiterals;
using namespace tillery;

class HistoryWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    // Going to the end shows the next older page, read while the rows before it were looked at; the page
    // after that is not there yet, and a loading row says so until it is. A hash typed into the field
    // finds the changeset, and Escape brings back the whole history with it selected; a word that matches
    // nothing says so. The file menu shows a file's history, the field saying what it is filtered on. Go
    // to (Ctrl+L) lands on the oldest changeset, scrolled into view; a name that names nothing says so.
    void browsing_data() { test::addKindColumn(); }
    void browsing()
    {
        QFETCH(RepositoryKind, kind);
        // 600 changesets and, newest, one that adds notes.txt.
        const auto repository = test::makeLongHistory(kind, 600);
        repository->write(u"notes.txt"_s, "notes\n");
        repository->commitAll(u"Add notes"_s);
        test::WindowHarness harness;
        harness.open();
        harness.model().setTab(WorkspaceTab::history);
        QVERIFY(harness.adopt(*repository));
        HistoryView &view = *harness.window().workspace()->historyView();
        auto *list = test::child<QAbstractItemView>(view, u"history"_s);
        auto *search = test::child<QLineEdit>(view, u"historySearch"_s);
        const auto currentNode = [list] {
            const QModelIndex current = list->currentIndex();
            return current.isValid() ? static_cast<HistoryModel *>(list->model())->changesetAt(current.row()).node
                                     : QString();
        };
        const auto node = [&](const QStringList &gitArguments, const QString &revision) {
            return QString::fromUtf8(repository->tool(repository->isGit()
                                                          ? gitArguments
                                                          : QStringList{u"log"_s, u"-r"_s + revision, u"-T{node}"_s}))
                .trimmed();
        };

        QCOMPARE(list->model()->rowCount(), 250);
        QWidget *loadingRow = test::child<QWidget>(view, u"historyLoadingRow"_s);
        QVERIFY(!loadingRow->isVisible());
        // End goes to the last row, as in any list.
        QTest::keyClick(list, Qt::Key_End);
        QCOMPARE(list->currentIndex().row(), 249);
        QCOMPARE(list->model()->rowCount(), 500);
        list->scrollToBottom();
        QVERIFY(loadingRow->isVisible());
        QTRY_COMPARE(list->model()->rowCount(), 601);
        QVERIFY(harness.settle());
        QVERIFY(!loadingRow->isVisible());

        const QString wanted = node({u"rev-list"_s, u"--skip=590"_s, u"--max-count=1"_s, u"HEAD"_s}, u"10"_s);
        QTest::keyClicks(search, wanted.first(12));
        QTest::keyClick(search, Qt::Key_Return);
        QVERIFY(harness.settle());
        QCOMPARE(list->model()->rowCount(), 1);
        QCOMPARE(currentNode(), wanted);
        QTest::keyClick(search, Qt::Key_Escape);
        QVERIFY(harness.settle());
        QCOMPARE(search->text(), QString());
        QVERIFY(list->model()->rowCount() > 590);
        QCOMPARE(currentNode(), wanted);
        QCOMPARE(harness.model().diffSelection().selectedChangeset().value_or(Changeset()).node, wanted);
        QTest::keyClicks(search, u"-nothing-matches-this"_s);
        QTest::keyClick(search, Qt::Key_Return);
        QVERIFY(harness.settle());
        QVERIFY(test::child<QWidget>(view, u"noMatches"_s)->isVisible());
        QTest::keyClick(search, Qt::Key_Escape);
        QVERIFY(harness.settle());

        test::clickRow(list, list->model()->index(0, 0));
        QVERIFY(harness.settle());
        const std::unique_ptr<QMenu> menu(view.fileContextMenuFor(0));
        test::findAction(menu.get(), u"Show History of This File"_s)->trigger();
        QVERIFY(harness.settle());
        QCOMPARE(search->text(), u"file:\"notes.txt\""_s);
        QCOMPARE(test::rowValues(list), QStringList{u"Add notes"_s});
        QCOMPARE(harness.model().diffSelection().selectedChangesetFile().value_or(WorkingFile()).path, u"notes.txt"_s);
        QTest::keyClick(search, Qt::Key_Escape);
        QVERIFY(harness.settle());

        const QString oldest = node({u"rev-list"_s, u"--max-parents=0"_s, u"HEAD"_s}, u"0"_s);
        harness.models.prompts.textAnswers = {oldest.first(10), u"no-such-name"_s};
        QTest::keyClick(list, Qt::Key_L, Qt::ControlModifier);
        QVERIFY(harness.settle());
        QCOMPARE(currentNode(), oldest);
        QCOMPARE(list->currentIndex().row(), 600);
        QVERIFY(list->viewport()->rect().intersects(list->visualRect(list->currentIndex())));
        QTest::keyClick(list, Qt::Key_L, Qt::ControlModifier);
        QVERIFY(harness.settle());
        QCOMPARE(harness.models.prompts.alerts.size(), 1);
        QCOMPARE(currentNode(), oldest);
    }
};

QTEST_MAIN(HistoryWindowTest)
#include "tst_history_window.moc"
