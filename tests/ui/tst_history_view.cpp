#include "WindowHarness.h"

#include "ui/ChangesetHeader.h"
#include "ui/EmptyState.h"
#include "ui/HistoryView.h"
#include "ui/TextButton.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace tillery;

class HistoryViewTest : public QObject {
    Q_OBJECT

    // Per kind two changesets: the chart, then the tides (and a buoy on the chart) with a bookmark
    // (Git: a branch) on it. Besides, a Git repository without history and one whose only commit
    // has no files. One window shows them all.
    std::unique_ptr<test::RepositoryFixture> m_repositories[2];
    QString m_first[2];
    QString m_second[2];
    std::unique_ptr<test::GitFixture> m_empty;
    std::unique_ptr<test::GitFixture> m_withoutFiles;
    std::unique_ptr<test::WindowHarness> m_harness;
    QDateTime m_clock;

    AppModel &model() { return m_harness->model(); }

    // Shows the repository on the Changes page, then opens History as a person does.
    HistoryView &openHistory(const test::RepositoryFixture &repository, RepositoryKind kind)
    {
        model().setTab(WorkspaceTab::changes);
        model().select(Repository{QDir::cleanPath(repository.path()), kind});
        m_harness->settle();
        QTest::mouseClick(m_harness->window().workspace()->tabHeader()->historyButton(), Qt::LeftButton);
        m_harness->settle();
        return *m_harness->window().workspace()->historyView();
    }

private Q_SLOTS:
    void initTestCase()
    {
        test::prepareUiTest();
        m_empty = std::make_unique<test::GitFixture>();
        m_withoutFiles = std::make_unique<test::GitFixture>();
        m_withoutFiles->commitAll(u"Nothing but a note"_s);
        m_harness = std::make_unique<test::WindowHarness>();
        m_harness->open();
        m_harness->addThroughMenu(m_empty->path());
        m_harness->addThroughMenu(m_withoutFiles->path());
        for (const RepositoryKind kind : {RepositoryKind::git, RepositoryKind::mercurial}) {
            const int k = int(kind);
            m_repositories[k] = test::makeFixture(kind);
            m_repositories[k]->write(u"chart.txt"_s, "harbour\n");
            m_first[k] = m_repositories[k]->commitAll(u"Chart the harbour"_s);
            m_repositories[k]->write(u"chart.txt"_s, "harbour\nbuoy\n");
            m_repositories[k]->write(u"tides.txt"_s, "high at six\n");
            m_second[k] = m_repositories[k]->commitAll(u"Add the tide table"_s);
            if (kind == RepositoryKind::mercurial)
                static_cast<test::MercurialFixture &>(*m_repositories[k]).bookmark(u"tides"_s);
            else
                static_cast<test::GitFixture &>(*m_repositories[k]).branch(u"tides"_s);
            m_harness->addThroughMenu(m_repositories[k]->path());
        }
    }

    void cleanupTestCase() { m_harness.reset(); }

    void rowsHeaderFilesAndDiff_data() { test::addKindColumn(); }

    void rowsHeaderFilesAndDiff()
    {
        QFETCH(RepositoryKind, kind);
        const int k = int(kind);
        const bool git = kind == RepositoryKind::git;
        HistoryView &view = openHistory(*m_repositories[k], kind);
        QListView *list = test::child<QListView>(view, u"history"_s);
        QListView *files = test::child<QListView>(view, u"changesetFiles"_s);
        ChangesetHeader &header = *test::child<ChangesetHeader>(view);
        const auto shownFile = [&view] { return test::child<QLabel>(view, u"diffPath"_s)->text(); };
        // Opening History shows the newest changeset.
        QCOMPARE(model().diffSelection().selectedChangeset()->node, m_second[k]);
        QCOMPARE(list->currentIndex().row(), 0);
        QVERIFY(header.isVisible());
        QCOMPARE(test::child<EmptyState>(view, u"nothingSelected"_s)->title(),
                 git ? u"Select a commit"_s : u"Select a changeset"_s);

        const QModelIndex newest = list->model()->index(0, 0);
        QCOMPARE(newest.data().toString(), u"Add the tide table"_s);
        QCOMPARE(newest.data(HistoryModel::AuthorRole).toString(), u"Tillery Tester"_s);
        QCOMPARE(newest.data(HistoryModel::HashRole).toString(), m_second[k].first(12));
        const QList<changesetText::Badge> badges = test::child<HistoryModel>(view)->badgesAt(0);
        QVERIFY(std::any_of(badges.cbegin(), badges.cend(), [](const auto &badge) { return badge.name == u"tides"; }));

        test::clickRow(list, list->model()->index(1, 0));
        QVERIFY(m_harness->settle());
        QCOMPARE(model().diffSelection().selectedChangeset()->node, m_first[k]);
        QCOMPARE(header.summary()->text(), u"Chart the harbour"_s);
        QCOMPARE(header.hashLabel()->text(), git ? u"Commit"_s : u"Changeset"_s);
        QCOMPARE(header.hashButton()->text(), m_first[k].first(12));
        QCOMPARE(header.author()->text(), u"Tillery Tester <tester@example.com>"_s);
        QCOMPARE(test::child<QLabel>(view, u"changesetFileCount"_s)->text(), u"1"_s);
        QCOMPARE(test::listedPaths(files), QStringList({u"chart.txt"_s}));
        QVERIFY(test::child<DiffCanvas>(view)->isVisible());
        QCOMPARE(shownFile(), u"chart.txt"_s);

        m_harness->models.desktop.clipboard.clear();
        header.copyButton()->click();
        header.hashButton()->click();
        QCOMPARE(m_harness->models.desktop.clipboard, QStringList({m_first[k], m_first[k]}));

        // Up the list with the keyboard: the newer changeset, its first file, then the other one.
        list->setFocus();
        QTest::keyClick(list, Qt::Key_Up);
        QVERIFY(m_harness->settle());
        QCOMPARE(model().diffSelection().selectedChangeset()->node, m_second[k]);
        QCOMPARE(header.summary()->text(), u"Add the tide table"_s);
        QCOMPARE(test::child<QLabel>(view, u"changesetFileCount"_s)->text(), u"2"_s);
        QCOMPARE(shownFile(), u"chart.txt"_s);
        test::clickRow(files, files->model()->index(1, 0));
        QVERIFY(m_harness->settle());
        QCOMPARE(shownFile(), u"tides.txt"_s);
        QVERIFY(model().diffSelection().diff().text.contains(u"+high at six"_s));
    }

    // A comparison shows alone under its own title, not under a changeset's
    // header; choosing a changeset again brings its header back.
    void comparisonShowsWithItsTitle()
    {
        HistoryView &view = openHistory(*m_repositories[int(RepositoryKind::git)], RepositoryKind::git);
        m_harness->models.prompts.choiceAnswers = {0};
        model().compare();
        QVERIFY(m_harness->settle());
        QCOMPARE(model().diffSelection().selectedChangeset(), std::nullopt);
        QVERIFY(!test::child<ChangesetHeader>(view)->isVisible());
        QCOMPARE(test::child<QLabel>(view, u"diffPath"_s)->text(), u"Changes on main since tides"_s);
        QCOMPARE(test::child<QPlainTextEdit>(view)->toPlainText(), u"There are no differences from tides."_s);

        QListView *list = test::child<QListView>(view, u"history"_s);
        test::clickRow(list, list->model()->index(1, 0));
        QVERIFY(m_harness->settle());
        QVERIFY(test::child<ChangesetHeader>(view)->isVisible());
        QCOMPARE(test::child<QLabel>(view, u"diffPath"_s)->text(), u"chart.txt"_s);
    }

    void emptyRepositoryShowsOneEmptyState()
    {
        HistoryView &view = openHistory(*m_empty, RepositoryKind::git);
        QVERIFY(test::child<EmptyState>(view, u"noHistory"_s)->isVisible());
        QVERIFY(!test::child<EmptyState>(view, u"nothingSelected"_s)->isVisible());
    }

    void changesetWithoutFiles()
    {
        HistoryView &view = openHistory(*m_withoutFiles, RepositoryKind::git);
        QVERIFY(test::child<ChangesetHeader>(view)->isVisible());
        QVERIFY(test::child<QLabel>(view, u"noChangedFiles"_s)->isVisible());
        QCOMPARE(test::child<QLabel>(view, u"changesetFileCount"_s)->text(), u"0"_s);
    }

    // Last: the clock it sets stays.
    void datesAgeWithoutARefresh()
    {
        HistoryView &view = openHistory(*m_repositories[int(RepositoryKind::git)], RepositoryKind::git);
        const QDateTime committed = model().workspace().snapshot().history.first().date;
        m_clock = committed.addSecs(30);
        view.setClock([this] { return m_clock; }, std::chrono::milliseconds(20));
        HistoryModel *history = test::child<HistoryModel>(view);
        const QModelIndex newest = history->index(0);
        QCOMPARE(newest.data(HistoryModel::DateRole).toString(), u"30 sec. ago"_s);

        QSignalSpy aged(history, &QAbstractItemModel::dataChanged);
        m_clock = committed.addSecs(2 * 3600 + 5);
        QTRY_VERIFY(!aged.isEmpty());
        QCOMPARE(aged.last().at(2).value<QList<int>>(), QList<int>({HistoryModel::DateRole, Qt::AccessibleTextRole}));
        QCOMPARE(newest.data(HistoryModel::DateRole).toString(), u"2 hr. ago"_s);
    }
};

QTEST_MAIN(HistoryViewTest)
#include "tst_history_view.moc"
