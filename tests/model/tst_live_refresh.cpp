#include "Checks.h"
#include "FakeTool.h"
#include "ModelHarness.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include "git/GitIgnoredFolders.h"
#include "mercurial/MercurialIgnoredFolders.h"
#include "model/WatchPlan.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::ModelHarness;

namespace {

// A repository of the kind with a.txt, b.txt and the given files committed,
// selected in a started model whose watch is in place.
struct Live {
    std::unique_ptr<test::RepositoryFixture> repository;
    ModelHarness harness;

    explicit Live(RepositoryKind kind, const QMap<QString, QByteArray> &committed = {},
                  std::optional<int> folderLimit = std::nullopt, const QStringList &foldersFirst = {})
        : repository(test::makeFixture(kind))
    {
        for (const QString &folder : foldersFirst)
            QDir(repository->path()).mkpath(folder);
        repository->write(u"a.txt"_s, "one\ntwo\nthree\nfour\nfive\nsix\nseven\neight\nnine\nten\n");
        repository->write(u"b.txt"_s, "b\n");
        for (auto file = committed.cbegin(); file != committed.cend(); ++file)
            repository->write(file.key(), file.value());
        repository->commitAll(u"base"_s);
        harness.watchedFolderLimit = folderLimit;
        harness.start().adoptRepository(Repository{repository->path(), kind});
    }
    AppModel &model() { return harness.model(); }
    bool listed(const QString &path)
    {
        const QList<WorkingFile> &files = model().workspace().snapshot().files;
        return std::any_of(files.cbegin(), files.cend(), [&path](const WorkingFile &file) { return file.path == path; });
    }
    QString shownHead() { return model().workspace().snapshot().history.value(0).node; }
    void makeFolder(const QString &relative) { QVERIFY(QDir(repository->path()).mkpath(relative)); }
};

// Changes below are waited for with settle(): the model is idle only once no
// change waits to be judged, no refresh runs and no folder waits to be added.
void write(const test::RepositoryFixture &repository, const QString &relative, const QByteArray &contents = "x\n")
{
    repository.write(relative, contents);
}

} // namespace

class LiveRefreshTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void gitIgnoredFoldersParsed_data()
    {
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<QStringList>("ignored");
        QTest::newRow("none") << QByteArray() << QStringList();
        QTest::newRow("two, with a name like an option and one like magic")
            << QByteArray("./-rf\0./:(glob)x\0", 17) << QStringList{u"-rf"_s, u":(glob)x"_s};
        QTest::newRow("names with spaces and newlines, a bare dot left out")
            << QByteArray("./a b\0./c\nd\0./\0", 15) << QStringList{u"a b"_s, u"c\nd"_s};
    }

    void gitIgnoredFoldersParsed()
    {
        QFETCH(QByteArray, output);
        QFETCH(QStringList, ignored);
        QCOMPARE(git::parseIgnoredFolders(output), QSet<QString>(ignored.cbegin(), ignored.cend()));
    }

    void mercurialIgnoredFoldersParsed_data()
    {
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<QStringList>("asked");
        QTest::addColumn<QStringList>("ignored");
        QTest::newRow("verdicts in order, rules skipped")
            << QByteArray("build is ignored\n(ignore rule in /r/.hgignore, line 1: 'build')\nsrc is not ignored\n"
                          "out/x is ignored because of containing directory out\n(ignore rule in /r/.hgignore, "
                          "line 2: 'out')\n")
            << QStringList{u"build"_s, u"src"_s, u"out/x"_s} << QStringList{u"build"_s, u"out/x"_s};
        QTest::newRow("a name holding the verdict's words")
            << QByteArray("a is ignored is not ignored\nb is not ignored is ignored\n(ignore rule in f, line 1: 'x')\n")
            << QStringList{u"a is ignored"_s, u"b is not ignored"_s} << QStringList{u"b is not ignored"_s};
        QTest::newRow("an answer out of step ends the reading")
            << QByteArray("src is not ignored\nsomething else\nlate is ignored\n")
            << QStringList{u"src"_s, u"late"_s} << QStringList();
        QTest::newRow("a rule whose text looks like a verdict")
            << QByteArray("x is ignored\n(ignore rule in f, line 1: 'y is ignored')\ny is not ignored\n")
            << QStringList{u"x"_s, u"y"_s} << QStringList{u"x"_s};
    }

    void mercurialIgnoredFoldersParsed()
    {
        QFETCH(QByteArray, output);
        QFETCH(QStringList, asked);
        QFETCH(QStringList, ignored);
        QCOMPARE(mercurial::parseIgnoredFolders(output, asked), QSet<QString>(ignored.cbegin(), ignored.cend()));
    }

    // The walk leaves out ignored folders with all below them, tool folders,
    // nested repositories and links, and asks about each depth once.
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
        // Followed, a link back to the root would never end.
        QVERIFY(QFile::link(root.path(), root.path() + u"/loop"_s));
        int asked = 0;
        const auto query = [&](const QStringList &relative) {
            ++asked;
            QSet<QString> found;
            for (const QString &folder : relative) {
                if (ignored.contains(folder))
                    found.insert(folder);
            }
            return found;
        };
        QStringList walked;
        for (const QString &folder : walkWorkingFolders(root.path(), {root.path()}, query))
            walked << relativeFolder(root.path(), folder);
        walked.sort();
        expected.sort();
        QCOMPARE(walked, expected);
        QCOMPARE(asked, questions);
    }

    // The tools' own answers on real repositories, hostile names included.
    void toolsNameIgnoredFolders_data()
    {
        test::addKindColumn();
    }

    void toolsNameIgnoredFolders()
    {
        QFETCH(RepositoryKind, kind);
        const auto repository = test::makeFixture(kind);
        const QStringList folders{u"build"_s,   u"src"_s,   u"-rf"_s,       u":(glob)x"_s, u"glob:*"_s,
                                  u"sp ace"_s, u"out.d"_s, u"src/build"_s, u"dist"_s};
        for (const QString &folder : folders)
            QVERIFY(QDir(repository->path()).mkpath(folder));
        repository->write(kind == RepositoryKind::git ? u".gitignore"_s : u".hgignore"_s,
                          kind == RepositoryKind::git ? "build/\n*.d\n/dist\n" : "syntax: glob\nbuild\n*.d\ndist\n");
        const QSet<QString> ignored = ignoredQuery(Repository{repository->path(), kind})(folders);
        QCOMPARE(ignored, (QSet<QString>{u"build"_s, u"out.d"_s, u"src/build"_s, u"dist"_s}));
    }

    // A change made outside Tillery appears without the window becoming active.
    void externalChangesAppear_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<QString>("madeFirst");
        QTest::addColumn<QString>("written");
        QTest::addColumn<QString>("listed");
        test::addRowsForBothKinds("new file in the root",
                                  [](QTestData &row) { row << QString() << u"new.txt"_s << u"new.txt"_s; });
        test::addRowsForBothKinds("new file deep down", [](QTestData &row) {
            row << QString() << u"src/deep/new.txt"_s << u"src/deep/new.txt"_s;
        });
        test::addRowsForBothKinds("file in a folder made after the watch", [](QTestData &row) {
            row << u"later/inner"_s << u"later/inner/new.txt"_s << u"later/inner/new.txt"_s;
        });
        test::addRowsForBothKinds("saved by replacing", [](QTestData &row) { row << QString() << u"b.txt"_s << u"b.txt"_s; });
    }

    void externalChangesAppear()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(QString, madeFirst);
        QFETCH(QString, written);
        QFETCH(QString, listed);
        Live live(kind, {{u"src/deep/kept.txt"_s, "kept\n"}});
        QVERIFY(live.harness.settle());
        if (!madeFirst.isEmpty()) {
            live.makeFolder(madeFirst);
            QVERIFY(live.harness.settle());
        }
        QSignalSpy refreshed(&live.model().workspace(), &Workspace::snapshotChanged);
        const QString target = live.repository->filePath(written);
        const QString replacement = target + u".new"_s;
        write(*live.repository, written + u".new"_s, "replaced\n");
        QCOMPARE(std::rename(QFile::encodeName(replacement).constData(), QFile::encodeName(target).constData()), 0);
        QTRY_VERIFY_WITH_TIMEOUT(live.listed(listed), 20000);
        QVERIFY(live.harness.settle());
        QVERIFY(refreshed.count() >= 1);
    }

    // A tool that cannot say which folders it ignores leaves the root watched.
    void failingIgnoreQueryWatchesTheRoot_data() { test::addKindColumn(); }

    void failingIgnoreQueryWatchesTheRoot()
    {
        QFETCH(RepositoryKind, kind);
        test::FakeToolBehaviour behaviour;
        behaviour.customBody =
            test::interceptedBody(kind, kind == RepositoryKind::git ? "check-ignore" : "debugignore", "exit 255");
        const test::FakeTool failing(behaviour);
        const test::ScopedEnvironmentVariable override(test::toolVariable(kind), failing.path().toUtf8());
        Live live(kind, {{u"sub/c.txt"_s, "c\n"}});
        QVERIFY(live.harness.settle());
        QCOMPARE(live.model().repositoryWatcher().watchedFolderCount(), 1);
        write(*live.repository, u"new.txt"_s);
        QTRY_VERIFY_WITH_TIMEOUT(live.listed(u"new.txt"_s), 20000);
    }

    // Commits and branches made on the command line show.
    void externalHistoryShows_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<QStringList>("firstCommand");
        QTest::addColumn<QStringList>("secondCommand");
        QTest::addColumn<QString>("branch");
        QTest::newRow("commit, hg") << RepositoryKind::mercurial << QStringList() << QStringList() << QString();
        QTest::newRow("commit, git") << RepositoryKind::git << QStringList() << QStringList() << QString();
        QTest::newRow("bookmark, hg") << RepositoryKind::mercurial << QStringList{u"bookmark"_s, u"first"_s}
                                      << QStringList{u"bookmark"_s, u"--inactive"_s, u"second"_s} << u"second"_s;
        QTest::newRow("branch in a new ref folder, git")
            << RepositoryKind::git << QStringList{u"branch"_s, u"team/first"_s}
            << QStringList{u"branch"_s, u"team/second"_s} << u"team/second"_s;
    }

    void externalHistoryShows()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(QStringList, firstCommand);
        QFETCH(QStringList, secondCommand);
        QFETCH(QString, branch);
        Live live(kind);
        QVERIFY(live.harness.settle());
        if (branch.isEmpty()) {
            live.repository->write(u"a.txt"_s, "changed\n");
            const QString node = live.repository->commitAll(u"outside"_s);
            QTRY_COMPARE_WITH_TIMEOUT(live.shownHead(), node, 20000);
            return;
        }
        live.repository->tool(firstCommand);
        QVERIFY(live.harness.settle());
        live.repository->tool(secondCommand);
        const auto shown = [&live, &branch] {
            const QList<Bookmark> &bookmarks = live.model().workspace().snapshot().bookmarks;
            return std::any_of(bookmarks.cbegin(), bookmarks.cend(),
                               [&branch](const Bookmark &bookmark) { return bookmark.name == branch; });
        };
        QTRY_VERIFY_WITH_TIMEOUT(shown(), 20000);
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

        test::writeFile(tree + u"/a.txt.new"_s, "changed\n");
        QVERIFY(QFile::remove(tree + u"/a.txt"_s));
        QVERIFY(QFile::rename(tree + u"/a.txt.new"_s, tree + u"/a.txt"_s));
        test::runTool(u"git"_s, {u"commit"_s, u"-qam"_s, u"in the tree"_s}, tree);
        const QString node =
            QString::fromUtf8(test::runTool(u"git"_s, {u"rev-parse"_s, u"HEAD"_s}, tree)).trimmed();
        QTRY_COMPARE_WITH_TIMEOUT(model.workspace().snapshot().history.value(0).node, node, 20000);

        main.git({u"branch"_s, u"from-main"_s});
        const auto shown = [&model] {
            const QList<Bookmark> &bookmarks = model.workspace().snapshot().bookmarks;
            return std::any_of(bookmarks.cbegin(), bookmarks.cend(),
                               [](const Bookmark &bookmark) { return bookmark.name == u"from-main"_s; });
        };
        QTRY_VERIFY_WITH_TIMEOUT(shown(), 20000);
    }

    // A burst of writes gives a refresh or a few, and the last state shows.
    void burstGivesFewRefreshes_data() { test::addKindColumn(); }

    void burstGivesFewRefreshes()
    {
        QFETCH(RepositoryKind, kind);
        Live live(kind);
        QVERIFY(live.harness.settle());
        QSignalSpy refreshed(&live.model().workspace(), &Workspace::snapshotChanged);
        QSignalSpy seen(&live.model().repositoryWatcher(), &RepositoryWatcher::changeSeen);
        QElapsedTimer burst;
        burst.start();
        for (int i = 0; i < 200; ++i) {
            write(*live.repository, u"burst-%1.txt"_s.arg(i));
            QVERIFY(seen.wait(5000));
            // The writer runs a program between writes, as a build does, so
            // that the burst outlasts several refreshes.
            test::runTool(u"git"_s, {u"--version"_s}, live.repository->path());
        }
        // However long the burst took: the refreshes its longest wait allows, and the last.
        const qint64 allowed = 2 + burst.elapsed() / RepositoryWatcher::longestWaitMilliseconds;
        QVERIFY(live.harness.settle());
        QVERIFY(live.listed(u"burst-199.txt"_s));
        QVERIFY2(refreshed.count() >= 1 && refreshed.count() <= allowed,
                 qPrintable(u"%1 refreshes"_s.arg(refreshed.count())));
    }

    // A burst that does not end still refreshes now and then.
    void endlessBurstRefreshes_data() { test::addKindColumn(); }

    void endlessBurstRefreshes()
    {
        QFETCH(RepositoryKind, kind);
        Live live(kind);
        QVERIFY(live.harness.settle());
        QSignalSpy refreshed(&live.model().workspace(), &Workspace::snapshotChanged);
        QSignalSpy seen(&live.model().repositoryWatcher(), &RepositoryWatcher::changeSeen);
        const QString flicker = live.repository->filePath(u"flicker.txt"_s);
        for (int i = 0; i < 200000 && refreshed.isEmpty(); ++i) {
            if (i % 2 == 0)
                write(*live.repository, u"flicker.txt"_s);
            else
                QVERIFY(QFile::remove(flicker));
            QVERIFY(seen.wait(5000));
        }
        QVERIFY(!refreshed.isEmpty());
    }

    // Writes in ignored folders, present from the start or made later, refresh nothing.
    void ignoredFolderWritesRefreshNothing_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<QString>("madeLater");
        QTest::addColumn<QString>("written");
        test::addRowsForBothKinds("present from the start", [](QTestData &row) { row << QString() << u"build/sub/out.o"_s; });
        test::addRowsForBothKinds("made later", [](QTestData &row) {
            row << u"node_modules/pkg"_s << u"node_modules/pkg/index.js"_s;
        });
    }

    void ignoredFolderWritesRefreshNothing()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(QString, madeLater);
        QFETCH(QString, written);
        const QString ignoreFile = kind == RepositoryKind::git ? u".gitignore"_s : u".hgignore"_s;
        const QByteArray rules = kind == RepositoryKind::git ? "build/\nnode_modules/\n" : "syntax: glob\nbuild\nnode_modules\n";
        Live live(kind, {{ignoreFile, rules}}, std::nullopt, {u"build/sub"_s});
        QVERIFY(live.harness.settle());
        if (!madeLater.isEmpty()) {
            live.makeFolder(madeLater);
            QVERIFY(live.harness.settle());
        }
        QSignalSpy refreshed(&live.model().workspace(), &Workspace::snapshotChanged);
        write(*live.repository, written);
        write(*live.repository, written + u"2"_s);
        QVERIFY(live.harness.settle());
        QCOMPARE(refreshed.count(), 0);
    }

    // Tillery's own operations refresh once, by themselves.
    void ownOperationsRefreshOnce_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<bool>("commit");
        test::addRowsForBothKinds("commit", [](QTestData &row) { row << true; });
        test::addRowsForBothKinds("discard", [](QTestData &row) { row << false; });
    }

    void ownOperationsRefreshOnce()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(bool, commit);
        Live live(kind);
        live.makeFolder(u"sub"_s);
        write(*live.repository, u"sub/new.txt"_s);
        write(*live.repository, u"a.txt.tmp"_s, "changed\n");
        QCOMPARE(std::rename(QFile::encodeName(live.repository->filePath(u"a.txt.tmp"_s)).constData(),
                             QFile::encodeName(live.repository->filePath(u"a.txt"_s)).constData()),
                 0);
        QTRY_VERIFY_WITH_TIMEOUT(live.listed(u"sub/new.txt"_s) && live.listed(u"a.txt"_s), 20000);
        QVERIFY(live.harness.settle());
        AppModel &model = live.model();
        QSignalSpy refreshed(&model.workspace(), &Workspace::snapshotChanged);
        if (commit) {
            model.setSelectedFilePaths({u"a.txt"_s, u"sub/new.txt"_s});
            model.setCommitSummary(u"From Tillery"_s);
            model.commit();
        } else {
            model.selectChangeFiles({test::workingFile(model, u"a.txt"_s)});
            live.harness.prompts.alertAnswers = {0};
            model.discardSelected();
        }
        QVERIFY(live.harness.settle());
        QVERIFY(!model.activityState().presentedError());
        QVERIFY(!live.listed(u"a.txt"_s));
        QCOMPARE(refreshed.count(), 1);

        // Another program's lock, taken and given back, changes nothing that shows.
        const QString lock = live.repository->filePath(kind == RepositoryKind::git ? u".git/probe.lock"_s
                                                                                   : u".hg/probe.lock"_s);
        test::writeFile(lock, {});
        QVERIFY(QFile::remove(lock));
        QVERIFY(live.harness.settle());
        QCOMPARE(refreshed.count(), 1);
    }

    // A change made while a live refresh runs shows once it is done.
    void changeDuringRefreshShowsAfterIt_data() { test::addKindColumn(); }

    void changeDuringRefreshShowsAfterIt()
    {
        QFETCH(RepositoryKind, kind);
        QTemporaryDir gate;
        const QByteArray hold = QFile::encodeName(gate.filePath(u"hold"_s));
        const QByteArray output = QFile::encodeName(gate.filePath(u"output"_s));
        const QByteArray tool = kind == RepositoryKind::git ? "git" : "hg";
        test::FakeToolBehaviour behaviour;
        behaviour.customBody = test::interceptedBody(
            kind, "status",
            "if [ -e '" + hold + "' ]; then " + tool + " \"$@\" > '" + output + "'; status=$?; : > '" + output
                + ".ready'; " + test::waitForFile(gate.filePath(u"go"_s)) + "; cat '" + output + "'; exit $status; fi");
        const test::FakeTool heldTool(behaviour);
        const test::ScopedEnvironmentVariable override(test::toolVariable(kind), heldTool.path().toUtf8());
        Live live(kind);
        QVERIFY(live.harness.settle());

        test::writeFile(gate.filePath(u"hold"_s), {});
        write(*live.repository, u"first.txt"_s);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(gate.filePath(u"output.ready"_s)), 20000);
        write(*live.repository, u"during.txt"_s);
        QVERIFY(QFile::remove(gate.filePath(u"hold"_s)));
        test::writeFile(gate.filePath(u"go"_s), {});
        QTRY_VERIFY_WITH_TIMEOUT(live.listed(u"first.txt"_s), 20000);
        QTRY_VERIFY_WITH_TIMEOUT(live.listed(u"during.txt"_s), 20000);
    }

    // A status that records the times of files it found unchanged rewrites
    // the dirstate; that must not start another refresh, and so on.
    void ownReadsCauseNoLoop_data() { test::addKindColumn(); }

    void ownReadsCauseNoLoop()
    {
        QFETCH(RepositoryKind, kind);
        Live live(kind);
        QVERIFY(live.harness.settle());
        QSignalSpy refreshed(&live.model().workspace(), &Workspace::snapshotChanged);
        // As "touch -d" does: new times, the same contents.
        const timespec threeDaysAgo{QDateTime::currentSecsSinceEpoch() - 3 * 86400, 0};
        const timespec times[2] = {threeDaysAgo, threeDaysAgo};
        for (const QString &name : {u"a.txt"_s, u"b.txt"_s})
            QCOMPARE(::utimensat(AT_FDCWD, QFile::encodeName(live.repository->filePath(name)).constData(), times, 0), 0);
        QVERIFY(live.harness.settle());
        QCOMPARE(refreshed.count(), 1);
        QVERIFY(live.model().workspace().snapshot().files.isEmpty());
    }

    // Past the watch limit the state stays watched, no more folders are
    // added, and the activity row says so once.
    void watchLimitFallsBack_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<int>("limit");
        QTest::addColumn<bool>("limited");
        test::addRowsForBothKinds("root only", [](QTestData &row) { row << 1 << true; });
        test::addRowsForBothKinds("room for all", [](QTestData &row) { row << 10 << false; });
    }

    void watchLimitFallsBack()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(int, limit);
        QFETCH(bool, limited);
        const QString note = RepositoryWatcher::limitNote();
        QList<QString> shown;
        Live live(kind, {{u"one/a.txt"_s, "a\n"}, {u"two/b.txt"_s, "b\n"}}, limit);
        ModelHarness *harness = &live.harness;
        connect(&live.model().activityState(), &ActivityState::activityChanged, this,
                [&shown](const QString &text) { shown << text; });
        QVERIFY(harness->settle());
        QCOMPARE(live.model().repositoryWatcher().isLimited(), limited);
        QCOMPARE(live.model().activityState().activity(), limited ? note : QString());

        QSignalSpy refreshed(&live.model().workspace(), &Workspace::snapshotChanged);
        write(*live.repository, u"one/new.txt"_s);
        QVERIFY(harness->settle());
        QCOMPARE(refreshed.count(), limited ? 0 : 1);

        // The root and the state are still watched; new folders are not added.
        live.makeFolder(u"three"_s);
        QVERIFY(harness->settle());
        write(*live.repository, u"three/new.txt"_s);
        QVERIFY(harness->settle());
        QCOMPARE(live.listed(u"three/new.txt"_s), !limited);
        const QString node = live.repository->commitAll(u"outside"_s);
        QTRY_COMPARE_WITH_TIMEOUT(live.shownHead(), node, 20000);
        QVERIFY(harness->settle());
        QCOMPARE(shown.count(note), limited ? 1 : 0);
    }

    // Only the selected repository is watched.
    void watchFollowsSelection()
    {
        Live first(RepositoryKind::mercurial);
        const auto second = test::makeFixture(RepositoryKind::git);
        second->write(u"c.txt"_s, "c\n");
        second->commitAll(u"base"_s);
        AppModel &model = first.model();
        model.adoptRepository(Repository{second->path(), RepositoryKind::git});
        QVERIFY(first.harness.settle());
        QSignalSpy refreshed(&model.workspace(), &Workspace::snapshotChanged);
        write(*first.repository, u"unseen.txt"_s);
        QVERIFY(first.harness.settle());
        QCOMPARE(refreshed.count(), 0);
        write(*second, u"seen.txt"_s);
        QTRY_VERIFY_WITH_TIMEOUT(first.listed(u"seen.txt"_s), 20000);

        model.select(Repository{first.repository->path(), RepositoryKind::mercurial});
        QVERIFY(first.harness.settle());
        refreshed.clear();
        write(*second, u"unseen.txt"_s);
        QVERIFY(first.harness.settle());
        QCOMPARE(refreshed.count(), 0);
        write(*first.repository, u"seen-again.txt"_s);
        QTRY_VERIFY_WITH_TIMEOUT(first.listed(u"seen-again.txt"_s), 20000);
    }

    // A live refresh keeps the chosen file, the ticked files, the lines
    // chosen in a file, the history row and the typed commit message.
    void refreshKeepsSelections_data() { test::addKindColumn(); }

    void refreshKeepsSelections()
    {
        QFETCH(RepositoryKind, kind);
        Live live(kind);
        const QString older = live.repository->parentNode();
        live.repository->write(u"b.txt"_s, "b2\n");
        live.repository->commitAll(u"second"_s);
        live.repository->write(u"a.txt"_s, "ONE\ntwo\nthree\nfour\nfive\nsix\nseven\neight\nnine\nTEN\n");
        live.repository->write(u"b.txt"_s, "b3\n");
        AppModel &model = live.model();
        model.refresh();
        QVERIFY(live.harness.settle());

        Changeset chosenChangeset;
        for (const Changeset &changeset : model.workspace().snapshot().history) {
            if (changeset.node == older)
                chosenChangeset = changeset;
        }
        QVERIFY(!chosenChangeset.node.isEmpty());
        model.setTab(WorkspaceTab::history);
        model.selectChangeset(chosenChangeset);
        QVERIFY(live.harness.settle());
        model.setTab(WorkspaceTab::changes);
        model.selectFile(test::workingFile(model, u"a.txt"_s));
        QVERIFY(live.harness.settle());
        model.setSelectedFilePaths({u"b.txt"_s});
        // The diff's first hunk only: its first removed and added lines.
        qsizetype first = -1;
        const QList<PresentedDiffLine> &lines = model.diffSelection().diff().unifiedLines;
        for (qsizetype line = 0; line < lines.size() && first < 0; ++line) {
            if (lines[line].kind == DiffLineKind::deletion)
                first = line;
        }
        QVERIFY2(first >= 0, qPrintable(model.diffSelection().diff().text));
        model.setShownLinesChosen(first, first + 1, true);
        QCOMPARE(model.chosenLines().fileState(u"a.txt"_s), Qt::PartiallyChecked);
        model.setCommitSummary(u"Half-typ"_s);

        QSignalSpy refreshed(&model.workspace(), &Workspace::snapshotChanged);
        write(*live.repository, u"outside.txt"_s);
        QTRY_VERIFY_WITH_TIMEOUT(live.listed(u"outside.txt"_s), 20000);
        QVERIFY(live.harness.settle());
        QVERIFY(refreshed.count() >= 1);
        QCOMPARE(model.diffSelection().selectedFile()->path, u"a.txt"_s);
        QCOMPARE(model.diffSelection().selectedFilePaths(), QSet<QString>{u"b.txt"_s});
        QCOMPARE(model.chosenLines().fileState(u"a.txt"_s), Qt::PartiallyChecked);
        QCOMPARE(model.diffSelection().selectedChangeset()->node, older);
        QCOMPARE(model.workspace().commitSummary(), u"Half-typ"_s);
    }
};

QTEST_GUILESS_MAIN(LiveRefreshTest)
#include "tst_live_refresh.moc"
