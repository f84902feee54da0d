// Shelves and stash entries: the parsers fed literal tool output, then both
// backends on real repositories.
#include "Checks.h"
#include "DiffText.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include "git/GitShelfParsers.h"
#include "git/GitShelves.h"
#include "mercurial/MercurialShelfParsers.h"
#include "model/VersionControl.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::bytes;
using test::changedLines;
using test::diffHeaders;
using test::failureOf;
using test::readFile;

namespace {

const QString tracked = u"-f.txt"_s;
const QString untracked = u"q \"x\" 'y'.txt"_s;
const QString patternLike = u"re:[a]*.txt"_s;
const QString gone = u"gone.txt"_s;

struct Scene {
    explicit Scene(RepositoryKind kind)
        : repository(test::makeFixture(kind))
        , backend(repository->backend())
        , isGit(repository->isGit())
    {
        for (const QString &name : {tracked, gone, u"kept.txt"_s})
            repository->write(name, "base\n");
        repository->commitAll(u"base"_s);
    }
    QString path() const { return repository->path(); }
    QList<Shelf> shelves() const { return repository->snapshot().shelves; }
    QList<WorkingFile> changes(const QStringList &paths) const
    {
        QList<WorkingFile> files = repository->snapshot().files;
        files.removeIf([&](const WorkingFile &file) { return !paths.contains(file.path); });
        return files;
    }
    QByteArray file(const QString &name) const { return repository->read(name); }

    std::unique_ptr<test::RepositoryFixture> repository;
    const VersionControl &backend;
    bool isGit;
};

} // namespace

class ShelvesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void stashList_data()
    {
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<QStringList>("titles");
        const QByteArray id(40, 'a');
        QTest::newRow("message, no message, colons, other subjects")
            << id + bytes("\0001795590459\0On main: fix: later\n") + id
                   + bytes("\0001795590400\0WIP on main: 83d3c65 base\n") + id + bytes("\0001\0autostash\n")
            << QStringList{u"fix: later 2026-11-25T07:07:39Z"_s, u"WIP on main: 83d3c65 base 2026-11-25T07:06:40Z"_s,
                           u"autostash 1970-01-01T00:00:01Z"_s};
        QTest::newRow("short id, cut short, bad time skipped; other encodings kept")
            << bytes("abc\0001\0On main: x\n") + id + bytes("\0001\n") + id + bytes("\0x\0On main: y\n") + id
                   + bytes("\0001\0On (no branch): caf\xe9\n")
            << QStringList{u"caf\ufffd 1970-01-01T00:00:01Z"_s};
    }
    void stashList()
    {
        QFETCH(QByteArray, output);
        QStringList titles;
        for (const Shelf &stash : git::parseStashList(output))
            titles.append(stash.title + u' ' + stash.date.toString(Qt::ISODate));
        QTEST(titles, "titles");
    }

    // Each part ends where the next begins, names read from the lines that hold them whole.
    void shelfPatch_data()
    {
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<QStringList>("files");
        QTest::newRow("every kind of part")
            << "diff --git a/x b/x  (1s ago)    changes to: base\ndiffers on its second line\n\n"
               "diff --git a/s p'\"q b/s p'\"q\nnew file mode 100644\n--- /dev/null\n+++ b/s p'\"q\t\n@@ -0,0 +1,1 @@\n"
               "+diff --git a/z b/z\n"
               "diff --git a/a b/a\n--- a/a\n+++ b/a\n@@ -1,1 +1,2 @@\n a\n+a2\n"
               "diff --git a/bin b/bin\nindex 20b5..88f3\nGIT binary patch\nliteral 3\nKc$`aQ\n\n"
               "diff --git a/src b/dst x\ncopy from src\ncopy to dst x\n"
               "diff --git a/ex b/ex\nold mode 100644\nnew mode 100755\n"
               "diff --git a/old b b/new b\nrename from old b\nrename to new b\n"
               "diff --git a/d b/d\ndeleted file mode 100644\n--- a/d\n+++ /dev/null\n@@ -1,1 +0,0 @@\n-d\n"_ba
            << QStringList{u"A s p'\"q"_s, u"M a"_s, u"M bin"_s, u"A dst x"_s, u"M ex"_s, u"A new b"_s, u"R d"_s};
        QTest::newRow("names not UTF-8 or not whole left out")
            << "s\ndiff --git a/caf\xe9 b/caf\xe9\n--- a/caf\xe9\ndiff --git a/ok b/ok\ndiff --git a/x b/yz\n"_ba
            << QStringList{u"M ok"_s};
    }
    void shelfPatch()
    {
        QFETCH(QByteArray, output);
        const QList<mercurial::ShelfFilePatch> parts = mercurial::parseShelfPatch(output);
        QStringList files;
        QString joined;
        for (const mercurial::ShelfFilePatch &part : parts) {
            files.append(fileStateLetter(part.file.state) + u' ' + part.file.path);
            QCOMPARE(diffHeaders(part.text).size(), 1);
            joined += part.text;
        }
        QTEST(files, "files");
        if (parts.size() > 2) {
            QVERIFY(output.endsWith(joined.toUtf8()));
            QCOMPARE(parts[5].renamedFrom, std::optional(u"old b"_s));
            QCOMPARE(mercurial::shelfFilePart(parts, u"old b"_s), &parts[5]);
        }
    }

    void shelfNames_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("taken");
        for (const QString &name : {u"-n x"_s, u"all() or *"_s, u"a b \"q\" 'x'"_s, u"x."_s, QString(237, u'b')})
            QTest::addRow("%s", qPrintable(name.left(12))) << name << true;
        for (const QString &name : {u"a/b"_s, u"a\\b"_s, u".x"_s, u"new\nline"_s, QString(119, u'\u00e9')})
            QTest::addRow("%s", qPrintable(name.left(12).replace(u'\n', u' '))) << name << false;
    }
    void shelfNames()
    {
        QFETCH(QString, name);
        QTEST(!mercurial::shelfNameProblem(name), "taken");
    }

    // The chosen files, hostile names among them, go into the shelf and
    // leave the working copy; the others stay. A restore brings them back.
    void shelvingAndRestoring_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("keep");
        for (const RepositoryKind kind : {RepositoryKind::mercurial, RepositoryKind::git}) {
            const char *tool = kind == RepositoryKind::git ? "git" : "hg";
            QTest::addRow("%s, option-like, kept", tool) << kind << u"-n x"_s << true;
            QTest::addRow("%s, quotes and spaces", tool) << kind << u"a b \"q\" 'x'"_s << false;
            QTest::addRow("%s, revset or pattern", tool) << kind << u"all() or *"_s << true;
        }
    }
    void shelvingAndRestoring()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(QString, name);
        QFETCH(bool, keep);
        const Scene scene(kind);
        for (const QString &file : {tracked, u"kept.txt"_s})
            scene.repository->write(file, "changed\n");
        // The unchosen new files are what the chosen names would match as patterns.
        for (const QString &file : {untracked, patternLike, u"a.txt"_s, u"re:a.txt"_s})
            scene.repository->write(file, "new\n");
        // Git can only take a removal from the index; Mercurial can take a file that is just gone.
        if (scene.isGit)
            scene.repository->tool({u"rm"_s, u"--quiet"_s, u"--"_s, gone});
        else
            scene.repository->removeFromDisk(gone);
        scene.backend.shelveFiles(scene.path(), name, scene.changes({tracked, untracked, patternLike, gone}));
        QCOMPARE(scene.changes({tracked, untracked, patternLike, gone}), QList<WorkingFile>());
        QCOMPARE(scene.file(u"kept.txt"_s) + scene.file(u"a.txt"_s) + scene.file(u"re:a.txt"_s),
                 "changed\nnew\nnew\n"_ba);
        const QList<Shelf> shelves = scene.shelves();
        QCOMPARE(shelves.size(), 1);
        QCOMPARE(shelves[0].title, name);
        QVERIFY(shelves[0].date.timeSpec() == Qt::UTC && shelves[0].date.secsTo(QDateTime::currentDateTimeUtc()) < 600);

        const QList<WorkingFile> shelved{{tracked, FileState::modified},
                                         {gone, FileState::removed},
                                         {untracked, FileState::added},
                                         {patternLike, FileState::added}};
        QCOMPARE(scene.backend.shelfFiles(scene.path(), shelves[0]), shelved);
        const auto diff = [&](const QString &file) { return scene.backend.shelfDiff(scene.path(), shelves[0], file); };
        QCOMPARE(changedLines(diff(tracked)), QStringList({u"-base"_s, u"+changed"_s}));
        QCOMPARE(diffHeaders(diff(untracked)).size(), 1);
        QCOMPARE(changedLines(diff(patternLike)), QStringList(u"+new"_s));
        QVERIFY(diff(u"kept.txt"_s).isEmpty());

        scene.backend.restoreShelf(scene.path(), shelves[0], keep);
        QCOMPARE(scene.file(tracked) + scene.file(untracked) + scene.file(patternLike) + scene.file(gone),
                 "changed\nnew\nnew\n(missing)"_ba);
        QCOMPARE(scene.shelves().size(), keep ? 1 : 0);
    }

    // An entry is found by what it is, however many came after it; one
    // that is gone is refused. A restore that conflicts leaves the conflict
    // and the shelf; Git's entry goes once the restore is finished.
    void findingAndConflicts_data() { test::addKindColumn(); }
    void findingAndConflicts()
    {
        QFETCH(RepositoryKind, kind);
        const Scene scene(kind);
        const auto shelve = [&](const QString &name, const QByteArray &text) {
            scene.repository->write(tracked, text);
            scene.backend.shelveFiles(scene.path(), name, scene.changes({tracked}));
            return scene.shelves();
        };
        const Shelf older = shelve(u"older"_s, "older\n").constFirst();
        const Shelf newer = shelve(u"newer"_s, "newer\n").constFirst();
        const Shelf newest = shelve(u"newest"_s, "newest\n").constFirst();
        scene.backend.deleteShelf(scene.path(), newer);
        scene.backend.restoreShelf(scene.path(), older, false);
        QCOMPARE(scene.file(tracked), "older\n"_ba);
        QCOMPARE(scene.shelves(), QList<Shelf>{newest});
        for (const Shelf &goneShelf : {older, newer}) {
            QVERIFY(failureOf([&] { scene.backend.deleteShelf(scene.path(), goneShelf); }).contains(u"no longer"_s));
            QVERIFY(
                failureOf([&] { scene.backend.restoreShelf(scene.path(), goneShelf, true); }).contains(u"no longer"_s));
        }

        scene.repository->commitAll(u"older"_s);
        QVERIFY(failureOf([&] { scene.backend.restoreShelf(scene.path(), newest, false); }).contains(u"onflict"_s));
        QCOMPARE(scene.shelves(), QList<Shelf>{newest});
        QCOMPARE(scene.changes({tracked}), QList<WorkingFile>({{tracked, FileState::unresolved}}));
        QVERIFY(failureOf([&] { scene.backend.restoreShelf(scene.path(), newest, true); }) != u"(no failure)"_s);
        if (!scene.isGit)
            return;
        const QString gitFolder = QString::fromUtf8(scene.repository->tool({u"rev-parse"_s, u"--absolute-git-dir"_s}));
        QCOMPARE(readFile(git::pendingStashDropPath(gitFolder.trimmed())), newest.id.toLatin1() + '\n');
        scene.repository->tool({u"add"_s, u"--"_s, tracked});
        git::finishStashRestore(scene.path());
        QCOMPARE(scene.shelves(), QList<Shelf>());
    }
};

QTEST_GUILESS_MAIN(ShelvesTest)
#include "tst_shelves.moc"
