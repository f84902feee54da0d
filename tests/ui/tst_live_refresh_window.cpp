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

// What the person sees and is doing, before and after a refresh.
struct Work {
    QString chosenFile;
    int changesScroll = 0;
    Qt::CheckState chosenLines = Qt::Unchecked;
    QString chosenChangeset;
    int historyScroll = 0;
    QString typed;
    int cursor = 0;
    bool typing = false;
    friend bool operator==(const Work &, const Work &) = default;
};

char *toString(const Work &work)
{
    return QTest::toString(u"%1 at %2 (%3), %4 at %5, \"%6\" at %7%8"_s.arg(work.chosenFile)
                               .arg(work.changesScroll)
                               .arg(work.chosenLines)
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
        repository->write(u"tracked.txt"_s, "one\ntwo\nthree\nfour\nfive\nsix\nseven\neight\n");
        repository->commitAll(u"tracked"_s);
        repository->write(u"tracked.txt"_s, "ONE\ntwo\nthree\nfour\nfive\nsix\nseven\nEIGHT\n");
        for (int index = 0; index < 150; ++index)
            repository->write(u"file-%1.txt"_s.arg(index, 3, 10, QChar(u'0')), "new\n");
        test::WindowHarness harness;
        harness.open();
        AppModel &model = harness.model();
        QVERIFY(harness.adopt(*repository));

        // A history row chosen, then on Changes a file, its first changed lines and a message half typed.
        auto *history = test::child<QTableView>(*harness.window().workspace()->historyView(), u"history"_s);
        QListView *changes = harness.changes().list();
        for (const auto &[tab, list, row] :
             {std::tuple<WorkspaceTab, QAbstractItemView *, int>{WorkspaceTab::history, history, 60},
              {WorkspaceTab::changes, changes, 150}}) {
            model.setTab(tab);
            list->scrollTo(list->model()->index(row, 0), QAbstractItemView::PositionAtCenter);
            test::clickRow(list, list->model()->index(row, 0));
            QVERIFY(harness.settle());
        }
        const QList<PresentedDiffLine> &lines = model.diffSelection().diff().unifiedLines;
        const auto deletion = std::find_if(lines.cbegin(), lines.cend(), [](const PresentedDiffLine &line) {
            return line.kind == DiffLineKind::deletion;
        });
        model.setShownLinesChosen(deletion - lines.cbegin(), deletion - lines.cbegin() + 1, true);
        auto *summary = test::child<QLineEdit>(*test::child<CommitBox>(harness.changes()));
        summary->setFocus();
        QTest::keyClicks(summary, u"Half typed"_s);
        summary->setCursorPosition(4);

        const auto seen = [&] {
            return Work{changes->currentIndex().data().toString(),
                        changes->verticalScrollBar()->value(),
                        model.chosenLines().fileState(u"tracked.txt"_s),
                        model.diffSelection().selectedChangeset().value_or(Changeset{}).node,
                        history->verticalScrollBar()->value(),
                        summary->text(),
                        summary->cursorPosition(),
                        summary->hasFocus()};
        };
        const Work before = seen();
        QVERIFY(before.changesScroll > 0 && before.historyScroll > 0 && before.typing);
        QCOMPARE(before.chosenLines, Qt::PartiallyChecked);
        QVERIFY(!before.chosenChangeset.isEmpty());

        repository->write(u"zzz-outside.txt"_s, "outside\n");
        QTRY_COMPARE_WITH_TIMEOUT(model.workspace().snapshot().files.size(), 152, 20000);
        QVERIFY(harness.settle());
        QCOMPARE(seen(), before);
    }
};

QTEST_MAIN(LiveRefreshWindowTest)
#include "tst_live_refresh_window.moc"
