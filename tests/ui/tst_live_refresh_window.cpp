// A change made outside Tillery refreshes the window by itself, and leaves
// what the person is doing as it was: the chosen rows and where the lists
// are scrolled to, and the commit message being typed, its cursor and focus.
#include "WindowHarness.h"

#include "ui/HistoryView.h"

#include <QScrollBar>
#include <QTableView>

using namespace Qt::StringLiterals;
using namespace tillery;

namespace {

// What the person sees and is doing, compared before and after a refresh.
struct Work {
    QString chosenFile;
    int changesScroll = 0;
    QString chosenChangeset;
    int historyScroll = 0;
    QString typed;
    int cursor = 0;
    bool typing = false;
    friend bool operator==(const Work &, const Work &) = default;
};

char *toString(const Work &work)
{
    return QTest::toString(u"file %1 at %2, changeset %3 at %4, \"%5\" cursor %6%7"_s.arg(work.chosenFile)
                               .arg(work.changesScroll)
                               .arg(work.chosenChangeset)
                               .arg(work.historyScroll)
                               .arg(work.typed)
                               .arg(work.cursor)
                               .arg(work.typing ? u" typing"_s : QString()));
}

} // namespace

class LiveRefreshWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void refreshLeavesWorkAlone_data() { test::addKindColumn(); }

    void refreshLeavesWorkAlone()
    {
        QFETCH(RepositoryKind, kind);
        const auto repository = test::makeLongHistory(kind, 120);
        for (int index = 0; index < 150; ++index)
            repository->write(u"file-%1.txt"_s.arg(index, 3, 10, QChar(u'0')), "new\n");
        test::WindowHarness harness;
        harness.open();
        harness.model().adoptRepository(Repository{repository->path(), kind});
        QVERIFY(harness.settle());

        RepositoryWorkspace &workspace = *harness.window().workspace();
        QListView *changes = harness.changes().list();
        auto *history = test::child<QTableView>(*workspace.historyView(), u"history"_s);
        harness.model().setTab(WorkspaceTab::history);
        QVERIFY(harness.settle());
        history->scrollTo(history->model()->index(60, 0), QAbstractItemView::PositionAtCenter);
        test::clickRow(history, history->model()->index(60, 0));
        QVERIFY(harness.settle());
        harness.model().setTab(WorkspaceTab::changes);
        QVERIFY(harness.settle());
        changes->scrollTo(changes->model()->index(90, 0), QAbstractItemView::PositionAtCenter);
        test::clickRow(changes, changes->model()->index(90, 0));
        QVERIFY(harness.settle());
        auto *summary = test::child<QLineEdit>(*test::child<CommitBox>(harness.changes()));
        summary->setFocus();
        QTest::keyClicks(summary, u"Half typed"_s);
        summary->setCursorPosition(4);

        const auto seen = [&] {
            return Work{changes->currentIndex().data().toString(),
                        changes->verticalScrollBar()->value(),
                        harness.model().diffSelection().selectedChangeset().value_or(Changeset{}).node,
                        history->verticalScrollBar()->value(),
                        summary->text(),
                        summary->cursorPosition(),
                        summary->hasFocus()};
        };
        const Work before = seen();
        QVERIFY(before.changesScroll > 0 && before.historyScroll > 0 && before.typing);
        QVERIFY(!before.chosenChangeset.isEmpty());

        const auto listed = [&harness](const QString &path) {
            const QList<WorkingFile> &files = harness.model().workspace().snapshot().files;
            return std::any_of(files.cbegin(), files.cend(), [&path](const WorkingFile &file) { return file.path == path; });
        };
        repository->write(u"zzz-outside.txt"_s, "outside\n");
        QTRY_VERIFY_WITH_TIMEOUT(listed(u"zzz-outside.txt"_s), 20000);
        QVERIFY(harness.settle());
        QCOMPARE(seen(), before);
    }
};

QTEST_MAIN(LiveRefreshWindowTest)
#include "tst_live_refresh_window.moc"
