#include "FakeTool.h"
#include "RecordPrinting.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include "Checks.h"
#include "DiffText.h"

#include "git/GitBackend.h"
#include "process/ToolFailure.h"

#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::changedLines;
using test::failureOf;
using test::GitFixture;
using test::readFile;

namespace {

const CancellationCheck never = [] { return false; };

RepositorySnapshot loadGitSnapshot(const QString &path)
{
    return gitBackend().loadSnapshot(path);
}

QStringList namesOf(const QList<Bookmark> &branches)
{
    QStringList names;
    for (const Bookmark &branch : branches)
        names.append(branch.name);
    return names;
}

const Bookmark &branchNamed(const RepositorySnapshot &snapshot, const QString &name)
{
    for (const Bookmark &branch : snapshot.bookmarks) {
        if (branch.name == name)
            return branch;
    }
    qFatal("no branch %s", qPrintable(name));
}

} // namespace

class GitBackendTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void repositoryWithoutCommits()
    {
        const GitFixture repository;
        repository.write(u"a.txt"_s, "a\n");
        const RepositorySnapshot snapshot = loadGitSnapshot(repository.path());
        QCOMPARE(snapshot.files, (QList<WorkingFile>{{u"a.txt"_s, FileState::untracked}}));
        QCOMPARE(snapshot.bookmarks, (QList<Bookmark>{{u"main"_s, 0, QString(), true, std::nullopt, true}}));
        QCOMPARE(snapshot.branch, u"main"_s);
        QCOMPARE(snapshot.activeBookmark, std::optional(u"main"_s));
        QCOMPARE(snapshot.history, QList<Changeset>());
        QCOMPARE(snapshot.paths, (QMap<QString, QString>()));
        QCOMPARE(snapshot.defaultBranch, u"main"_s);
        QVERIFY(!snapshot.currentBranchIsPublished);
    }

    void detachedHead()
    {
        const GitFixture repository;
        repository.write(u"a.txt"_s, "a\n");
        repository.commitAll(u"first"_s);
        repository.git({u"branch"_s, u"-m"_s, u"main"_s, u"zeta"_s});
        repository.branch(u"alpha"_s);
        repository.git({u"checkout"_s, u"--quiet"_s, u"--detach"_s});
        const RepositorySnapshot snapshot = loadGitSnapshot(repository.path());
        QCOMPARE(snapshot.branch, u"detached"_s);
        QCOMPARE(namesOf(snapshot.bookmarks), (QStringList{u"alpha"_s, u"zeta"_s}));
        QCOMPARE(snapshot.activeBookmark, std::nullopt);
        QCOMPARE(snapshot.defaultBranch, u"alpha"_s);
        QVERIFY(snapshot.currentBranchIsPublished);
    }

    // Push state and publishing against real remotes: origin (a bare
    // repository) and a second remote named "upstream".
    void branchesAgainstRemotes()
    {
        const auto origin = GitFixture::bare();
        const GitFixture seed;
        seed.write(u"a.txt"_s, "a\n");
        seed.commitAll(u"first"_s);
        seed.git({u"remote"_s, u"add"_s, u"origin"_s, origin->path()});
        seed.git({u"push"_s, u"--quiet"_s, u"origin"_s, u"main"_s, u"main:behind"_s, u"main:doomed"_s});
        seed.write(u"a.txt"_s, "ahead on origin\n");
        seed.commitAll(u"second"_s);
        seed.git({u"push"_s, u"--quiet"_s, u"origin"_s, u"main:behind"_s});

        const auto clone = GitFixture::cloneOf(origin->path());
        const auto upstream = GitFixture::bare();
        clone->git({u"remote"_s, u"add"_s, u"upstream"_s, upstream->path()});
        clone->git({u"branch"_s, u"--quiet"_s, u"--track"_s, u"behind"_s, u"origin/behind"_s});
        clone->git({u"branch"_s, u"--quiet"_s, u"--track"_s, u"doomed"_s, u"origin/doomed"_s});
        clone->git({u"reset"_s, u"--quiet"_s, u"--hard"_s, u"origin/behind~1"_s});
        clone->git({u"branch"_s, u"--quiet"_s, u"-f"_s, u"behind"_s, u"origin/behind~1"_s});
        clone->write(u"b.txt"_s, "local\n");
        clone->commitAll(u"local work"_s);
        clone->branch(u"feature"_s);
        clone->git({u"push"_s, u"--quiet"_s, u"upstream"_s, u"feature"_s});
        clone->branch(u"feature-ahead"_s, true);
        clone->git({u"push"_s, u"--quiet"_s, u"upstream"_s, u"feature-ahead"_s});
        clone->write(u"c.txt"_s, "more\n");
        clone->commitAll(u"more work"_s);
        clone->branch(u"local-only"_s);
        clone->checkOut(u"main"_s);
        origin->git({u"branch"_s, u"-D"_s, u"doomed"_s});
        clone->git({u"fetch"_s, u"--quiet"_s, u"--prune"_s, u"origin"_s});

        RepositorySnapshot snapshot = loadGitSnapshot(clone->path());
        QCOMPARE(namesOf(snapshot.bookmarks),
                 (QStringList{u"main"_s, u"behind"_s, u"doomed"_s, u"feature"_s, u"feature-ahead"_s, u"local-only"_s}));
        QVERIFY2(branchNamed(snapshot, u"main"_s).needsPush, "ahead of its upstream");
        QVERIFY2(!branchNamed(snapshot, u"behind"_s).needsPush, "only behind its upstream");
        QVERIFY2(branchNamed(snapshot, u"doomed"_s).needsPush, "its upstream is gone");
        QVERIFY2(!branchNamed(snapshot, u"feature"_s).needsPush, "equal to upstream/feature");
        QVERIFY2(branchNamed(snapshot, u"feature-ahead"_s).needsPush, "one commit past upstream/feature-ahead");
        QVERIFY2(branchNamed(snapshot, u"local-only"_s).needsPush, "on no remote");
        QVERIFY(branchNamed(snapshot, u"main"_s).active);
        QCOMPARE(branchNamed(snapshot, u"main"_s).node, clone->head());
        QVERIFY(branchNamed(snapshot, u"main"_s).date.has_value());
        QCOMPARE(snapshot.paths, (QMap<QString, QString>{{u"default"_s, origin->path()},
                                                         {u"origin"_s, origin->path()},
                                                         {u"upstream"_s, upstream->path()}}));
        QCOMPARE(snapshot.defaultBranch, u"main"_s);
        QVERIFY(snapshot.currentBranchIsPublished);

        // Published through a remote branch of the same name, or not at all.
        clone->checkOut(u"feature"_s);
        QVERIFY(loadGitSnapshot(clone->path()).currentBranchIsPublished);
        clone->checkOut(u"local-only"_s);
        snapshot = loadGitSnapshot(clone->path());
        QVERIFY(!snapshot.currentBranchIsPublished);
        QCOMPARE(snapshot.activeBookmark, std::optional(u"local-only"_s));

        // Without origin's HEAD the conventional name is taken.
        clone->git({u"remote"_s, u"set-head"_s, u"origin"_s, u"--delete"_s});
        clone->git({u"branch"_s, u"-m"_s, u"main"_s, u"master"_s});
        QCOMPARE(loadGitSnapshot(clone->path()).defaultBranch, u"master"_s);
    }

    void historyWithMergesAndTags()
    {
        const GitFixture repository;
        repository.write(u"a.txt"_s, "a\n");
        const QString first = repository.commitAll(u"First\n\nWith a body"_s);
        repository.git({u"tag"_s, u"-a"_s, u"v1.0"_s, u"-m"_s, u"release"_s});
        repository.git({u"tag"_s, u"light"_s});
        repository.branch(u"topic"_s, true);
        repository.write(u"t.txt"_s, "t\n");
        const QString topic = repository.commitAll(u"Topic work"_s);
        repository.checkOut(u"main"_s);
        repository.write(u"m.txt"_s, "m\n");
        const QString onMain = repository.commitAll(u"Main work"_s);
        repository.git({u"merge"_s, u"--quiet"_s, u"--no-ff"_s, u"-m"_s, u"Merge topic"_s, u"topic"_s});
        const QString merge = repository.head();

        const RepositorySnapshot snapshot = loadGitSnapshot(repository.path());
        QStringList nodes;
        for (const Changeset &changeset : snapshot.history)
            nodes.append(changeset.node);
        QCOMPARE(nodes.size(), 4);
        QCOMPARE(nodes.first(), merge);
        QCOMPARE(nodes.last(), first);
        QVERIFY(nodes.contains(topic) && nodes.contains(onMain));

        const Changeset &newest = snapshot.history.first();
        QCOMPARE(newest.revision, 3);
        QCOMPARE(newest.summary, u"Merge topic"_s);
        QCOMPARE(newest.branch, u"main"_s);
        QCOMPARE(newest.bookmarks, QStringList{u"main"_s});
        QCOMPARE(newest.author, u"Tillery Tester <tester@example.com>"_s);
        const Changeset &oldest = snapshot.history.last();
        QCOMPARE(oldest.revision, 0);
        QCOMPARE(oldest.summary, u"First"_s);
        QCOMPARE(oldest.description, u"First\n\nWith a body"_s);
        QCOMPARE(oldest.branch, u"Git"_s);
        QCOMPARE(oldest.tags, (QStringList{u"light"_s, u"v1.0"_s}));
        QCOMPARE(oldest.files, QStringList{u"a.txt"_s});
        QCOMPARE(snapshot.history[nodes.indexOf(topic)].bookmarks, QStringList{u"topic"_s});
    }

    void historyStopsAt250()
    {
        const GitFixture repository;
        repository.importCommits(u"main"_s, 1000);
        repository.git({u"checkout"_s, u"--quiet"_s, u"-f"_s, u"main"_s});
        const RepositorySnapshot snapshot = loadGitSnapshot(repository.path());
        QCOMPARE(snapshot.history.size(), 250);
        QCOMPARE(snapshot.history.first().revision, 999);
        QCOMPARE(snapshot.history.last().revision, 750);
        QCOMPARE(snapshot.history.first().summary, u"Imported commit 999"_s);
        QCOMPARE(snapshot.history.first().files, QStringList{u"imported.txt"_s});
    }

    // A remote can publish refs whose short names begin with "-"; they load
    // as data and are refused wherever they would start an argument.
    void hostileRemoteBranches()
    {
        const GitFixture origin;
        origin.write(u"a.txt"_s, "a\n");
        origin.commitAll(u"first"_s);
        origin.git({u"update-ref"_s, u"refs/heads/-x"_s, u"HEAD"_s});
        origin.git({u"update-ref"_s, u"refs/heads/--output=pwned"_s, u"HEAD"_s});
        const auto clone = GitFixture::cloneOf(origin.path());
        clone->git({u"update-ref"_s, u"refs/heads/-x"_s, u"origin/-x"_s});

        const RepositorySnapshot snapshot = loadGitSnapshot(clone->path());
        QCOMPARE(namesOf(snapshot.bookmarks), (QStringList{u"main"_s, u"-x"_s}));
        QVERIFY(!branchNamed(snapshot, u"-x"_s).needsPush);
        QVERIFY(!QFile::exists(clone->filePath(u"pwned"_s)));
    }

    // A branch may be named like the snapshot's word for a detached head;
    // it is still a branch that can be published.
    void branchNamedDetached()
    {
        const auto origin = GitFixture::bare();
        const auto clone = GitFixture::cloneOf(origin->path());
        clone->write(u"a.txt"_s, "a\n");
        clone->commitAll(u"first"_s);
        clone->git({u"push"_s, u"--quiet"_s, u"origin"_s, u"main"_s});
        clone->branch(u"detached"_s, true);
        RepositorySnapshot snapshot = loadGitSnapshot(clone->path());
        QCOMPARE(snapshot.activeBookmark, std::optional(u"detached"_s));
        QVERIFY(!snapshot.currentBranchIsPublished);
        gitBackend().push(clone->path());
        QVERIFY(origin->git({u"branch"_s, u"--list"_s, u"detached"_s}).contains("detached"));
        // It tracks the branch it was published to.
        QCOMPARE(clone->git({u"config"_s, u"--get"_s, u"branch.detached.remote"_s}), QByteArray("origin\n"));
        QVERIFY(loadGitSnapshot(clone->path()).currentBranchIsPublished);
    }

    // Without origin there is nowhere to publish a branch to.
    void pushingWithoutOrigin()
    {
        const auto origin = GitFixture::bare();
        const GitFixture alone;
        alone.write(u"a.txt"_s, "a\n");
        alone.commitAll(u"first"_s);
        alone.git({u"remote"_s, u"add"_s, u"upstream"_s, origin->path()});
        const QString failure = failureOf([&] { gitBackend().push(alone.path()); });
        QVERIFY2(
            failure.startsWith(u"git push --progress exited with status 128.\n\nfatal: The current branch main has "
                               "no upstream branch."_s),
            qPrintable(failure));
    }

    void squashMergeStagesWithoutCommitting()
    {
        const GitFixture repository;
        repository.write(u"a.txt"_s, "a\n");
        repository.commitAll(u"base"_s);
        repository.branch(u"topic"_s, true);
        repository.write(u"t.txt"_s, "t\n");
        repository.commitAll(u"topic 1"_s);
        repository.write(u"t2.txt"_s, "t2\n");
        repository.commitAll(u"topic 2"_s);
        repository.checkOut(u"main"_s);
        const QString mainTip = repository.head();
        QVERIFY(gitBackend().traits().hasSquashMerge);
        gitBackend().squashMerge(repository.path(), u"topic"_s);
        QCOMPARE(repository.head(), mainTip);
        QCOMPARE(loadGitSnapshot(repository.path()).files,
                 (QList<WorkingFile>{{u"t.txt"_s, FileState::added}, {u"t2.txt"_s, FileState::added}}));
    }

    void switchingToAFileNameRestoresNothing()
    {
        const GitFixture repository;
        repository.write(u"notes"_s, "committed\n");
        repository.commitAll(u"base"_s);
        repository.write(u"notes"_s, "unsaved work\n");
        QVERIFY(failureOf([&] {
                    gitBackend().switchTo(repository.path(), u"notes"_s);
                }).startsWith(u"git checkout notes -- "_s));
        QCOMPARE(readFile(repository.filePath(u"notes"_s)), QByteArray("unsaved work\n"));
    }

    // Staged and unstaged changes together are shown against HEAD; without
    // a commit, against the index.
    void workingDiffBase()
    {
        const GitFixture repository;
        repository.write(u"new.txt"_s, "hello\n");
        repository.git({u"add"_s, u"new.txt"_s});
        QCOMPARE(changedLines(gitBackend().workingDiff(repository.path(), {u"new.txt"_s, FileState::added}, never)),
                 QStringList{u"+hello"_s});
        repository.write(u"a.txt"_s, "one\ntwo\n");
        repository.commitAll(u"first"_s);
        repository.write(u"a.txt"_s, "one\n2\n");
        repository.git({u"add"_s, u"a.txt"_s});
        repository.write(u"a.txt"_s, "one\n2\nthree\n");
        QCOMPARE(changedLines(gitBackend().workingDiff(repository.path(), {u"a.txt"_s, FileState::modified}, never)),
                 (QStringList{u"-two"_s, u"+2"_s, u"+three"_s}));
    }

    void failureOfTheIndexDiffSaysWhatRan()
    {
        test::FakeToolBehaviour behaviour;
        behaviour.customBody = "case \" $* \" in *' HEAD '*) exit 128 ;; *) echo 'fatal: index' >&2; exit 128 ;; esac";
        const test::FakeTool git(behaviour);
        const test::ScopedEnvironmentVariable override("GIT", git.path().toUtf8());
        QCOMPARE(
            failureOf([] {
                gitBackend().workingDiff(test::testTemporaryFolder(), {u"a b.txt"_s, FileState::modified}, never);
            }),
            u"git -c core.quotePath=false diff --no-ext-diff --no-color --src-prefix=a/ --dst-prefix=b/ --cached -- "
            "a b.txt exited with status 128.\n\nfatal: index"_s);
    }
};

QTEST_GUILESS_MAIN(GitBackendTest)
#include "tst_git_backend.moc"
