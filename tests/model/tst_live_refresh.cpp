// Live refresh: the selected repository watched for changes made outside Tillery, which show without
// the window becoming active, in the model and in the window.
#include "FakeTool.h"
#include "WindowHarness.h"

#include "mercurial/MercurialIgnoredFolders.h"
#include "model/WatchPlan.h"
#include "ui/HistoryView.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableView>
#include <QTemporaryDir>

#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::ModelHarness;

namespace {

// A repository of the kind with a.txt, b.txt and sub/c.txt committed, the
// folders build/ and node_modules/ ignored (build/sub there from the start),
// selected in a started model whose watch is in place. Changes are waited
// for with settle(): the model is idle only once no change waits to be
// judged, no refresh runs and no folder waits to be added.
struct Live {
    std::unique_ptr<test::RepositoryFixture> repository;
    ModelHarness harness;
    QString expected;
    std::unique_ptr<test::RepositoryFixture> other;

    explicit Live(RepositoryKind kind, std::optional<int> folderLimit = std::nullopt)
        : repository(test::makeFixture(kind))
    {
        const bool git = kind == RepositoryKind::git;
        for (const QString &name : {u"a.txt"_s, u"b.txt"_s, u"sub/c.txt"_s})
            write(name);
        write(git ? u".gitignore"_s : u".hgignore"_s,
              git ? "build/\nnode_modules/\n" : "syntax: glob\nbuild\nnode_modules\n");
        repository->commitAll(u"base"_s);
        QDir(repository->path()).mkpath(u"build/sub"_s);
        harness.watchedFolderLimit = folderLimit;
        harness.start();
        harness.adopt(*repository);
    }
    AppModel &model() { return harness.model(); }
    void write(const QString &relative, const QByteArray &contents = "x\n") { repository->write(relative, contents); }
    // Saved as many editors save: a new file put in the old one's place.
    void replace(const QString &relative)
    {
        const QByteArray target = QFile::encodeName(repository->filePath(relative));
        write(relative + u".new"_s, "replaced\n");
        QCOMPARE(std::rename(target + ".new", target), 0);
    }
    void makeFolder(const QString &relative) { QVERIFY(QDir(repository->path()).mkpath(relative)); }
    bool listed(const QString &path)
    {
        const QList<WorkingFile> &files = model().workspace().snapshot().files;
        return std::any_of(files.cbegin(), files.cend(),
                           [&path](const WorkingFile &file) { return file.path == path; });
    }
};

using Step = std::function<void(Live &)>;
using Check = std::function<bool(Live &)>;

void listedAfter(const char *name, const Step &before, const Step &change, const QString &path)
{
    test::addRowsForBothKinds(name, [&](QTestData &row) {
        row << before << change << Check([path](Live &live) { return live.listed(path); });
    });
}

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

Q_DECLARE_METATYPE(Step)
Q_DECLARE_METATYPE(Check)

class LiveRefreshTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void mercurialIgnoredFoldersParsed_data()
    {
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<QStringList>("asked");
        QTest::addColumn<QStringList>("ignored");
        QTest::newRow("verdicts in order, rules skipped")
            << QByteArray("build is ignored\n(ignore rule in /r/.hgignore, line 1: 'build')\nsrc is not ignored\n"
                          "out/x is ignored because of containing directory out\n(ignore rule in f, line 2: 'out')\n")
            << QStringList{u"build"_s, u"src"_s, u"out/x"_s} << QStringList{u"build"_s, u"out/x"_s};
        QTest::newRow("names holding the verdict's words")
            << QByteArray("a is ignored is not ignored\nb is not ignored is ignored\n(ignore rule in f, line 1: 'x')\n")
            << QStringList{u"a is ignored"_s, u"b is not ignored"_s} << QStringList{u"b is not ignored"_s};
        QTest::newRow("an answer out of step ends the reading")
            << QByteArray("src is not ignored\nsomething else\nlate is ignored\n") << QStringList{u"src"_s, u"late"_s}
            << QStringList();
    }

    void mercurialIgnoredFoldersParsed()
    {
        QFETCH(QByteArray, output);
        QFETCH(QStringList, asked);
        QFETCH(QStringList, ignored);
        QCOMPARE(mercurial::parseIgnoredFolders(output, asked), QSet<QString>(ignored.cbegin(), ignored.cend()));
    }

    // The walk leaves out ignored folders with all below them, tool folders,
    // nested repositories and links (one back to the root among them), and
    // asks about each depth once.
    void walkPrunes_data()
    {
        QTest::addColumn<QStringList>("made");
        QTest::addColumn<QStringList>("ignored");
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<int>("questions");
        QTest::newRow("plain tree") << QStringList{u"a/b/c"_s, u"d"_s} << QStringList()
                                    << QStringList{u""_s, u"a"_s, u"a/b"_s, u"a/b/c"_s, u"d"_s} << 3;
        QTest::newRow("ignored folder and below")
            << QStringList{u"build/x/y"_s, u"src/build"_s} << QStringList{u"build"_s, u"src/build"_s}
            << QStringList{u""_s, u"src"_s} << 2;
        QTest::newRow("tool folders and a nested repository")
            << QStringList{u".git/refs"_s, u"sub/.hg/store"_s, u"keep/.hg-not"_s} << QStringList()
            << QStringList{u""_s, u"keep"_s, u"keep/.hg-not"_s} << 2;
    }

    void walkPrunes()
    {
        QFETCH(QStringList, made);
        QFETCH(QStringList, ignored);
        QFETCH(QStringList, expected);
        QFETCH(int, questions);
        QTemporaryDir root;
        for (const QString &folder : made)
            QVERIFY(QDir(root.path()).mkpath(folder));
        QVERIFY(QFile::link(root.path(), root.path() + u"/loop"_s));
        int asked = 0;
        const auto query = [&](const QStringList &relative) {
            ++asked;
            QSet<QString> found(relative.cbegin(), relative.cend());
            return found.intersect(QSet<QString>(ignored.cbegin(), ignored.cend()));
        };
        QStringList walked;
        for (const QString &folder : walkWorkingFolders(root.path(), {root.path()}, query))
            walked << relativeFolder(root.path(), folder);
        walked.sort();
        expected.sort();
        QCOMPARE(walked, expected);
        QCOMPARE(asked, questions);
    }

    // The tools' own answers, names that read as options, pathspec magic and patterns among them.
    void toolsNameIgnoredFolders_data() { test::addKindColumn(); }

    void toolsNameIgnoredFolders()
    {
        QFETCH(RepositoryKind, kind);
        const auto repository = test::makeFixture(kind);
        const QStringList folders{u"build"_s,  u"src"_s,   u"-rf"_s,       u":(glob)x"_s, u"glob:*"_s,
                                  u"sp ace"_s, u"out.d"_s, u"src/build"_s, u"dist"_s};
        for (const QString &folder : folders)
            QVERIFY(QDir(repository->path()).mkpath(folder));
        const bool git = kind == RepositoryKind::git;
        repository->write(git ? u".gitignore"_s : u".hgignore"_s,
                          git ? "build/\n*.d\n/dist\n" : "syntax: glob\nbuild\n*.d\ndist\n");
        QCOMPARE(ignoredQuery(Repository{repository->path(), kind})(folders),
                 (QSet<QString>{u"build"_s, u"out.d"_s, u"src/build"_s, u"dist"_s}));
    }

    // Changes made outside Tillery show without the window becoming active.
    void externalChangesShow_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<Step>("before");
        QTest::addColumn<Step>("change");
        QTest::addColumn<Check>("shown");
        const Step nothing = [](Live &) {};
        listedAfter(
            "new file in the root", nothing, [](Live &live) { live.write(u"new.txt"_s); }, u"new.txt"_s);
        listedAfter(
            "new file in a subfolder", nothing, [](Live &live) { live.write(u"sub/new.txt"_s); }, u"sub/new.txt"_s);
        listedAfter(
            "saved by replacing", nothing, [](Live &live) { live.replace(u"b.txt"_s); }, u"b.txt"_s);
        listedAfter(
            "rewritten in place", nothing, [](Live &live) { live.write(u"b.txt"_s, "rewritten\n"); }, u"b.txt"_s);
        listedAfter(
            "in a folder made after the watch", [](Live &live) { live.makeFolder(u"later/inner"_s); },
            [](Live &live) { live.write(u"later/inner/new.txt"_s); }, u"later/inner/new.txt"_s);
        test::addRowsForBothKinds("commit on the command line", [&nothing](QTestData &row) {
            row << nothing << Step([](Live &live) {
                live.replace(u"a.txt"_s);
                live.expected = live.repository->commitAll(u"outside"_s);
            }) << Check([](Live &live) {
                return live.model().workspace().snapshot().history.value(0).node == live.expected;
            });
        });
        const Check second = [](Live &live) {
            const QList<Bookmark> &bookmarks = live.model().workspace().snapshot().bookmarks;
            return std::any_of(bookmarks.cbegin(), bookmarks.cend(),
                               [](const Bookmark &bookmark) { return bookmark.name == u"team/second"; });
        };
        QTest::newRow("bookmark, mercurial") << RepositoryKind::mercurial << Step([](Live &live) {
            live.repository->tool({u"bookmark"_s, u"first"_s});
        }) << Step([](Live &live) {
            live.repository->tool({u"bookmark"_s, u"--inactive"_s, u"team/second"_s});
        }) << second;
        QTest::newRow("branch in a ref folder made after the watch, git")
            << RepositoryKind::git << Step([](Live &live) {
                   live.repository->tool({u"branch"_s, u"team/first"_s});
               })
            << Step([](Live &live) {
                   live.repository->tool({u"branch"_s, u"team/second"_s});
               })
            << second;
    }

    void externalChangesShow()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(Step, before);
        QFETCH(Step, change);
        QFETCH(Check, shown);
        Live live(kind);
        before(live);
        QVERIFY(live.harness.settle());
        change(live);
        QTRY_VERIFY_WITH_TIMEOUT(shown(live), 20000);
    }

    // How many refreshes a change causes: none for ignored folders, another
    // repository, or another program's lock; one for Tillery's own
    // operations, and for a status that rewrites the dirstate as it reads.
    void refreshesCaused_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<Step>("before");
        QTest::addColumn<Step>("change");
        QTest::addColumn<int>("refreshes");
        const auto rows = [](const char *name, int refreshes, const Step &before, const Step &change) {
            test::addRowsForBothKinds(name, [&](QTestData &row) { row << before << change << refreshes; });
        };
        const Step nothing = [](Live &) {};
        rows("ignored folder there from the start", 0, nothing, [](Live &live) { live.write(u"build/sub/out.o"_s); });
        rows(
            "ignored folder made later", 0, [](Live &live) { live.makeFolder(u"node_modules/pkg"_s); },
            [](Live &live) { live.write(u"node_modules/pkg/index.js"_s); });
        rows(
            "a repository no longer selected", 0,
            [](Live &live) {
                live.other = test::makeFixture(RepositoryKind::git);
                live.model().adoptRepository(Repository{live.other->path(), RepositoryKind::git});
            },
            [](Live &live) { live.write(u"new.txt"_s); });
        rows("own commit, then another program's lock", 1, nothing, [](Live &live) {
            live.model().setSelectedFilePaths({u"a.txt"_s});
            live.model().setCommitSummary(u"From Tillery"_s);
            live.model().commit();
            QVERIFY(live.harness.settle());
            const QString lock = live.repository->filePath(
                live.model().traits().kind == RepositoryKind::git ? u".git/probe.lock"_s : u".hg/probe.lock"_s);
            test::writeFile(lock, {});
            QVERIFY(QFile::remove(lock));
        });
        rows("own discard", 1, nothing, [](Live &live) {
            live.model().selectChangeFiles({test::workingFile(live.model(), u"a.txt"_s)});
            live.harness.prompts.alertAnswers = {0};
            live.model().discardSelected();
        });
        rows("new times, the same contents", 1, nothing, [](Live &live) {
            const timespec threeDaysAgo{QDateTime::currentSecsSinceEpoch() - 3 * 86400, 0};
            const timespec times[2] = {threeDaysAgo, threeDaysAgo};
            for (const QString &name : {u"b.txt"_s, u"sub/c.txt"_s})
                ::utimensat(AT_FDCWD, QFile::encodeName(live.repository->filePath(name)).constData(), times, 0);
        });
    }

    void refreshesCaused()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(Step, before);
        QFETCH(Step, change);
        QFETCH(int, refreshes);
        Live live(kind);
        live.replace(u"a.txt"_s);
        QTRY_VERIFY_WITH_TIMEOUT(live.listed(u"a.txt"_s), 20000);
        before(live);
        QVERIFY(live.harness.settle());
        QSignalSpy refreshed(&live.model().workspace(), &Workspace::snapshotChanged);
        change(live);
        QVERIFY(live.harness.settle());
        const std::optional<PresentedError> error = live.model().activityState().presentedError();
        QVERIFY2(!error, error ? qPrintable(error->title + u": "_s + error->message) : "");
        QCOMPARE(refreshed.count(), refreshes);
    }

    // A burst of writes gives a refresh or a few and the last state shows; a
    // burst that does not end still refreshes now and then.
    void bursts_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<bool>("endless");
        test::addRowsForBothKinds("200 writes", [](QTestData &row) { row << false; });
        test::addRowsForBothKinds("endless", [](QTestData &row) { row << true; });
    }

    void bursts()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(bool, endless);
        Live live(kind);
        QSignalSpy refreshed(&live.model().workspace(), &Workspace::snapshotChanged);
        QSignalSpy seen(&live.model().repositoryWatcher(), &RepositoryWatcher::changeSeen);
        QElapsedTimer burst;
        burst.start();
        for (int i = 0; endless ? refreshed.isEmpty() && i < 200000 : i < 200; ++i) {
            if (!endless)
                live.write(u"burst-%1.txt"_s.arg(i));
            else if (i % 2 == 0)
                live.write(u"flicker.txt"_s);
            else
                QVERIFY(QFile::remove(live.repository->filePath(u"flicker.txt"_s)));
            QVERIFY(seen.wait(5000));
            // The writer runs a program between writes, as a build does, so
            // that the burst outlasts several refreshes.
            if (!endless)
                test::runTool(u"git"_s, {u"--version"_s}, live.repository->path());
        }
        QVERIFY(!refreshed.isEmpty() || !endless);
        if (endless)
            return;
        // However long the burst took: the refreshes its longest wait allows, and the last.
        const qint64 allowed = 2 + burst.elapsed() / RepositoryWatcher::longestWaitMilliseconds;
        QVERIFY(live.harness.settle());
        QVERIFY(live.listed(u"burst-199.txt"_s));
        QVERIFY2(refreshed.count() >= 1 && refreshed.count() <= allowed,
                 qPrintable(QString::number(refreshed.count())));
    }

    // A change made while a live refresh runs shows once it is done.
    void changeDuringRefreshShowsAfterIt_data() { test::addKindColumn(); }

    void changeDuringRefreshShowsAfterIt()
    {
        QFETCH(RepositoryKind, kind);
        QTemporaryDir gate;
        const QByteArray output = QFile::encodeName(gate.filePath(u"output"_s));
        const QByteArray tool = kind == RepositoryKind::git ? "git" : "hg";
        const test::FakeTool heldTool(test::running(test::interceptedBody(
            kind, "status",
            "if [ -e '" + output + ".hold' ]; then " + tool + " \"$@\" > '" + output + "'; status=$?; : > '" + output
                + ".ready'; " + test::waitForFile(gate.filePath(u"go"_s)) + "; cat '" + output
                + "'; exit $status; fi")));
        const test::ScopedEnvironmentVariable override(test::toolVariable(kind), heldTool.path().toUtf8());
        Live live(kind);

        test::writeFile(gate.filePath(u"output.hold"_s), {});
        live.write(u"first.txt"_s);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(gate.filePath(u"output.ready"_s)), 20000);
        live.write(u"during.txt"_s);
        QVERIFY(QFile::remove(gate.filePath(u"output.hold"_s)));
        test::writeFile(gate.filePath(u"go"_s), {});
        QTRY_VERIFY_WITH_TIMEOUT(live.listed(u"first.txt"_s) && live.listed(u"during.txt"_s), 20000);
    }

    // Past the watch limit the state stays watched, no more folders are
    // added, and the activity row says so once. A tool that cannot say
    // which folders it ignores leaves the root watched.
    void watchLimitFallsBack_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<int>("limit");
        QTest::addColumn<bool>("failingQuery");
        test::addRowsForBothKinds("root only", [](QTestData &row) { row << 1 << false; });
        test::addRowsForBothKinds("room for all", [](QTestData &row) { row << 10 << false; });
        test::addRowsForBothKinds("failing ignore query", [](QTestData &row) { row << 10 << true; });
    }

    void watchLimitFallsBack()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(int, limit);
        QFETCH(bool, failingQuery);
        const test::FakeTool failing(test::running(
            test::interceptedBody(kind, kind == RepositoryKind::git ? "check-ignore" : "debugignore", "exit 255")));
        const test::ScopedEnvironmentVariable override(
            test::toolVariable(kind), failingQuery ? std::optional(failing.path().toUtf8()) : std::nullopt);
        const bool limited = limit == 1;
        QStringList shown;
        Live live(kind, limit);
        connect(&live.model().activityState(), &ActivityState::activityChanged, this,
                [&shown](const QString &text) { shown << text; });
        QCOMPARE(live.model().repositoryWatcher().isLimited(), limited);
        QCOMPARE(live.model().activityState().activity(), limited ? RepositoryWatcher::limitNote() : QString());
        QCOMPARE(live.model().repositoryWatcher().watchedFolderCount(), limited || failingQuery ? 1 : 2);
        live.write(u"sub/new.txt"_s);
        live.makeFolder(u"three"_s);
        QVERIFY(live.harness.settle());
        live.write(u"three/new.txt"_s);
        QVERIFY(live.harness.settle());
        QCOMPARE(live.listed(u"three/new.txt"_s), !limited && !failingQuery);
        live.expected = live.repository->commitAll(u"outside"_s);
        QTRY_COMPARE_WITH_TIMEOUT(live.model().workspace().snapshot().history.value(0).node, live.expected, 20000);
        QVERIFY(live.harness.settle());
        QCOMPARE(shown.count(RepositoryWatcher::limitNote()), 0);
    }

    // A linked work tree: its own HEAD and index in its git folder, the refs
    // in the main one; a commit in it and a branch made in the main checkout show.
    void linkedWorkTree()
    {
        test::GitFixture main;
        main.write(u"a.txt"_s, "a\n");
        main.commitAll(u"base"_s);
        QTemporaryDir outside;
        const QString tree = outside.filePath(u"tree"_s);
        main.git({u"worktree"_s, u"add"_s, u"-q"_s, u"-b"_s, u"side"_s, tree});
        ModelHarness harness;
        AppModel &model = harness.start();
        model.adoptRepository(Repository{tree, RepositoryKind::git});
        QVERIFY(harness.settle());
        test::writeFile(tree + u"/new.txt"_s, "new\n");
        test::runTool(u"git"_s, {u"add"_s, u"new.txt"_s}, tree);
        test::runTool(u"git"_s, {u"commit"_s, u"-qm"_s, u"in the tree"_s}, tree);
        const QString node = QString::fromUtf8(test::runTool(u"git"_s, {u"rev-parse"_s, u"HEAD"_s}, tree)).trimmed();
        QTRY_COMPARE_WITH_TIMEOUT(model.workspace().snapshot().history.value(0).node, node, 20000);
        main.git({u"branch"_s, u"from-main"_s});
        QTRY_VERIFY_WITH_TIMEOUT(model.workspace().snapshot().bookmarks.size() == 3, 20000);
    }

    // A change made outside Tillery refreshes the window by itself, and leaves what the person is doing
    // as it was: the chosen rows and where the lists are scrolled to, and the commit message being typed,
    // its cursor and focus.
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

QTEST_MAIN(LiveRefreshTest)
#include "tst_live_refresh.moc"
