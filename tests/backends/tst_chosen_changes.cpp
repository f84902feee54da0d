// Committing and discarding some of a file's changes, on real repositories
// of both kinds; every check compares bytes.
#include "Checks.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include "diff/FilePatch.h"
#include "model/VersionControl.h"

#include <QDir>
#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::addRowsForBothKinds;

namespace {

const QByteArray tenLines = "1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n";
const QByteArray tenChanged = "1\ntwo\n3\n4\n5\n6\n7\n8\nnine\n10\n";

struct Scene {
    explicit Scene(RepositoryKind repositoryKind, const QString &fileName = u"f.txt"_s)
        : backend(versionControl(repositoryKind))
        , repository(test::makeFixture(repositoryKind))
        , isGit(repositoryKind == RepositoryKind::git)
        , name(fileName)
    {
        repository->write(u"other.txt"_s, "other\n");
    }

    // f.txt as committed (none: a new file) and as it is now.
    void prepare(const QByteArray &committed, const QByteArray &working) const
    {
        if (!committed.isNull())
            repository->write(name, committed);
        repository->commitAll(u"base"_s);
        repository->write(name, working);
    }

    // The file's changes as the Changes page shows them, those at the
    // given places among its added and removed lines chosen.
    ChosenChanges choose(const QList<int> &places) const
    {
        WorkingFile file;
        for (const WorkingFile &changed : backend.loadSnapshot(path()).files) {
            if (changed.path == name)
                file = changed;
        }
        const QString diff = backend.workingDiff(path(), file, [] { return false; });
        QList<qsizetype> ids;
        if (const std::optional<FilePatch> patch = parseFilePatch(diff))
            ids = patch->changedLineIds().values();
        std::sort(ids.begin(), ids.end());
        ChosenChanges chosen{file, diff, {}};
        for (const int place : places)
            chosen.lines.insert(ids.value(place, -1));
        return chosen;
    }

    QByteArray committedFile(const QString &path) const
    {
        return repository->tool(isGit ? QStringList{u"show"_s, u"HEAD:"_s + path}
                                      : QStringList{u"cat"_s, u"-r"_s, u"."_s, u"--"_s, u"path:"_s + path});
    }
    QString path() const { return repository->path(); }

    const VersionControl &backend;
    std::unique_ptr<test::RepositoryFixture> repository;
    bool isGit;
    QString name;
};

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
            row << "a\nb"_ba << "a\nb\nc"_ba << QList<int>{0, 1} << "a\nb\n"_ba << false << u"f.txt"_s;
        });
        addRowsForBothKinds("CR LF", [](QTestData &row) {
            row << "a\r\nb\r\nc\r\n"_ba << "a\r\nB\r\nc\r\nd\r\n"_ba << QList<int>{2} << "a\r\nb\r\nc\r\nd\r\n"_ba
                << true << u"f.txt"_s;
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
        const Scene scene(kind, name);
        scene.prepare(committed, working);
        // Staged outside Tillery and not chosen: neither committed nor unstaged.
        scene.repository->write(u"other.txt"_s, "staged\n");
        if (scene.isGit && otherStaged)
            scene.repository->tool({u"add"_s, u"other.txt"_s});

        scene.backend.commitChosen(scene.path(), {}, {scene.choose(chosen)}, {u"Part"_s, {}, {}});
        QTEST(scene.committedFile(name), "expected");
        QCOMPARE(test::readFile(scene.repository->filePath(name)), working);
        QCOMPARE(scene.committedFile(u"other.txt"_s), "other\n"_ba);
        const QByteArray status = scene.repository->tool(scene.isGit ? QStringList{u"status"_s, u"--porcelain=v1"_s, u"-z"_s}
                                                                      : QStringList{u"status"_s, u"-0"_s});
        const QByteArray other = scene.isGit ? (otherStaged ? "M  other.txt"_ba : " M other.txt"_ba) : "M other.txt"_ba;
        const QByteArray file = (scene.isGit ? " M "_ba : "M "_ba) + name.toUtf8();
        QCOMPARE(status, name < u"other.txt"_s ? file + '\0' + other + '\0' : other + '\0' + file + '\0');
    }

    // A renamed file with some of its changes chosen, its old name ticked whole: the commit renames it and
    // takes only those changes. Mercurial's diff is against the old file; Git's is of a new file.
    void committingChosenLinesOfARenamedFile_data() { test::addKindColumn(); }
    void committingChosenLinesOfARenamedFile()
    {
        QFETCH(RepositoryKind, kind);
        const Scene scene(kind, u"g.txt"_s);
        scene.repository->write(u"f.txt"_s, tenLines);
        scene.repository->commitAll(u"base"_s);
        scene.repository->tool({u"mv"_s, u"f.txt"_s, u"g.txt"_s});
        scene.repository->write(u"g.txt"_s, tenChanged);
        const ChosenChanges chosen = scene.choose({0, 1});
        scene.backend.commitChosen(scene.path(), {{u"f.txt"_s, FileState::removed}}, {chosen}, {u"Part"_s, {}, {}});
        QCOMPARE(scene.committedFile(u"g.txt"_s), scene.isGit ? "1\ntwo\n"_ba : "1\ntwo\n3\n4\n5\n6\n7\n8\n9\n10\n"_ba);
        QCOMPARE(test::readFile(scene.repository->filePath(u"g.txt"_s)), tenChanged);
        const QByteArray committedNames = scene.repository->tool(
            scene.isGit ? QStringList{u"ls-tree"_s, u"--name-only"_s, u"HEAD"_s}
                        : QStringList{u"files"_s, u"-r"_s, u"."_s});
        QCOMPARE(committedNames, "g.txt\nother.txt\n"_ba);
        if (!scene.isGit)
            QCOMPARE(scene.repository->tool({u"log"_s, u"-r"_s, u"."_s, u"-T"_s, u"{file_copies}"_s}),
                     "g.txt (f.txt)"_ba);
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
            row << "a\0b\n"_ba << "a\0c\n"_ba << QByteArray() << u"only the whole"_s;
        });
        addRowsForBothKinds("not UTF-8", [](QTestData &row) {
            row << "caf\xe9\n"_ba << "caf\xe9!\n"_ba << QByteArray() << u"only the whole"_s;
        });
    }
    void refusals()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(QByteArray, committed);
        QFETCH(QByteArray, working);
        QFETCH(QByteArray, changedAfterwards);
        QFETCH(QString, reason);
        const QString &reasonText = reason;
        const Scene scene(kind);
        scene.prepare(committed, working);
        const ChosenChanges chosen = scene.choose({0});
        if (!changedAfterwards.isNull())
            scene.repository->write(u"f.txt"_s, changedAfterwards);
        const QString before = scene.repository->parentNode();
        const QString failure = test::failureOf(
            [&] { scene.backend.commitChosen(scene.path(), {}, {chosen}, {u"Part"_s, {}, {}}); });
        QVERIFY2(failure.contains(reasonText, Qt::CaseInsensitive), qPrintable(failure));
        QCOMPARE(scene.repository->parentNode(), before);
        QCOMPARE(test::readFile(scene.repository->filePath(u"f.txt"_s)),
                 changedAfterwards.isNull() ? working : changedAfterwards);
    }

    // Tillery killed during a Mercurial commit of chosen lines, the chosen version in the working file:
    // the next load puts the working version back.
    void killedCommitRecoversAtTheNextLoad()
    {
        const Scene scene(RepositoryKind::mercurial);
        scene.prepare(tenLines, tenChanged);
        const ChosenChanges chosen = scene.choose({0, 1});
        test::writeFile(scene.path() + u"/.hg/hgrc"_s, "[hooks]\nprecommit.die = kill -9 $TILLERY_TEST_VICTIM\n");
        const QString diffFile = scene.path() + u"/.hg/shown.diff"_s;
        test::writeFile(diffFile, chosen.shownDiff.toUtf8());
        QStringList arguments{scene.path(), u"f.txt"_s, diffFile};
        for (const qsizetype id : chosen.lines)
            arguments.append(QString::number(id));
        QProcess victim;
        victim.start(QStringLiteral(COMMIT_CHOSEN_AND_DIE), arguments);
        QVERIFY(victim.waitForFinished(60000));
        QCOMPARE(victim.exitStatus(), QProcess::CrashExit);
        QCOMPARE(test::readFile(scene.repository->filePath(u"f.txt"_s)), "1\ntwo\n3\n4\n5\n6\n7\n8\n9\n10\n"_ba);

        QCOMPARE(scene.backend.loadSnapshot(scene.path()).restoredWorkingFiles, QStringList{u"f.txt"_s});
        QCOMPARE(test::readFile(scene.repository->filePath(u"f.txt"_s)), tenChanged);
        QVERIFY(!QFile::exists(scene.path() + u"/.hg/tillery/set-aside"_s));
    }

    // Discarding chosen lines undoes just them, after keeping the file as it was.
    void discardingChosenLines_data() { test::addKindColumn(); }
    void discardingChosenLines()
    {
        QFETCH(RepositoryKind, kind);
        const Scene scene(kind);
        scene.prepare(tenLines, tenChanged);
        const QString copy = scene.backend.discardChosen(scene.path(), scene.choose({0, 1}));
        QCOMPARE(test::readFile(scene.repository->filePath(u"f.txt"_s)), "1\n2\n3\n4\n5\n6\n7\n8\nnine\n10\n"_ba);
        QCOMPARE(test::readFile(copy), tenChanged);
        QVERIFY(copy.startsWith(scene.path() + (scene.isGit ? u"/.git/"_s : u"/.hg/"_s)));
    }
};

QTEST_GUILESS_MAIN(ChosenChangesTest)
#include "tst_chosen_changes.moc"
