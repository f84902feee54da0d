// Committing and discarding some of a file's changes, on real repositories
// of both kinds; every check compares bytes.
#include "Checks.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include "diff/FilePatch.h"
#include "model/VersionControl.h"

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

} // namespace

class ChosenChangesTest : public QObject {
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
    void refusals_data()
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
    void refusals()
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
};

QTEST_GUILESS_MAIN(ChosenChangesTest)
#include "tst_chosen_changes.moc"
