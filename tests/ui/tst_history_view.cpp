#include "RepositoryFixtures.h"
#include "TestEnvironment.h"
#include "WindowHarness.h"

#include "ui/ChangesetHeader.h"
#include "ui/DiffView.h"
#include "ui/EmptyState.h"
#include "ui/HistoryView.h"
#include "ui/RepositoryWorkspace.h"
#include "ui/TextButton.h"
#include "ui/WorkspaceTabHeader.h"

#include <QLabel>
#include <QListView>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::RepositoryFixture;
using test::WindowHarness;

namespace {

// Two changesets: the chart, then the tides (and a buoy on the chart) with a
// bookmark (Git: a branch) on it.
struct TwoChangesets {
    explicit TwoChangesets(RepositoryKind kind)
        : repository(test::makeFixture(kind))
    {
        repository->write(u"chart.txt"_s, "harbour\n");
        first = repository->commitAll(u"Chart the harbour"_s);
        repository->write(u"chart.txt"_s, "harbour\nbuoy\n");
        repository->write(u"tides.txt"_s, "high at six\n");
        second = repository->commitAll(u"Add the tide table"_s);
        if (kind == RepositoryKind::mercurial)
            static_cast<test::MercurialFixture &>(*repository).bookmark(u"tides"_s);
        else
            static_cast<test::GitFixture &>(*repository).branch(u"tides"_s);
    }
    std::unique_ptr<RepositoryFixture> repository;
    QString first;
    QString second;
};

HistoryView &openHistory(WindowHarness &harness, const QString &repository)
{
    harness.openOn(repository);
    TabButton *history = harness.window().workspace()->tabHeader()->historyButton();
    QTest::mouseClick(history, Qt::LeftButton);
    harness.settle();
    return *harness.window().workspace()->historyView();
}

void clickRow(QListView *list, int row)
{
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(list->model()->index(row, 0)).center());
}

} // namespace

class HistoryViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void rowsHeaderFilesAndDiff_data() { test::addKindColumn(); }

    void rowsHeaderFilesAndDiff()
    {
        QFETCH(RepositoryKind, kind);
        const TwoChangesets fixture(kind);
        WindowHarness harness;
        HistoryView &view = openHistory(harness, fixture.repository->path());
        QCOMPARE(harness.model().workspace().tab(), WorkspaceTab::history);
        QCOMPARE(view.state(), HistoryView::State::list);
        // Opening History shows the newest changeset.
        QCOMPARE(view.detail(), HistoryView::Detail::changeset);
        QCOMPARE(harness.model().diffSelection().selectedChangeset()->node, fixture.second);
        QCOMPARE(view.list()->currentIndex().row(), 0);
        QCOMPARE(view.nothingSelected()->title(),
                 kind == RepositoryKind::git ? u"Select a commit"_s : u"Select a changeset"_s);

        const QAbstractItemModel *rows = view.list()->model();
        QCOMPARE(rows->rowCount(), 2);
        QCOMPARE(rows->index(0, 0).data().toString(), u"Add the tide table"_s);
        QCOMPARE(rows->index(0, 0).data(HistoryModel::AuthorRole).toString(), u"Tillery Tester"_s);
        QCOMPARE(rows->index(0, 0).data(HistoryModel::HashRole).toString(), fixture.second.first(12));
        const QList<changesetText::Badge> badges = view.historyModel()->badgesAt(0);
        QVERIFY(std::any_of(badges.cbegin(), badges.cend(),
                            [](const changesetText::Badge &badge) { return badge.name == u"tides"; }));

        clickRow(view.list(), 1);
        QVERIFY(harness.settle());
        QCOMPARE(harness.model().diffSelection().selectedChangeset()->node, fixture.first);
        QCOMPARE(view.detail(), HistoryView::Detail::changeset);
        ChangesetHeader &header = *view.header();
        QCOMPARE(header.summary()->text(), u"Chart the harbour"_s);
        QCOMPARE(header.hashLabel()->text(), kind == RepositoryKind::git ? u"Commit"_s : u"Changeset"_s);
        QCOMPARE(header.hashButton()->text(), fixture.first.first(12));
        QCOMPARE(header.author()->text(), u"Tillery Tester <tester@example.com>"_s);
        QCOMPARE(view.filesCount()->text(), u"1"_s);
        QVERIFY(!view.showsNoFiles());
        QCOMPARE(test::listedPaths(view.fileList()), QStringList({u"chart.txt"_s}));
        QCOMPARE(view.diffView()->body(), DiffView::Body::rows);
        QCOMPARE(view.diffView()->shownFileName(), u"chart.txt"_s);

        header.copyButton()->click();
        header.hashButton()->click();
        QCOMPARE(harness.models.desktop.clipboard, QStringList({fixture.first, fixture.first}));

        // Up the list with the keyboard: the newer changeset, its first file, then the other one.
        view.list()->setFocus();
        QTest::keyClick(view.list(), Qt::Key_Up);
        QVERIFY(harness.settle());
        QCOMPARE(harness.model().diffSelection().selectedChangeset()->node, fixture.second);
        QCOMPARE(header.summary()->text(), u"Add the tide table"_s);
        QCOMPARE(view.filesCount()->text(), u"2"_s);
        QCOMPARE(view.diffView()->shownFileName(), u"chart.txt"_s);
        clickRow(view.fileList(), 1);
        QVERIFY(harness.settle());
        QCOMPARE(view.diffView()->shownFileName(), u"tides.txt"_s);
        QVERIFY(harness.model().diffSelection().diff().text.contains(u"+high at six"_s));
    }

    void emptyRepository_data() { test::addKindColumn(); }

    void emptyRepository()
    {
        QFETCH(RepositoryKind, kind);
        const std::unique_ptr<RepositoryFixture> repository = test::makeFixture(kind);
        WindowHarness harness;
        HistoryView &view = openHistory(harness, repository->path());
        QCOMPARE(view.state(), HistoryView::State::empty);
        QCOMPARE(view.emptyState()->title(), u"No History"_s);
        QCOMPARE(view.emptyState()->detail(), kind == RepositoryKind::git ? u"This repository has no commits yet."_s
                                                                          : u"This repository has no changesets yet."_s);
        // One empty state, not a second one beside it.
        QVERIFY(view.emptyState()->isVisible());
        QVERIFY(!view.nothingSelected()->isVisible());
    }

    // A comparison shows alone under its own title, not under a changeset's
    // header; choosing a changeset again brings its header back.
    void comparisonShowsWithItsTitle()
    {
        const TwoChangesets fixture(RepositoryKind::git);
        WindowHarness harness;
        HistoryView &view = openHistory(harness, fixture.repository->path());
        QTRY_VERIFY(view.header()->isVisible());
        QCOMPARE(harness.model().diffSelection().selectedChangeset()->summary, u"Add the tide table"_s);
        harness.models.prompts.choiceAnswers = {0};
        harness.model().compare();
        QVERIFY(harness.settle());
        QCOMPARE(harness.model().diffSelection().selectedChangeset(), std::nullopt);
        QVERIFY(!view.header()->isVisible());
        QCOMPARE(view.diffView()->shownFileName(), u"Changes on main since tides"_s);
        QCOMPARE(view.diffView()->messageText(), u"There are no differences from tides."_s);

        clickRow(view.list(), 1);
        QVERIFY(harness.settle());
        QVERIFY(view.header()->isVisible());
        QCOMPARE(view.diffView()->shownFileName(), u"chart.txt"_s);
    }

    void changesetWithoutFiles()
    {
        const test::GitFixture repository;
        repository.commitAll(u"Nothing but a note"_s);
        WindowHarness harness;
        HistoryView &view = openHistory(harness, repository.path());
        clickRow(view.list(), 0);
        QVERIFY(harness.settle());
        QCOMPARE(view.detail(), HistoryView::Detail::changeset);
        QVERIFY(view.showsNoFiles());
        QCOMPARE(view.filesCount()->text(), u"0"_s);
    }

    void datesAgeWithoutARefresh()
    {
        const TwoChangesets fixture(RepositoryKind::git);
        WindowHarness harness;
        HistoryView &view = openHistory(harness, fixture.repository->path());
        const QDateTime committed = harness.model().workspace().snapshot().history.first().date;
        QDateTime clock = committed.addSecs(30);
        view.setClock([&clock] { return clock; }, std::chrono::milliseconds(20));
        const QModelIndex newest = view.historyModel()->index(0);
        QCOMPARE(newest.data(HistoryModel::DateRole).toString(), u"30 sec. ago"_s);

        QSignalSpy aged(view.historyModel(), &QAbstractItemModel::dataChanged);
        clock = committed.addSecs(2 * 3600 + 5);
        QTRY_VERIFY(!aged.isEmpty());
        QCOMPARE(aged.last().at(2).value<QList<int>>(), QList<int>({HistoryModel::DateRole, Qt::AccessibleTextRole}));
        QCOMPARE(newest.data(HistoryModel::DateRole).toString(), u"2 hr. ago"_s);
        QCOMPARE(harness.models.prompts.alerts.size(), 0);
    }
};

QTEST_MAIN(HistoryViewTest)
#include "tst_history_view.moc"
