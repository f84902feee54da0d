#include "Cancellation.h"
#include "DiffText.h"
#include "Checks.h"
#include "FakeTool.h"
#include "RecordPrinting.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include "git/GitDiffs.h"
#include "git/GitSnapshot.h"
#include "process/ToolFailure.h"

#include <QDir>
#include <QTest>


using namespace Qt::StringLiterals;
using namespace tillery;
using test::failureOf;
using test::changedLines;
using test::diffHeaders;
using test::FakeTool;
using test::GitFixture;
using test::ScopedEnvironmentVariable;

namespace {

const CancellationCheck never = [] { return false; };

} // namespace

class GitDiffsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void untrackedFileDiff()
    {
        const GitFixture repository;
        repository.write(u"notes.txt"_s, "a\nb\n");
        QCOMPARE(gitWorkingDiff(repository.path(), {u"notes.txt"_s, FileState::untracked}, never),
                 u"diff --git a/notes.txt b/notes.txt\nnew file\n--- /dev/null\n+++ b/notes.txt\n+a\n+b\n+"_s);
        // A name that a resource path would begin with is still a file.
        repository.write(u":notes"_s, "c");
        QVERIFY(gitWorkingDiff(repository.path(), {u":notes"_s, FileState::untracked}, never).endsWith(u"\n+c"_s));
    }

    void stagedFileWithoutCommits()
    {
        const GitFixture repository;
        repository.write(u"new.txt"_s, "hello\n");
        repository.git({u"add"_s, u"new.txt"_s});
        const QString diff = gitWorkingDiff(repository.path(), {u"new.txt"_s, FileState::added}, never);
        QCOMPARE(diffHeaders(diff), QStringList{u"diff --git a/new.txt b/new.txt"_s});
        QCOMPARE(changedLines(diff), QStringList{u"+hello"_s});
    }

    void workingDiffAgainstHead()
    {
        const GitFixture repository;
        repository.write(u"a.txt"_s, "one\ntwo\n");
        repository.commitAll(u"first"_s);
        repository.write(u"a.txt"_s, "one\n2\n");
        repository.git({u"add"_s, u"a.txt"_s});
        repository.write(u"a.txt"_s, "one\n2\nthree\n");
        // Staged and unstaged changes together: the diff is against HEAD.
        const QString diff = gitWorkingDiff(repository.path(), {u"a.txt"_s, FileState::modified}, never);
        QCOMPARE(changedLines(diff), (QStringList{u"-two"_s, u"+2"_s, u"+three"_s}));
    }

    void commitFilesContentsAndDiffs()
    {
        const GitFixture repository;
        repository.write(u"old name.c"_s, "int shared = 1;\nint more = 2;\nint lines = 3;\n");
        repository.write(u"doomed.txt"_s, "last words\n");
        repository.write(u"file10.txt"_s, "1\n");
        const QString base = repository.commitAll(u"base"_s);
        QCOMPARE(gitCommitFiles(repository.path(), base),
                 (QList<WorkingFile>{{u"doomed.txt"_s, FileState::added},
                                     {u"file10.txt"_s, FileState::added},
                                     {u"old name.c"_s, FileState::added}}));

        repository.git({u"mv"_s, u"old name.c"_s, u"new name.c"_s});
        repository.git({u"rm"_s, u"--quiet"_s, u"doomed.txt"_s});
        repository.write(u"file9.txt"_s, "9\n");
        repository.write(u"file10.txt"_s, "10\n");
        const QString hash = repository.commitAll(u"rename, remove, add"_s);

        QCOMPARE(gitCommitFiles(repository.path(), hash),
                 (QList<WorkingFile>{{u"doomed.txt"_s, FileState::removed},
                                     {u"file9.txt"_s, FileState::added},
                                     {u"file10.txt"_s, FileState::modified},
                                     {u"new name.c"_s, FileState::modified}}));
        QCOMPARE(gitFileContents(repository.path(), hash, {u"doomed.txt"_s, FileState::removed}),
                 QByteArray("last words\n"));
        QCOMPARE(gitFileContents(repository.path(), hash, {u"file10.txt"_s, FileState::modified}),
                 QByteArray("10\n"));
        QCOMPARE(changedLines(gitCommitDiff(repository.path(), hash, u"file10.txt"_s)),
                 (QStringList{u"-1"_s, u"+10"_s}));
        QCOMPARE(changedLines(gitCommitDiff(repository.path(), hash, u"doomed.txt"_s)),
                 QStringList{u"-last words"_s});
    }

    void compareWithBranch()
    {
        const GitFixture repository;
        repository.write(u"a.txt"_s, "one\n");
        repository.commitAll(u"one"_s);
        repository.branch(u"release"_s);
        QCOMPARE(gitCompareDiff(repository.path(), u"release"_s), QString());
        repository.write(u"a.txt"_s, "two\n");
        repository.commitAll(u"two"_s);
        // Work on the other branch after the fork does not count.
        repository.checkOut(u"release"_s);
        repository.write(u"r.txt"_s, "r\n");
        repository.commitAll(u"release work"_s);
        repository.checkOut(u"main"_s);
        const QString diff = gitCompareDiff(repository.path(), u"release"_s);
        QCOMPARE(diffHeaders(diff), QStringList{u"diff --git a/a.txt b/a.txt"_s});
        QCOMPARE(changedLines(diff), (QStringList{u"-one"_s, u"+two"_s}));
    }

    // Awkward names round-trip through status, diffs and contents, and a
    // name that looks like a wildcard or pathspec magic matches only itself.
    void awkwardFileNames_data()
    {
        QTest::addColumn<QString>("name");
        for (const QString &name : {u"with space.txt"_s, u"\"quoted\".txt"_s, u"tab\there.txt"_s, u"-dash.txt"_s,
                                    u"caf\u00e9 \u00fcber.txt"_s, u"*.txt"_s, u"a?.txt"_s, u"[ab].txt"_s,
                                    u":(exclude)x.txt"_s, u":!ab.txt"_s, u"back\\slash.txt"_s})
            QTest::newRow(qPrintable(name)) << name;
    }

    void awkwardFileNames()
    {
        QFETCH(QString, name);
        const GitFixture repository;
        for (const QString &file : {name, u"ab.txt"_s, u"a.txt"_s, u"x.txt"_s})
            repository.write(file, "before\n");
        repository.commitAll(u"base"_s);
        for (const QString &file : {name, u"ab.txt"_s, u"a.txt"_s, u"x.txt"_s})
            repository.write(file, "after\n");

        QVERIFY(loadGitSnapshot(repository.path()).files.contains(WorkingFile{name, FileState::modified}));
        const QString working = gitWorkingDiff(repository.path(), {name, FileState::modified}, never);
        QCOMPARE(diffHeaders(working).size(), 1);
        QCOMPARE(changedLines(working), (QStringList{u"-before"_s, u"+after"_s}));
        const QString hash = repository.commitAll(u"change"_s);
        QVERIFY(gitCommitFiles(repository.path(), hash).contains(WorkingFile{name, FileState::modified}));
        QCOMPARE(diffHeaders(gitCommitDiff(repository.path(), hash, name)).size(), 1);
        QCOMPARE(gitFileContents(repository.path(), hash, {name, FileState::modified}), QByteArray("after\n"));
    }

    void failuresDescribeTheirArguments_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<QString>("expected");
        QTest::newRow("other status")
            << QByteArray("echo 'fatal: bad' >&2; exit 2")
            << u"git -c core.quotePath=false diff --no-ext-diff --no-color --src-prefix=a/ --dst-prefix=b/ HEAD -- "
               "a b.txt exited with status 2.\n\nfatal: bad"_s;
        QTest::newRow("retry fails too")
            << QByteArray("case \" $* \" in *' HEAD '*) exit 128 ;; *) echo 'fatal: index' >&2; exit 128 ;; esac")
            << u"git -c core.quotePath=false diff --no-ext-diff --no-color --src-prefix=a/ --dst-prefix=b/ --cached -- "
               "a b.txt exited with status 128.\n\nfatal: index"_s;
    }

    void failuresDescribeTheirArguments()
    {
        QFETCH(QByteArray, script);
        QFETCH(QString, expected);
        test::FakeToolBehaviour behaviour;
        behaviour.customBody = script;
        const FakeTool git(behaviour);
        const ScopedEnvironmentVariable override("GIT", git.path().toUtf8());
        QCOMPARE(failureOf([] { gitWorkingDiff(QDir::tempPath(), {u"a b.txt"_s, FileState::modified}, never); }),
                 expected);
        QCOMPARE(git.receivedArguments().first(), u"--no-pager"_s);
        QCOMPARE(git.receivedEnvironmentVariable("GIT_TERMINAL_PROMPT"), QByteArray("0"));
    }

    void cancellingEndsTheDiff()
    {
        const FakeTool git({"partial", {}, 0, 60, {}});
        const ScopedEnvironmentVariable override("GIT", git.path().toUtf8());
        const test::CancellationOutcome outcome = test::cancelWhileToolRuns(git, [](const CancellationCheck &check) {
            gitWorkingDiff(QDir::tempPath(), {u"a.txt"_s, FileState::modified}, check);
        });
        QVERIFY(outcome.childStarted);
        QVERIFY(outcome.threwCancellation);
        QVERIFY(outcome.childGone);
    }
};

QTEST_GUILESS_MAIN(GitDiffsTest)
#include "tst_git_diffs.moc"
