#include "Cancellation.h"
#include "DiffText.h"
#include "FakeTool.h"
#include "RecordPrinting.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include "mercurial/MercurialDiffs.h"
#include "process/ToolFailure.h"

#include <QDir>
#include <QTest>


using namespace Qt::StringLiterals;
using namespace tillery;
using test::changedLines;
using test::diffHeaders;
using test::FakeTool;
using test::FakeToolBehaviour;
using test::MercurialFixture;
using test::ScopedEnvironmentVariable;

namespace {

const CancellationCheck never = [] { return false; };

Changeset changesetAt(const MercurialFixture &repository, const QString &revision = u"."_s)
{
    Changeset changeset;
    changeset.node = repository.node(revision);
    return changeset;
}

} // namespace

class MercurialDiffsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void untrackedFileDiff_data()
    {
        QTest::addColumn<QByteArray>("contents");
        QTest::addColumn<QString>("body");
        QTest::newRow("two lines") << QByteArray("x\ny") << u"+x\n+y"_s;
        QTest::newRow("final line feed gives a lone +") << QByteArray("x\ny\n") << u"+x\n+y\n+"_s;
        QTest::newRow("empty file") << QByteArray() << u"+"_s;
        QTest::newRow("not UTF-8") << QByteArray("caf\xe9\n") << u"+Binary or unreadable file"_s;
        QTest::newRow("binary") << QByteArray("\x89PNG\r\n\x1a\n\0\xff", 10) << u"+Binary or unreadable file"_s;
        QTest::newRow("carriage returns kept") << QByteArray("a\r\nb") << u"+a\r\n+b"_s;
    }

    void untrackedFileDiff()
    {
        QFETCH(QByteArray, contents);
        QFETCH(QString, body);
        const MercurialFixture repository;
        repository.write(u"dir/new file.txt"_s, contents);
        // The untracked diff never runs hg: a broken hg must not matter.
        const FakeTool broken({{}, "must not run", 9, 0, {}});
        const ScopedEnvironmentVariable override("HG", broken.path().toUtf8());
        const QString diff =
            mercurialWorkingDiff(u"dir/new file.txt"_s, FileState::untracked, repository.path(), never);
        QCOMPARE(diff, u"diff --git a/dir/new file.txt b/dir/new file.txt\nnew file\n--- /dev/null\n"
                       "+++ b/dir/new file.txt\n"_s + body);
        QCOMPARE(broken.processId(), 0);
    }

    void unreadableUntrackedFile()
    {
        const MercurialFixture repository;
        QCOMPARE(mercurialWorkingDiff(u"vanished.txt"_s, FileState::untracked, repository.path(), never),
                 u"diff --git a/vanished.txt b/vanished.txt\nnew file\n--- /dev/null\n+++ b/vanished.txt\n"
                 "+Binary or unreadable file"_s);
    }

    // What the working-copy and changeset diffs give for awkward files.
    void diffsOfAwkwardFiles_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        QTest::addColumn<QStringList>("expectedLines"); // the +/- lines; empty text when {"<empty>"}
        QTest::newRow("no final line feed") << u"a.txt"_s << QByteArray("x") << QByteArray("y")
                                            << QStringList{u"-x"_s, u"+y"_s};
        QTest::newRow("empty file filled") << u"e.txt"_s << QByteArray() << QByteArray("z\n")
                                           << QStringList{u"+z"_s};
        QTest::newRow("binary file") << u"b.bin"_s << QByteArray("a\0b", 3) << QByteArray("a\0c", 3)
                                     << QStringList{};
        QTest::newRow("not UTF-8 gives empty text") << u"l.txt"_s << QByteArray("caf\xe9\n")
                                                    << QByteArray("caf\xe9s\n") << QStringList{u"<empty>"_s};
    }

    void diffsOfAwkwardFiles()
    {
        QFETCH(QString, file);
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        QFETCH(QStringList, expectedLines);
        const MercurialFixture repository;
        repository.write(file, before);
        repository.commitAll(u"before"_s);
        repository.write(file, after);

        const QString working = mercurialWorkingDiff(file, FileState::modified, repository.path(), never);
        repository.commitAll(u"after"_s);
        const QString committed = mercurialChangesetDiff(file, changesetAt(repository), repository.path());
        QCOMPARE(committed, working);
        if (expectedLines == QStringList{u"<empty>"_s}) {
            QCOMPARE(working, QString());
            return;
        }
        QCOMPARE(diffHeaders(working), QStringList{u"diff --git a/%1 b/%1"_s.arg(file)});
        QCOMPARE(changedLines(working), expectedLines);
    }

    void renamedAndRemovedFiles()
    {
        const MercurialFixture repository;
        repository.write(u"old name.txt"_s, "same\n");
        repository.write(u"doomed.txt"_s, "last words\n");
        repository.write(u"file10.txt"_s, "1\n");
        repository.commitAll(u"base"_s);
        repository.hg({u"mv"_s, u"old name.txt"_s, u"new name.txt"_s});
        repository.hg({u"rm"_s, u"doomed.txt"_s});
        repository.write(u"file9.txt"_s, "9\n");
        repository.write(u"file10.txt"_s, "10\n");

        QCOMPARE(mercurialWorkingDiff(u"new name.txt"_s, FileState::added, repository.path(), never),
                 u"diff --git a/old name.txt b/new name.txt\ncopy from old name.txt\ncopy to new name.txt\n"_s);
        repository.commitAll(u"rename, remove, add"_s);
        const Changeset changeset = changesetAt(repository);

        QCOMPARE(mercurialChangesetFiles(changeset, repository.path()),
                 (QList<WorkingFile>{{u"doomed.txt"_s, FileState::removed},
                                     {u"file9.txt"_s, FileState::added},
                                     {u"file10.txt"_s, FileState::modified},
                                     {u"new name.txt"_s, FileState::added},
                                     {u"old name.txt"_s, FileState::removed}}));
        QCOMPARE(mercurialFileContents(u"doomed.txt"_s, FileState::removed, changeset, repository.path()),
                 QByteArray("last words\n"));
        QCOMPARE(mercurialFileContents(u"file10.txt"_s, FileState::modified, changeset, repository.path()),
                 QByteArray("10\n"));
    }

    void compareWithBookmark()
    {
        const MercurialFixture repository;
        repository.write(u"a.txt"_s, "one\n");
        repository.commitAll(u"one"_s);
        repository.bookmark(u"release 1.0"_s);
        repository.hg({u"bookmark"_s, u"--inactive"_s});
        QCOMPARE(mercurialCompareDiff(u"release 1.0"_s, repository.path()), QString());
        repository.write(u"a.txt"_s, "two\n");
        repository.commitAll(u"two"_s);
        const QString diff = mercurialCompareDiff(u"release 1.0"_s, repository.path());
        QVERIFY2(diff.contains(u"\n-one\n+two\n"_s), qPrintable(diff));
        QVERIFY_THROWS_EXCEPTION(MercurialFailure, mercurialCompareDiff(u"no such"_s, repository.path()));
    }

    // Names that Mercurial would read as a pattern or an option reach exactly
    // that file, and nothing else runs.
    void hostileFileNames_data()
    {
        QTest::addColumn<QString>("name");
        for (const QString &name : {u"-rf"_s, u"--config=hooks.pre-diff=touch PWNED"_s,
                                    u"--config=hooks.pre-cat=touch PWNED"_s, u"re:.*"_s, u"glob:*.txt"_s,
                                    u"set:modified()"_s, u"listfile:decoys"_s, u"path:decoy.txt"_s,
                                    u"relpath:decoy.txt"_s, u"x:y"_s})
            QTest::newRow(qPrintable(name)) << name;
    }

    void hostileFileNames()
    {
        QFETCH(QString, name);
        const MercurialFixture repository;
        for (const QString &file : {name, u"decoy.txt"_s, u"decoys"_s, u"other.txt"_s})
            repository.write(file, "before " + file.toUtf8() + "\n");
        repository.write(u"decoys"_s, "decoy.txt\nother.txt\n");
        repository.commitAll(u"base"_s);
        for (const QString &file : {name, u"decoy.txt"_s, u"other.txt"_s})
            repository.write(file, "after " + file.toUtf8() + "\n");

        const QString header = u"diff --git a/%1 b/%1"_s.arg(name);
        const QString working = mercurialWorkingDiff(name, FileState::modified, repository.path(), never);
        QCOMPARE(diffHeaders(working), QStringList{header});
        repository.commitAll(u"change"_s);
        const Changeset changeset = changesetAt(repository);
        QCOMPARE(diffHeaders(mercurialChangesetDiff(name, changeset, repository.path())), QStringList{header});
        QCOMPARE(mercurialFileContents(name, FileState::modified, changeset, repository.path()),
                 "after " + name.toUtf8() + "\n");
        QVERIFY(!QFile::exists(repository.filePath(u"PWNED"_s)));
    }

    void failingDiffDescribesItsArguments()
    {
        const FakeTool hg({{}, "abort: damaged\n", 255, 0, {}});
        const ScopedEnvironmentVariable override("HG", hg.path().toUtf8());
        try {
            mercurialWorkingDiff(u"src/a b.c"_s, FileState::modified, QDir::tempPath(), never);
            QFAIL("the diff should have failed");
        } catch (const MercurialFailure &failure) {
            QCOMPARE(failure.description(),
                     u"hg diff --git -- src/a b.c exited with status 255.\n\nabort: damaged"_s);
        }
        QCOMPARE(hg.receivedArguments(),
                 (QStringList{u"--noninteractive"_s, u"--config=ui.timeout=5"_s, u"diff"_s, u"--git"_s, u"--"_s,
                              u"src/a b.c"_s}));
    }

    void cancellingEndsTheDiff()
    {
        const FakeTool hg({"partial", {}, 0, 60, {}});
        const ScopedEnvironmentVariable override("HG", hg.path().toUtf8());
        const test::CancellationOutcome outcome = test::cancelWhileToolRuns(hg, [](const CancellationCheck &check) {
            mercurialWorkingDiff(u"a.txt"_s, FileState::modified, QDir::tempPath(), check);
        });
        QVERIFY(outcome.childStarted);
        QVERIFY(outcome.threwCancellation);
        QVERIFY(outcome.childGone);
    }
};

QTEST_GUILESS_MAIN(MercurialDiffsTest)
#include "tst_mercurial_diffs.moc"
