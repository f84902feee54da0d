// Commits of chosen lines, and amending and undoing the last commit, on real repositories of both
// kinds: what the history, the committed files and the working files hold after; every check compares
// bytes.
#include "Checks.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::addRowsForBothKinds;

namespace {

const QByteArray tenLines = "1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n";
const QByteArray tenChanged = "1\ntwo\n3\n4\n5\n6\n7\n8\nnine\n10\n";
const CommitRequest part{u"Part"_s, {}, {}};

// other.txt committed; f.txt (or the file named) as committed (none: a new file) and as it is now.
std::unique_ptr<test::RepositoryFixture> prepared(RepositoryKind kind, const QByteArray &committed,
                                                  const QByteArray &working, const QString &name = u"f.txt"_s)
{
    auto repository = test::makeFixture(kind);
    repository->write(u"other.txt"_s, "other\n");
    if (!committed.isNull())
        repository->write(name, committed);
    repository->commitAll(u"base"_s);
    repository->write(name, working);
    return repository;
}

enum class Step { amendFile, amendMessage, amendChosen, undo };
enum class Setting { plain, published, nothingCommitted, rootOnly };

// "first" with a.txt, then "second" adding a line and b.txt; a.txt changed again and c.txt new in the
// working copy. Published: the working copy's parent is public or on a remote.
std::unique_ptr<test::RepositoryFixture> preparedForRewrite(RepositoryKind kind, Setting setting,
                                                            std::unique_ptr<test::GitFixture> &remote)
{
    auto repository = test::makeFixture(kind);
    if (setting == Setting::nothingCommitted)
        return repository;
    repository->write(u"a.txt"_s, "1\n");
    repository->commitAll(u"first"_s);
    if (setting != Setting::rootOnly) {
        repository->write(u"a.txt"_s, "1\n2\n");
        repository->write(u"b.txt"_s, "b\n");
        repository->commitAll(u"second"_s);
    }
    repository->write(u"a.txt"_s, "1\n2\n3\n4\n");
    repository->write(u"c.txt"_s, "c\n");
    if (setting == Setting::published && !repository->isGit())
        repository->tool({u"phase"_s, u"--public"_s, u"--rev=."_s});
    if (setting == Setting::published && repository->isGit()) {
        remote = test::GitFixture::bare();
        repository->tool({u"remote"_s, u"add"_s, u"origin"_s, remote->path()});
        repository->tool({u"push"_s, u"--quiet"_s, u"--set-upstream"_s, u"origin"_s, u"HEAD"_s});
    }
    return repository;
}

void perform(const test::RepositoryFixture &repository, Step step)
{
    const CommitRequest amend{u"second, amended"_s, u"More."_s, {}, true};
    const VersionControl &backend = repository.backend();
    switch (step) {
    case Step::amendFile:
        return backend.commit(repository.path(), {{u"a.txt"_s, FileState::modified}}, amend);
    case Step::amendMessage:
        return backend.commit(repository.path(), {}, amend);
    case Step::amendChosen:
        // The first of a.txt's changed lines ("3").
        return backend.commitChosen(repository.path(), {}, {repository.choose(u"a.txt"_s, {0})}, amend);
    case Step::undo:
        return backend.undoLastCommit(repository.path());
    }
}

QStringList descriptions(const test::RepositoryFixture &repository)
{
    QStringList result;
    for (const Changeset &changeset : repository.snapshot().history)
        result.append(changeset.description);
    return result;
}

} // namespace

class CommitsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    // The commit records exactly the chosen lines; the working file keeps every byte.
    void committingChosenLines_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<QByteArray>("committed");
        QTest::addColumn<QByteArray>("working");
        QTest::addColumn<QList<int>>("chosen");
        QTest::addColumn<QByteArray>("expected");
        // Another file staged outside Tillery, where the kind has an index.
        QTest::addColumn<bool>("otherStaged");
        QTest::addColumn<QString>("name");
        addRowsForBothKinds("part of a hunk", [](QTestData &row) {
            row << tenLines << tenChanged << QList<int>{0, 1} << "1\ntwo\n3\n4\n5\n6\n7\n8\n9\n10\n"_ba << true
                << u"f.txt"_s;
        });
        addRowsForBothKinds("no final line feed", [](QTestData &row) {
            row << "a\nb"_ba
                << "a\nb\nc"_ba << QList<int>{0, 1} << "a\nb\n"_ba << false << u"f.txt"_s;
        });
        addRowsForBothKinds("CR LF", [](QTestData &row) {
            row << "a\r\nb\r\nc\r\n"_ba
                << "a\r\nB\r\nc\r\nd\r\n"_ba << QList<int>{2} << "a\r\nb\r\nc\r\nd\r\n"_ba << true << u"f.txt"_s;
        });
        addRowsForBothKinds("new file, hostile name", [](QTestData &row) {
            row << QByteArray() << "x\ny\n"_ba << QList<int>{1} << "y\n"_ba << false << u"\"q\" -n \\ *\t.txt"_s;
        });
        addRowsForBothKinds("new file, others staged", [](QTestData &row) {
            row << QByteArray() << "x\ny\n"_ba << QList<int>{1} << "y\n"_ba << true << u"f.txt"_s;
        });
    }
    void committingChosenLines()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(QByteArray, committed);
        QFETCH(QByteArray, working);
        QFETCH(QList<int>, chosen);
        QFETCH(bool, otherStaged);
        QFETCH(QString, name);
        const auto repository = prepared(kind, committed, working, name);
        const bool git = repository->isGit();
        // Staged outside Tillery and not chosen: neither committed nor unstaged.
        repository->write(u"other.txt"_s, "staged\n");
        if (git && otherStaged)
            repository->tool({u"add"_s, u"other.txt"_s});

        repository->backend().commitChosen(repository->path(), {}, {repository->choose(name, chosen)}, part);
        QTEST(repository->committed(name), "expected");
        QCOMPARE(repository->read(name), working);
        QCOMPARE(repository->committed(u"other.txt"_s), "other\n"_ba);
        const QByteArray status = repository->tool(git ? QStringList{u"status"_s, u"--porcelain=v1"_s, u"-z"_s}
                                                       : QStringList{u"status"_s, u"-0"_s});
        const QByteArray other = git ? (otherStaged ? "M  other.txt"_ba : " M other.txt"_ba) : "M other.txt"_ba;
        const QByteArray file = (git ? " M "_ba : "M "_ba) + name.toUtf8();
        QCOMPARE(status, name < u"other.txt"_s ? file + '\0' + other + '\0' : other + '\0' + file + '\0');
    }

    // A renamed file with some of its changes chosen, its old name ticked whole: the commit renames it and
    // takes only those changes. Mercurial's diff is against the old file; Git's is of a new file.
    void committingChosenLinesOfARenamedFile_data() { test::addKindColumn(); }
    void committingChosenLinesOfARenamedFile()
    {
        QFETCH(RepositoryKind, kind);
        const auto repository = prepared(kind, tenLines, tenLines);
        repository->tool({u"mv"_s, u"f.txt"_s, u"g.txt"_s});
        repository->write(u"g.txt"_s, tenChanged);
        repository->backend().commitChosen(repository->path(), {{u"f.txt"_s, FileState::removed}},
                                           {repository->choose(u"g.txt"_s, {0, 1})}, part);
        QCOMPARE(repository->committed(u"g.txt"_s),
                 repository->isGit() ? "1\ntwo\n"_ba : "1\ntwo\n3\n4\n5\n6\n7\n8\n9\n10\n"_ba);
        QCOMPARE(repository->read(u"g.txt"_s), tenChanged);
        const QByteArray committedNames =
            repository->tool(repository->isGit() ? QStringList{u"ls-tree"_s, u"--name-only"_s, u"HEAD"_s}
                                                 : QStringList{u"files"_s, u"-r"_s, u"."_s});
        QCOMPARE(committedNames, "g.txt\nother.txt\n"_ba);
        if (!repository->isGit())
            QCOMPARE(repository->tool({u"log"_s, u"-r"_s, u"."_s, u"-T"_s, u"{file_copies}"_s}), "g.txt (f.txt)"_ba);
    }

    // What cannot be taken apart, or changed after its diff was shown, is refused and nothing is committed.
    void chosenLinesRefused_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<QByteArray>("committed");
        QTest::addColumn<QByteArray>("working");
        QTest::addColumn<QByteArray>("changedAfterwards");
        QTest::addColumn<QString>("reason");
        // Outside the diff's hunks: only the parent shows it.
        addRowsForBothKinds("changed after its diff was shown", [](QTestData &row) {
            row << tenLines + tenLines << "1\ntwo\n3\n4\n5\n6\n7\n8\n9\n10\n"_ba + tenLines
                << "1\ntwo\n3\n4\n5\n6\n7\n8\n9\n10\n1\n2\n3\n4\n5\n6\n7\neight\n9\n10\n"_ba
                << u"changed after its differences were shown"_s;
        });
        addRowsForBothKinds("binary", [](QTestData &row) {
            row << "a\0b\n"_ba
                << "a\0c\n"_ba << QByteArray() << u"only the whole"_s;
        });
        addRowsForBothKinds("not UTF-8", [](QTestData &row) {
            row << "caf\xe9\n"_ba
                << "caf\xe9!\n"_ba << QByteArray() << u"only the whole"_s;
        });
    }
    void chosenLinesRefused()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(QByteArray, committed);
        QFETCH(QByteArray, working);
        QFETCH(QByteArray, changedAfterwards);
        QFETCH(QString, reason);
        const auto repository = prepared(kind, committed, working);
        const ChosenChanges chosen = repository->choose(u"f.txt"_s, {0});
        if (!changedAfterwards.isNull())
            repository->write(u"f.txt"_s, changedAfterwards);
        const QString before = repository->parentNode();
        const QString failure =
            test::failureOf([&] { repository->backend().commitChosen(repository->path(), {}, {chosen}, part); });
        QVERIFY2(failure.contains(reason, Qt::CaseInsensitive), qPrintable(failure));
        QCOMPARE(repository->parentNode(), before);
        QCOMPARE(repository->read(u"f.txt"_s), changedAfterwards.isNull() ? working : changedAfterwards);
    }

    // Tillery killed during a Mercurial commit of chosen lines, the chosen version in the working file:
    // the next load puts the working version back.
    void killedCommitRecoversAtTheNextLoad()
    {
        const auto repository = prepared(RepositoryKind::mercurial, tenLines, tenChanged);
        const ChosenChanges chosen = repository->choose(u"f.txt"_s, {0, 1});
        repository->write(u".hg/hgrc"_s, "[hooks]\nprecommit.die = kill -9 $TILLERY_TEST_VICTIM\n");
        repository->write(u".hg/shown.diff"_s, chosen.shownDiff.toUtf8());
        QStringList arguments{repository->path(), u"f.txt"_s, repository->filePath(u".hg/shown.diff"_s)};
        for (const qsizetype id : chosen.lines)
            arguments.append(QString::number(id));
        QProcess victim;
        victim.start(QStringLiteral(COMMIT_CHOSEN_AND_DIE), arguments);
        QVERIFY(victim.waitForFinished(60000));
        QCOMPARE(victim.exitStatus(), QProcess::CrashExit);
        QCOMPARE(repository->read(u"f.txt"_s), "1\ntwo\n3\n4\n5\n6\n7\n8\n9\n10\n"_ba);

        QCOMPARE(repository->snapshot().restoredWorkingFiles, QStringList{u"f.txt"_s});
        QCOMPARE(repository->read(u"f.txt"_s), tenChanged);
        QVERIFY(!QFile::exists(repository->filePath(u".hg/tillery/set-aside"_s)));
    }

    // Discarding chosen lines undoes just them, after keeping the file as it was.
    void discardingChosenLines_data() { test::addKindColumn(); }
    void discardingChosenLines()
    {
        QFETCH(RepositoryKind, kind);
        const auto repository = prepared(kind, tenLines, tenChanged);
        const QString copy =
            repository->backend().discardChosen(repository->path(), repository->choose(u"f.txt"_s, {0, 1}));
        QCOMPARE(repository->read(u"f.txt"_s), "1\n2\n3\n4\n5\n6\n7\n8\nnine\n10\n"_ba);
        QCOMPARE(test::readFile(copy), tenChanged);
        QVERIFY(copy.startsWith(repository->path() + (repository->isGit() ? u"/.git/"_s : u"/.hg/"_s)));
    }

    void rewrites_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<Step>("step");
        QTest::addColumn<QStringList>("history");
        QTest::addColumn<QByteArray>("committedA");
        // The working copy's changes after, each as the snapshot lists them.
        QTest::addColumn<QStringList>("changes");
        const QStringList amended{u"second, amended\n\nMore."_s, u"first"_s};
        const QStringList unchanged{u"a.txt M"_s, u"c.txt ?"_s};
        addRowsForBothKinds("amend with a file", [&](QTestData &row) {
            row << Step::amendFile << amended << "1\n2\n3\n4\n"_ba << QStringList{u"c.txt ?"_s};
        });
        addRowsForBothKinds("amend the message alone",
                            [&](QTestData &row) { row << Step::amendMessage << amended << "1\n2\n"_ba << unchanged; });
        addRowsForBothKinds("amend with a chosen line", [&](QTestData &row) {
            row << Step::amendChosen << amended << "1\n2\n3\n"_ba << unchanged;
        });
        addRowsForBothKinds("undo", [&](QTestData &row) {
            row << Step::undo << QStringList{u"first"_s} << "1\n"_ba
                << QStringList{u"a.txt M"_s, u"b.txt A"_s, u"c.txt ?"_s};
        });
    }

    void rewrites()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(Step, step);
        std::unique_ptr<test::GitFixture> remote;
        const auto repository = preparedForRewrite(kind, Setting::plain, remote);
        if (repository->isGit() && step == Step::amendMessage) // something staged stays out of the amend
            repository->tool({u"add"_s, u"--"_s, u"a.txt"_s});

        perform(*repository, step);

        QTEST(descriptions(*repository), "history");
        QTEST(repository->committed(u"a.txt"_s), "committedA");
        QCOMPARE(repository->read(u"a.txt"_s), "1\n2\n3\n4\n"_ba);
        QStringList changes;
        for (const WorkingFile &file : repository->snapshot().files)
            changes.append(file.path + u' ' + fileStateLetter(file.state));
        changes.sort();
        QTEST(changes, "changes");
    }

    void rewritesRefused_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<Setting>("setting");
        QTest::addColumn<Step>("step");
        QTest::addColumn<QString>("reason");
        for (const Step step : {Step::amendFile, Step::undo}) {
            const bool amend = step == Step::amendFile;
            QTest::addRow("%s published, hg", amend ? "amend" : "undo")
                << RepositoryKind::mercurial << Setting::published << step << u"public"_s;
            QTest::addRow("%s published, git", amend ? "amend" : "undo")
                << RepositoryKind::git << Setting::published << step << u"already on “origin/"_s;
            QTest::addRow("%s before any commit, hg", amend ? "amend" : "undo")
                << RepositoryKind::mercurial << Setting::nothingCommitted << step << u"no changeset yet"_s;
            QTest::addRow("%s before any commit, git", amend ? "amend" : "undo")
                << RepositoryKind::git << Setting::nothingCommitted << step << u"no commit yet"_s;
        }
        QTest::newRow("undo the first commit, git")
            << RepositoryKind::git << Setting::rootOnly << Step::undo << u"first commit cannot be undone"_s;
    }

    // Nothing changes: not the history, not a working byte.
    void rewritesRefused()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(Setting, setting);
        QFETCH(Step, step);
        QFETCH(QString, reason);
        std::unique_ptr<test::GitFixture> remote;
        const auto repository = preparedForRewrite(kind, setting, remote);
        if (setting == Setting::nothingCommitted)
            repository->write(u"a.txt"_s, "1\n");
        const QStringList history = descriptions(*repository);
        QCOMPARE(repository->backend().rewriteRefusal(repository->path()).has_value(), setting != Setting::rootOnly);
        const QByteArray working = repository->read(u"a.txt"_s);
        const QString failure = test::failureOf([&] { perform(*repository, step); });
        QVERIFY2(failure.contains(reason, Qt::CaseInsensitive), qPrintable(failure));
        QCOMPARE(descriptions(*repository), history);
        QCOMPARE(repository->read(u"a.txt"_s), working);
    }
};

QTEST_GUILESS_MAIN(CommitsTest)
#include "tst_commits.moc"
