// Shelves and stash entries, and operations stopped by conflicts: the shelf parsers fed literal tool
// output, then both backends on real repositories: shelving and restoring, what the snapshot tells at
// each step of a conflict, resolving, continuing and aborting.
#include "Checks.h"
#include "DiffText.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include "git/GitShelfParsers.h"
#include "git/GitShelves.h"
#include "mercurial/MercurialShelfParsers.h"
#include "model/VersionControl.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::addRowsForBothKinds;
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

struct ShelfScene {
    explicit ShelfScene(RepositoryKind kind)
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

enum class Resolution { mine, theirs, byHand };

const QByteArray mineText = "one\nmine\nthree\n";
const QByteArray theirsText = "one\ntheirs\nthree\n";
const QByteArray handText = "one\nhand\nthree\n";
const QByteArray missing = "(missing)";
// A name that the tools would read as an option, a pattern or a wildcard.
const QString hostileName = u"-n re:x *[a].txt"_s;

struct Scene {
    explicit Scene(RepositoryKind kind)
        : repository(test::makeFixture(kind))
        , backend(repository->backend())
    {
    }
    bool isGit() const { return repository->isGit(); }
    QString path() const { return repository->path(); }
    QByteArray file(const QString &name) const { return repository->read(name); }
    RepositorySnapshot snapshot() const { return repository->snapshot(); }
    QByteArray tool(const QStringList &arguments) const { return repository->tool(arguments); }
    QStringList ancestors() const
    {
        return QString::fromUtf8(isGit() ? tool({u"rev-list"_s, u"HEAD"_s})
                                         : tool({u"log"_s, u"--rev=::."_s, u"--template={node}\n"_s}))
            .split(u'\n', Qt::SkipEmptyParts);
    }

    void stopsForConflicts(const QStringList &arguments) const
    {
        QProcess process;
        process.setWorkingDirectory(path());
        process.start(isGit() ? u"git"_s : u"hg"_s, arguments);
        QVERIFY(process.waitForFinished(-1) && process.exitCode() != 0);
    }

    // The hostile name changed on two lines of work from a base: line two
    // is "theirs" on "other" (which adds o.txt and removes g.txt) and "mine"
    // on the working copy's (which changes g.txt).
    void makeTwoHeads(bool conflicting = true)
    {
        repository->write(hostileName, "one\ntwo\nthree\n");
        repository->write(u"g.txt"_s, "g\n");
        base = repository->commitAll(u"base"_s);
        if (isGit())
            tool({u"checkout"_s, u"-q"_s, u"-b"_s, u"other"_s});
        if (conflicting) {
            repository->write(hostileName, theirsText);
            repository->removeFromDisk(u"g.txt"_s);
        }
        repository->write(u"o.txt"_s, "o\n");
        theirs = repository->commitAll(u"theirs"_s);
        tool(isGit() ? QStringList{u"checkout"_s, u"-q"_s, u"main"_s}
                     : QStringList{u"bookmark"_s, u"--rev="_s + theirs, u"other"_s});
        if (!isGit())
            tool({u"update"_s, u"--rev="_s + base});
        repository->write(hostileName, mineText);
        repository->write(u"g.txt"_s, "g mine\n");
        mine = repository->commitAll(u"mine"_s);
    }

    void start(OperationInProgress operation) const
    {
        if (operation == OperationInProgress::graft)
            stopsForConflicts(isGit() ? QStringList{u"cherry-pick"_s, u"other"_s}
                                      : QStringList{u"graft"_s, u"--rev=other"_s});
        else if (operation == OperationInProgress::merge)
            QVERIFY(failureOf([&] { backend.merge(path(), u"other"_s); }) != u"(no failure)");
        else
            QVERIFY(failureOf([&] { backend.rebase(path(), u"other"_s); }) != u"(no failure)");
    }

    std::unique_ptr<test::RepositoryFixture> repository;
    const VersionControl &backend;
    QString base;
    QString theirs;
    QString mine;
};

bool isUnresolved(const RepositorySnapshot &snapshot, const QString &path)
{
    return snapshot.files.contains(WorkingFile{path, FileState::unresolved});
}

// The files without the backups Mercurial keeps of merged ones.
QList<WorkingFile> withoutBackups(QList<WorkingFile> files)
{
    files.removeIf([](const WorkingFile &file) { return file.path.endsWith(u".orig"); });
    return files;
}

} // namespace

class ShelvesAndConflictsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    // Each conflicted file takes a side or is edited and marked (unmarking
    // brings its conflict back, its bytes kept); a file marked resolved can
    // take a side still, and a side that deleted it deletes it. Continuing
    // finishes the operation with those bytes, aborting puts the history and
    // the working files back.
    void finishing_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<OperationInProgress>("operation");
        QTest::addColumn<Resolution>("resolution");
        QTest::addColumn<bool>("aborted");
        QTest::addColumn<QByteArray>("expected");
        using enum OperationInProgress;
        using enum Resolution;
        addRowsForBothKinds("merge, mine", [](QTestData &row) { row << merge << mine << false << mineText; });
        addRowsForBothKinds("merge, theirs", [](QTestData &row) { row << merge << theirs << false << theirsText; });
        addRowsForBothKinds("merge, by hand", [](QTestData &row) { row << merge << byHand << false << handText; });
        // A rebase replays "mine" onto "other": the working copy's side is other's.
        addRowsForBothKinds("rebase, mine", [](QTestData &row) { row << rebase << mine << false << theirsText; });
        addRowsForBothKinds("rebase, theirs", [](QTestData &row) { row << rebase << theirs << false << mineText; });
        addRowsForBothKinds("rebase, by hand", [](QTestData &row) { row << rebase << byHand << false << handText; });
        addRowsForBothKinds("graft, theirs", [](QTestData &row) { row << graft << theirs << false << theirsText; });
        for (const OperationInProgress operation : {merge, rebase, graft}) {
            addRowsForBothKinds(qPrintable(u"%1, aborted"_s.arg(operationTitle(operation, RepositoryKind::mercurial))),
                                [&](QTestData &row) { row << operation << byHand << true << mineText; });
        }
    }
    void finishing()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(OperationInProgress, operation);
        QFETCH(Resolution, resolution);
        QFETCH(bool, aborted);
        QFETCH(QByteArray, expected);
        Scene scene(kind);
        const VersionControl &backend = scene.backend;
        scene.makeTwoHeads();
        const QStringList ancestors = scene.ancestors();
        scene.start(operation);
        RepositorySnapshot snapshot = scene.snapshot();
        QCOMPARE(snapshot.operation, operation);
        // g.txt, changed on one side and removed on the other, is listed even where the working file is unchanged.
        QVERIFY(isUnresolved(snapshot, hostileName) && isUnresolved(snapshot, u"g.txt"_s));
        QCOMPARE(snapshot.resolvedFiles, QStringList());

        if (resolution == Resolution::byHand)
            scene.repository->write(hostileName, handText);
        else
            backend.resolveWithSide(scene.path(), {hostileName},
                                    resolution == Resolution::mine ? ConflictSide::mine : ConflictSide::theirs);
        backend.markResolved(scene.path(), {hostileName}, true);
        const QByteArray resolved = scene.file(hostileName);
        backend.markResolved(scene.path(), {hostileName}, false);
        snapshot = scene.snapshot();
        QVERIFY(isUnresolved(snapshot, hostileName) && !snapshot.resolvedFiles.contains(hostileName));
        QCOMPARE(scene.file(hostileName), resolved);
        backend.markResolved(scene.path(), {hostileName}, true);
        QCOMPARE(scene.snapshot().resolvedFiles, QStringList{hostileName});

        if (aborted) {
            backend.abortOperation(scene.path(), operation);
        } else {
            backend.resolveWithSide(scene.path(), {u"g.txt"_s}, ConflictSide::theirs);
            backend.resolveWithSide(scene.path(), {u"g.txt"_s}, ConflictSide::mine);
            backend.continueOperation(scene.path(), operation, u"Merged both"_s);
        }
        snapshot = scene.snapshot();
        QCOMPARE(snapshot.operation, OperationInProgress::none);
        QCOMPARE(snapshot.resolvedFiles, QStringList());
        QCOMPARE(scene.file(hostileName), expected);
        // In a rebase, the side that removed g.txt is the working copy's.
        const bool removed = !aborted && operation == OperationInProgress::rebase;
        QCOMPARE(scene.file(u"g.txt"_s), removed ? missing : "g mine\n"_ba);
        if (aborted) {
            QCOMPARE(scene.ancestors(), ancestors);
            // Mercurial's abandoned graft leaves the file it added, untracked.
            const bool graftLeft = !scene.isGit() && operation == OperationInProgress::graft;
            QCOMPARE(withoutBackups(snapshot.files).size(), graftLeft ? 1 : 0);
            QCOMPARE(scene.file(u"o.txt"_s), graftLeft ? "o\n"_ba : missing);
            return;
        }
        QCOMPARE(withoutBackups(snapshot.files), QList<WorkingFile>());
        QCOMPARE(scene.file(u"o.txt"_s), "o\n"_ba);
        // Merged: both heads below; rebased: "mine" rewritten; grafted: a copy of "theirs".
        const QStringList after = scene.ancestors();
        QCOMPARE(after.contains(scene.mine), operation != OperationInProgress::rebase);
        QCOMPARE(after.contains(scene.theirs), operation != OperationInProgress::graft);
        if (operation == OperationInProgress::merge)
            QCOMPARE(scene
                         .tool(scene.isGit() ? QStringList{u"log"_s, u"-1"_s, u"--format=%s"_s}
                                             : QStringList{u"log"_s, u"--rev=."_s, u"-T{desc}"_s})
                         .trimmed(),
                     "Merged both"_ba);
    }

    // A merge waiting for its commit is in progress, also in a linked work tree.
    void mergeWithoutConflicts_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<bool>("inWorkTree");
        addRowsForBothKinds("merge", [](QTestData &row) { row << false; });
        QTest::newRow("merge in a linked work tree, git") << RepositoryKind::git << true;
    }
    void mergeWithoutConflicts()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(bool, inWorkTree);
        Scene scene(kind);
        scene.makeTwoHeads(false);
        const QTemporaryDir workTrees;
        const QString path = inWorkTree ? workTrees.filePath(u"linked"_s) : scene.path();
        if (inWorkTree)
            scene.tool({u"worktree"_s, u"add"_s, u"-q"_s, u"-b"_s, u"linked"_s, path});
        test::runTool(scene.isGit() ? u"git"_s : u"hg"_s,
                      scene.isGit() ? QStringList{u"merge"_s, u"--no-commit"_s, u"--no-ff"_s, u"other"_s}
                                    : QStringList{u"merge"_s, u"--rev=other"_s},
                      path);
        QCOMPARE(scene.backend.loadSnapshot(path).operation, OperationInProgress::merge);
        QCOMPARE(scene.snapshot().operation, inWorkTree ? OperationInProgress::none : OperationInProgress::merge);
        scene.backend.continueOperation(path, OperationInProgress::merge, u"Merged"_s);
        QCOMPARE(scene.backend.loadSnapshot(path).operation, OperationInProgress::none);
    }

    // A restore into a working copy with changes of its own: aborting puts
    // those back and takes every change of the shelf away, which stays;
    // continuing a restore that deletes drops the shelf.
    void restoringAShelf_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<bool>("continued");
        addRowsForBothKinds("aborted", [](QTestData &row) { row << false; });
        addRowsForBothKinds("continued", [](QTestData &row) { row << true; });
    }
    void restoringAShelf()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(bool, continued);
        Scene scene(kind);
        test::RepositoryFixture &repository = *scene.repository;
        const QStringList shelved{u"f.txt"_s, u"g.txt"_s, u"s.txt"_s, u"n.txt"_s, u"u.txt"_s};
        for (const QString &name : shelved.first(3) + QStringList{u"keep.txt"_s})
            repository.write(name, "base\n");
        repository.commitAll(u"base"_s);
        for (const QString &name : shelved)
            repository.write(name, name.toUtf8() + " shelved\n");
        scene.tool({u"add"_s, u"n.txt"_s});
        const QString extension = u"--config=extensions.shelve="_s;
        scene.tool(scene.isGit() ? QStringList{u"stash"_s, u"push"_s, u"--include-untracked"_s}
                                 : QStringList{extension, u"shelve"_s, u"--unknown"_s});
        repository.write(u"f.txt"_s, "committed\n");
        repository.write(u"g.txt"_s, "committed\n");
        repository.commitAll(u"committed"_s);
        // The working copy's own changes: one staged or added, one not.
        repository.write(u"keep.txt"_s, "edited\n");
        repository.write(u"added.txt"_s, "added\n");
        scene.tool({u"add"_s, u"added.txt"_s});
        const QList<WorkingFile> before = scene.snapshot().files;
        const QStringList ancestors = scene.ancestors();

        scene.stopsForConflicts(scene.isGit() ? QStringList{u"stash"_s, u"apply"_s}
                                              : QStringList{extension, u"unshelve"_s});
        // A restore that is to delete the stash once finished leaves its id.
        const QString pendingDrop = scene.path() + u"/.git/tillery/stash-to-drop"_s;
        if (scene.isGit() && continued)
            test::writeFile(pendingDrop, scene.tool({u"rev-parse"_s, u"stash@{0}"_s}));
        QCOMPARE(scene.snapshot().operation, OperationInProgress::unshelve);
        scene.repository->write(u"f.txt"_s, handText);
        scene.backend.markResolved(scene.path(), {u"f.txt"_s}, true);
        QStringList expected;
        if (continued) {
            scene.backend.resolveWithSide(scene.path(), {u"g.txt"_s}, ConflictSide::theirs);
            const RepositorySnapshot snapshot = scene.snapshot();
            QCOMPARE(snapshot.operation, OperationInProgress::unshelve);
            QCOMPARE(snapshot.resolvedFiles, (QStringList{u"f.txt"_s, u"g.txt"_s}));
            scene.backend.continueOperation(scene.path(), OperationInProgress::unshelve, QString());
            expected = {QString::fromUtf8(handText), u"g.txt shelved\n"_s, u"s.txt shelved\n"_s, u"n.txt shelved\n"_s,
                        u"u.txt shelved\n"_s};
        } else {
            scene.backend.abortOperation(scene.path(), OperationInProgress::unshelve);
            QCOMPARE(withoutBackups(scene.snapshot().files), before);
            expected = {u"committed\n"_s, u"committed\n"_s, u"base\n"_s, u"(missing)"_s, u"(missing)"_s};
        }
        QStringList contents;
        for (const QString &name : shelved)
            contents.append(QString::fromUtf8(scene.file(name)));
        QCOMPARE(contents, expected);
        QCOMPARE(scene.file(u"keep.txt"_s) + scene.file(u"added.txt"_s), "edited\nadded\n"_ba);
        const QByteArray shelves =
            scene.isGit() ? scene.tool({u"stash"_s, u"list"_s}) : scene.tool({extension, u"shelve"_s, u"--list"_s});
        QCOMPARE(shelves.count('\n'), continued ? 0 : 1);
        QCOMPARE(scene.ancestors(), ancestors);
        QCOMPARE(scene.snapshot().operation, OperationInProgress::none);
        QVERIFY(!QFile::exists(pendingDrop));
    }

    // The merge tool the person chose runs on the file; one that the
    // repository's own configuration chooses never does.
    void mergeTool_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<bool>("personal");
        QTest::addColumn<bool>("byRepository");
        QTest::addColumn<QString>("failure");
        addRowsForBothKinds("the person's", [](QTestData &row) { row << true << false << u"(no failure)"_s; });
        addRowsForBothKinds("the repository's", [](QTestData &row) {
            row << false << true << u"This repository's own configuration sets a merge tool"_s;
        });
        addRowsForBothKinds("none", [](QTestData &row) { row << false << false << u"No merge tool is set"_s; });
    }
    void mergeTool()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(bool, personal);
        QFETCH(bool, byRepository);
        QFETCH(QString, failure);
        Scene scene(kind);
        scene.makeTwoHeads();
        scene.start(OperationInProgress::merge);
        const QTemporaryDir folder;
        const QByteArray script = folder.filePath(u"resolve"_s).toUtf8();
        test::writeFile(QString::fromUtf8(script), "#!/bin/sh\nprintf 'by tool\\n' > \"$1\"\n", true);
        const QByteArray settings =
            scene.isGit() ? "[merge]\n\ttool = scripted\n[mergetool \"scripted\"]\n\tcmd = '" + script
                                + "' \"$MERGED\"\n\ttrustExitCode = true\n[mergetool]\n\tkeepBackup = false\n"
                          : "[ui]\nmerge = scripted\n[merge-tools]\nscripted.executable = " + script
                                + "\nscripted.args = $output\n";
        // The person's configuration: Git's pinned one, or for Mercurial one without the pinned tool.
        const char *variable = scene.isGit() ? "GIT_CONFIG_GLOBAL" : "HGRCPATH";
        const QString personalFile = folder.filePath(u"config"_s);
        test::writeFile(personalFile, (scene.isGit() ? readFile(qEnvironmentVariable(variable)) : QByteArray())
                                          + (personal ? settings : QByteArray()));
        const test::ScopedEnvironmentVariable configuration(variable, personalFile.toUtf8());
        const test::ScopedEnvironmentVariable noMergeVariable("HGMERGE", std::nullopt);
        QFile own(scene.repository->filePath(scene.isGit() ? u".git/config"_s : u".hg/hgrc"_s));
        QVERIFY(!byRepository || (own.open(QIODevice::Append) && own.write(settings) == settings.size()));
        own.close();

        const QString failed = failureOf([&] { scene.backend.openInMergeTool(scene.path(), hostileName); });
        QVERIFY2(failed.startsWith(failure), qPrintable(failed));
        const RepositorySnapshot snapshot = scene.snapshot();
        QCOMPARE(scene.file(hostileName).contains("by tool"), personal);
        QCOMPARE(snapshot.resolvedFiles.contains(hostileName), personal);
        QCOMPARE(isUnresolved(snapshot, hostileName), !personal);
    }

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
        const ShelfScene scene(kind);
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
        const ShelfScene scene(kind);
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

QTEST_GUILESS_MAIN(ShelvesAndConflictsTest)
#include "tst_conflicts.moc"
