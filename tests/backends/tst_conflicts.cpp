// Operations stopped by conflicts, on real repositories of both kinds: what
// the snapshot tells at each step, resolving, continuing and aborting.
#include "Checks.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include "model/VersionControl.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::addRowsForBothKinds;
using test::failureOf;
using test::readFile;
using test::ScopedEnvironmentVariable;

namespace {

enum class Resolution { mine, theirs, byHand };

const QByteArray baseText = "one\ntwo\nthree\n";
const QByteArray mineText = "one\nmine\nthree\n";
const QByteArray theirsText = "one\ntheirs\nthree\n";
const QByteArray handText = "one\nhand\nthree\n";

struct Scene {
    explicit Scene(RepositoryKind repositoryKind, const QString &conflictedName = u"f.txt"_s)
        : kind(repositoryKind)
        , backend(versionControl(repositoryKind))
        , repository(test::makeFixture(repositoryKind))
        , conflicted(conflictedName)
    {
    }
    bool isGit() const { return kind == RepositoryKind::git; }
    QString path() const { return repository->path(); }
    QByteArray file(const QString &name) const { return readFile(repository->filePath(name)); }
    RepositorySnapshot snapshot() const { return backend.loadSnapshot(path()); }
    QByteArray tool(const QStringList &arguments) const { return repository->tool(arguments); }

    // A command expected to stop for conflicts (any exit status but 0).
    void stopsForConflicts(const QStringList &arguments) const
    {
        QProcess process;
        process.setWorkingDirectory(path());
        process.start(isGit() ? u"git"_s : u"hg"_s, arguments);
        QVERIFY(process.waitForFinished(-1));
        QVERIFY2(process.exitCode() != 0, process.readAllStandardOutput().constData());
    }

    // f.txt (or the conflicted file named) changed on two lines of work from
    // a base: line two is "theirs" on "other" (which adds o.txt and removes
    // g.txt too) and "mine" on the working copy's (which changes g.txt).
    void makeTwoHeads(bool conflicting = true)
    {
        repository->write(conflicted, baseText);
        repository->write(u"g.txt"_s, "g\n");
        base = repository->commitAll(u"base"_s);
        if (isGit())
            tool({u"checkout"_s, u"-q"_s, u"-b"_s, u"other"_s});
        if (conflicting) {
            repository->write(conflicted, theirsText);
            repository->removeFromDisk(u"g.txt"_s);
        }
        repository->write(u"o.txt"_s, "o\n");
        theirs = repository->commitAll(u"theirs"_s);
        if (isGit()) {
            tool({u"checkout"_s, u"-q"_s, u"main"_s});
        } else {
            tool({u"bookmark"_s, u"--rev"_s, theirs, u"other"_s});
            tool({u"update"_s, u"--rev"_s, base});
        }
        repository->write(conflicted, mineText);
        repository->write(u"g.txt"_s, "g mine\n");
        mine = repository->commitAll(u"mine"_s);
    }

    void start(OperationInProgress operation) const
    {
        switch (operation) {
        case OperationInProgress::merge:
            QVERIFY(failureOf([&] { backend.merge(path(), u"other"_s); }) != u"(no failure)");
            return;
        case OperationInProgress::rebase:
            QVERIFY(failureOf([&] { backend.rebase(path(), u"other"_s); }) != u"(no failure)");
            return;
        case OperationInProgress::graft:
            stopsForConflicts(isGit() ? QStringList{u"cherry-pick"_s, u"other"_s}
                                      : QStringList{u"graft"_s, u"--rev"_s, u"other"_s});
            return;
        default:
            QFAIL("no such start");
        }
    }

    // The ids of the working copy's parent's ancestors, itself included.
    QStringList ancestors() const
    {
        const QByteArray output =
            isGit() ? tool({u"rev-list"_s, u"HEAD"_s}) : tool({u"log"_s, u"--rev"_s, u"::."_s, u"-T"_s, u"{node}\n"_s});
        return QString::fromUtf8(output).split(u'\n', Qt::SkipEmptyParts);
    }
    int parentCount() const
    {
        const QByteArray output = isGit() ? tool({u"log"_s, u"-1"_s, u"--format=%P"_s})
                                          : tool({u"log"_s, u"--rev"_s, u"."_s, u"-T"_s, u"{p1node} {p2node}"_s});
        return QString::fromUtf8(output).remove(QString(40, u'0')).split(u' ', Qt::SkipEmptyParts).size();
    }
    QString message() const
    {
        return QString::fromUtf8(isGit() ? tool({u"log"_s, u"-1"_s, u"--format=%s"_s})
                                         : tool({u"log"_s, u"--rev"_s, u"."_s, u"-T"_s, u"{desc}"_s}))
            .trimmed();
    }
    QByteArray committed(const QString &name) const
    {
        return isGit() ? tool({u"show"_s, u"HEAD:"_s + name}) : tool({u"cat"_s, u"--rev"_s, u"."_s, name});
    }
    int shelfCount() const
    {
        const QByteArray list = isGit() ? tool({u"stash"_s, u"list"_s})
                                        : tool({u"--config"_s, u"extensions.shelve="_s, u"shelve"_s, u"--list"_s});
        return list.count('\n');
    }

    RepositoryKind kind;
    const VersionControl &backend;
    std::unique_ptr<test::RepositoryFixture> repository;
    QString conflicted;
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

// The person's own configuration with more settings, for the scope of a test.
class PersonalConfiguration {
public:
    PersonalConfiguration(RepositoryKind kind, const QByteArray &settings, bool keepPinned = true)
        : m_variable(kind == RepositoryKind::git ? "GIT_CONFIG_GLOBAL" : "HGRCPATH")
    {
        const QString pinned = qEnvironmentVariable(m_variable.constData());
        const QString file = m_folder.filePath(u"config"_s);
        test::writeFile(file, (keepPinned ? readFile(pinned) : QByteArray()) + settings);
        m_scoped.emplace(m_variable.constData(), file.toUtf8());
    }

private:
    QByteArray m_variable;
    QTemporaryDir m_folder;
    std::optional<ScopedEnvironmentVariable> m_scoped;
};

} // namespace

class ConflictsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    // Each conflicted file takes a side or is edited and marked; continuing
    // finishes the operation with those bytes.
    void resolvingAndContinuing_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<OperationInProgress>("operation");
        QTest::addColumn<Resolution>("resolution");
        QTest::addColumn<QByteArray>("expected");
        using enum OperationInProgress;
        addRowsForBothKinds("merge, mine", [](QTestData &row) { row << merge << Resolution::mine << mineText; });
        addRowsForBothKinds("merge, theirs", [](QTestData &row) { row << merge << Resolution::theirs << theirsText; });
        addRowsForBothKinds("merge, by hand", [](QTestData &row) { row << merge << Resolution::byHand << handText; });
        // A rebase replays "mine" onto "other": the working copy's side is other's.
        addRowsForBothKinds("rebase, mine", [](QTestData &row) { row << rebase << Resolution::mine << theirsText; });
        addRowsForBothKinds("rebase, theirs", [](QTestData &row) { row << rebase << Resolution::theirs << mineText; });
        addRowsForBothKinds("rebase, by hand", [](QTestData &row) { row << rebase << Resolution::byHand << handText; });
        addRowsForBothKinds("graft, theirs", [](QTestData &row) { row << graft << Resolution::theirs << theirsText; });
    }
    void resolvingAndContinuing()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(OperationInProgress, operation);
        QFETCH(Resolution, resolution);
        QFETCH(QByteArray, expected);
        Scene scene(kind);
        scene.makeTwoHeads();
        scene.start(operation);

        RepositorySnapshot snapshot = scene.snapshot();
        QCOMPARE(snapshot.operation, operation);
        // g.txt: changed on one side, removed on the other; listed even where the working file is unchanged.
        QVERIFY(isUnresolved(snapshot, u"f.txt"_s) && isUnresolved(snapshot, u"g.txt"_s));
        QCOMPARE(snapshot.resolvedFiles, QStringList());

        if (resolution == Resolution::byHand) {
            scene.repository->write(u"f.txt"_s, handText);
            scene.backend.markResolved(scene.path(), {u"f.txt"_s}, true);
        } else {
            const ConflictSide side = resolution == Resolution::mine ? ConflictSide::mine : ConflictSide::theirs;
            scene.backend.resolveWithSide(scene.path(), {u"f.txt"_s}, side);
        }
        scene.backend.resolveWithSide(scene.path(), {u"g.txt"_s}, ConflictSide::mine);
        QCOMPARE(scene.file(u"f.txt"_s), expected);
        snapshot = scene.snapshot();
        QCOMPARE(snapshot.operation, operation);
        QVERIFY(!isUnresolved(snapshot, u"f.txt"_s));
        QVERIFY2(snapshot.resolvedFiles.contains(u"f.txt"_s), qPrintable(snapshot.resolvedFiles.join(u' ')));

        scene.backend.continueOperation(scene.path(), operation, u"Merged both"_s);
        snapshot = scene.snapshot();
        QCOMPARE(snapshot.operation, OperationInProgress::none);
        QCOMPARE(snapshot.resolvedFiles, QStringList());
        QCOMPARE(withoutBackups(snapshot.files), QList<WorkingFile>());
        QCOMPARE(scene.committed(u"f.txt"_s), expected);
        QCOMPARE(scene.file(u"o.txt"_s), "o\n"_ba);
        const QStringList ancestors = scene.ancestors();
        QVERIFY(ancestors.contains(operation == OperationInProgress::graft ? scene.mine : scene.theirs));
        QCOMPARE(ancestors.contains(scene.mine), operation != OperationInProgress::rebase);
        QCOMPARE(scene.parentCount(), operation == OperationInProgress::merge ? 2 : 1);
        if (operation == OperationInProgress::merge)
            QCOMPARE(scene.message(), u"Merged both"_s);
    }

    // Abandoning puts the history and every working file back, a file
    // resolved meanwhile too.
    void aborting_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<OperationInProgress>("operation");
        // Mercurial's abandoned graft leaves the files it added, untracked.
        QTest::addColumn<QList<WorkingFile>>("left");
        using enum OperationInProgress;
        addRowsForBothKinds("merge", [](QTestData &row) { row << merge << QList<WorkingFile>(); });
        addRowsForBothKinds("rebase", [](QTestData &row) { row << rebase << QList<WorkingFile>(); });
        QTest::newRow("graft, mercurial")
            << RepositoryKind::mercurial << graft << QList<WorkingFile>{{u"o.txt"_s, FileState::untracked}};
        QTest::newRow("graft, git") << RepositoryKind::git << graft << QList<WorkingFile>();
    }
    void aborting()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(OperationInProgress, operation);
        QFETCH(QList<WorkingFile>, left);
        Scene scene(kind);
        scene.makeTwoHeads();
        const QStringList ancestors = scene.ancestors();
        scene.start(operation);
        QCOMPARE(scene.snapshot().operation, operation);
        scene.repository->write(u"f.txt"_s, handText);
        scene.backend.markResolved(scene.path(), {u"f.txt"_s}, true);

        scene.backend.abortOperation(scene.path(), operation);
        const RepositorySnapshot snapshot = scene.snapshot();
        QCOMPARE(snapshot.operation, OperationInProgress::none);
        QCOMPARE(snapshot.resolvedFiles, QStringList());
        QCOMPARE(withoutBackups(snapshot.files), left);
        QCOMPARE(scene.ancestors(), ancestors);
        QCOMPARE(scene.file(u"f.txt"_s), mineText);
        QCOMPARE(scene.file(u"g.txt"_s), "g mine\n"_ba);
        if (left.isEmpty())
            QCOMPARE(scene.file(u"o.txt"_s), "(missing)"_ba);
    }

    // Unmarking brings the conflict back and keeps the working file; a side
    // taken for a file marked resolved replaces it, a side that deleted the
    // file deletes it.
    void unmarking_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("resolvedAs");
        QTest::addColumn<QByteArray>("mineAfterwards");
        addRowsForBothKinds("edited", [](QTestData &row) { row << u"f.txt"_s << handText << mineText; });
        addRowsForBothKinds("removed by theirs",
                            [](QTestData &row) { row << u"g.txt"_s << "(missing)"_ba << "g mine\n"_ba; });
        addRowsForBothKinds("a name read as an option or a pattern",
                            [](QTestData &row) { row << u"-n re:x *[a].txt"_s << handText << mineText; });
    }
    void unmarking()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(QString, name);
        QFETCH(QByteArray, resolvedAs);
        QFETCH(QByteArray, mineAfterwards);
        Scene scene(kind, name == u"g.txt" ? u"f.txt"_s : name);
        scene.makeTwoHeads();
        scene.start(OperationInProgress::merge);
        if (resolvedAs == handText) {
            scene.repository->write(name, handText);
            scene.backend.markResolved(scene.path(), {name}, true);
        } else {
            scene.backend.resolveWithSide(scene.path(), {name}, ConflictSide::theirs);
        }
        QCOMPARE(scene.file(name), resolvedAs);
        QVERIFY(scene.snapshot().resolvedFiles.contains(name));

        scene.backend.markResolved(scene.path(), {name}, false);
        RepositorySnapshot snapshot = scene.snapshot();
        QVERIFY(isUnresolved(snapshot, name));
        QVERIFY(!snapshot.resolvedFiles.contains(name));
        QCOMPARE(scene.file(name), resolvedAs);

        scene.backend.markResolved(scene.path(), {name}, true);
        QVERIFY(!isUnresolved(scene.snapshot(), name));
        scene.backend.resolveWithSide(scene.path(), {name}, ConflictSide::mine);
        QCOMPARE(scene.file(name), mineAfterwards);
        snapshot = scene.snapshot();
        QVERIFY(!isUnresolved(snapshot, name));
        QVERIFY(snapshot.resolvedFiles.contains(name));
    }

    // The operation is told without a commit to finish, and in a linked work tree.
    void operationWithoutConflicts_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<bool>("inWorkTree");
        addRowsForBothKinds("merge", [](QTestData &row) { row << false; });
        QTest::newRow("merge in a linked work tree, git") << RepositoryKind::git << true;
    }
    void operationWithoutConflicts()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(bool, inWorkTree);
        Scene scene(kind);
        scene.makeTwoHeads(false);
        QString path = scene.path();
        const QTemporaryDir workTrees;
        if (inWorkTree) {
            path = workTrees.filePath(u"linked"_s);
            scene.tool({u"worktree"_s, u"add"_s, u"-q"_s, u"-b"_s, u"linked"_s, path});
        }
        test::runTool(scene.isGit() ? u"git"_s : u"hg"_s,
                      scene.isGit() ? QStringList{u"merge"_s, u"--no-commit"_s, u"--no-ff"_s, u"other"_s}
                                    : QStringList{u"merge"_s, u"--rev"_s, u"other"_s},
                      path);
        QCOMPARE(scene.backend.loadSnapshot(path).operation, OperationInProgress::merge);
        if (inWorkTree)
            QCOMPARE(scene.snapshot().operation, OperationInProgress::none);

        scene.backend.continueOperation(path, OperationInProgress::merge, u"Merged"_s);
        QCOMPARE(scene.backend.loadSnapshot(path).operation, OperationInProgress::none);
        QCOMPARE(readFile(path + u"/o.txt"_s), "o\n"_ba);
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
        for (const QString &name : {u"f.txt"_s, u"g.txt"_s, u"s.txt"_s, u"keep.txt"_s})
            repository.write(name, name.toUtf8() + " base\n");
        repository.commitAll(u"base"_s);
        for (const QString &name : {u"f.txt"_s, u"g.txt"_s, u"s.txt"_s, u"n.txt"_s})
            repository.write(name, name.toUtf8() + " shelved\n");
        scene.tool({u"add"_s, u"n.txt"_s});
        repository.write(u"u.txt"_s, "untracked\n");
        scene.tool(scene.isGit() ? QStringList{u"stash"_s, u"push"_s, u"--include-untracked"_s}
                                 : QStringList{u"--config"_s, u"extensions.shelve="_s, u"shelve"_s, u"--unknown"_s});
        repository.write(u"f.txt"_s, "f.txt committed\n");
        repository.write(u"g.txt"_s, "g.txt committed\n");
        repository.commitAll(u"committed"_s);
        // The working copy's own changes: one staged or added, one not.
        repository.write(u"keep.txt"_s, "keep.txt edited\n");
        repository.write(u"added.txt"_s, "added\n");
        scene.tool({u"add"_s, u"added.txt"_s});
        const QList<WorkingFile> before = scene.snapshot().files;
        const QStringList ancestors = scene.ancestors();

        scene.stopsForConflicts(scene.isGit() ? QStringList{u"stash"_s, u"apply"_s}
                                              : QStringList{u"--config"_s, u"extensions.shelve="_s, u"unshelve"_s});
        // A restore that is to delete the stash once finished leaves its id.
        const QString pendingDrop = scene.path() + u"/.git/tillery/stash-to-drop"_s;
        if (scene.isGit() && continued)
            test::writeFile(pendingDrop, scene.tool({u"rev-parse"_s, u"stash@{0}"_s}));
        RepositorySnapshot snapshot = scene.snapshot();
        QCOMPARE(snapshot.operation, OperationInProgress::unshelve);
        QVERIFY(isUnresolved(snapshot, u"f.txt"_s) && isUnresolved(snapshot, u"g.txt"_s));
        scene.repository->write(u"f.txt"_s, handText);
        scene.backend.markResolved(scene.path(), {u"f.txt"_s}, true);

        if (continued) {
            scene.backend.resolveWithSide(scene.path(), {u"g.txt"_s}, ConflictSide::theirs);
            snapshot = scene.snapshot();
            QCOMPARE(snapshot.operation, OperationInProgress::unshelve);
            QCOMPARE(snapshot.resolvedFiles, (QStringList{u"f.txt"_s, u"g.txt"_s}));
            scene.backend.continueOperation(scene.path(), OperationInProgress::unshelve, QString());
            QCOMPARE(scene.shelfCount(), 0);
            QCOMPARE(scene.file(u"f.txt"_s), handText);
            QCOMPARE(scene.file(u"g.txt"_s), "g.txt shelved\n"_ba);
            QCOMPARE(scene.file(u"s.txt"_s), "s.txt shelved\n"_ba);
            QCOMPARE(scene.file(u"u.txt"_s), "untracked\n"_ba);
        } else {
            scene.backend.abortOperation(scene.path(), OperationInProgress::unshelve);
            QCOMPARE(scene.shelfCount(), 1);
            QCOMPARE(withoutBackups(scene.snapshot().files), before);
            for (const QString &name : {u"f.txt"_s, u"g.txt"_s})
                QCOMPARE(scene.file(name), name.toUtf8() + " committed\n");
            QCOMPARE(scene.file(u"s.txt"_s), "s.txt base\n"_ba);
            QCOMPARE(scene.file(u"keep.txt"_s), "keep.txt edited\n"_ba);
            QCOMPARE(scene.file(u"added.txt"_s), "added\n"_ba);
            QCOMPARE(scene.file(u"n.txt"_s), "(missing)"_ba);
            QCOMPARE(scene.file(u"u.txt"_s), "(missing)"_ba);
        }
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
        const QString script = folder.filePath(u"resolve"_s);
        test::writeFile(script, "#!/bin/sh\nprintf 'by tool\\n' > \"$1\"\n", true);
        const QByteArray settings =
            scene.isGit() ? "[merge]\n\ttool = scripted\n[mergetool \"scripted\"]\n\tcmd = '" + script.toUtf8()
                                + "' \"$MERGED\"\n\ttrustExitCode = true\n[mergetool]\n\tkeepBackup = false\n"
                          : "[ui]\nmerge = scripted\n[merge-tools]\nscripted.executable = " + script.toUtf8()
                                + "\nscripted.args = $output\n";
        const PersonalConfiguration configuration(kind, personal ? settings : QByteArray(), scene.isGit());
        const ScopedEnvironmentVariable noMergeVariable("HGMERGE", std::nullopt);
        if (byRepository) {
            QFile own(scene.repository->filePath(scene.isGit() ? u".git/config"_s : u".hg/hgrc"_s));
            QVERIFY(own.open(QIODevice::Append) && own.write(settings) == settings.size());
        }

        const QString failed = failureOf([&] { scene.backend.openInMergeTool(scene.path(), u"f.txt"_s); });
        QVERIFY2(failed.startsWith(failure), qPrintable(failed));
        const RepositorySnapshot snapshot = scene.snapshot();
        if (personal) {
            QCOMPARE(scene.file(u"f.txt"_s), "by tool\n"_ba);
            QCOMPARE(snapshot.resolvedFiles, QStringList{u"f.txt"_s});
        } else {
            QVERIFY(scene.file(u"f.txt"_s).contains("<<<<<<<"));
            QVERIFY(isUnresolved(snapshot, u"f.txt"_s));
        }
    }
};

QTEST_GUILESS_MAIN(ConflictsTest)
#include "tst_conflicts.moc"
