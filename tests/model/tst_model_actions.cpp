// What the model does for a person, on real repositories of both kinds: the repositories it keeps and
// shows, commits, amends and stashes, discards after asking, branches, clones and fetches, and tools that
// hang.
#include "Checks.h"
#include "FakeTool.h"
#include "ModelHarness.h"
#include "Pictures.h"
#include "RecordPrinting.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::GitFixture;
using test::MercurialFixture;
using test::ModelHarness;
using test::workingFile;

namespace {

// A repository of the kind with one commit of a.txt and b.txt, selected in a started model.
struct Fixture {
    std::unique_ptr<test::RepositoryFixture> repository;
    ModelHarness harness;

    explicit Fixture(RepositoryKind kind)
        : repository(test::makeFixture(kind))
    {
        repository->write(u"a.txt"_s, "a\n");
        repository->write(u"b.txt"_s, "b\n");
        repository->commitAll(u"base"_s);
        harness.start();
        harness.adopt(*repository);
    }
    AppModel &model() { return harness.model(); }
    bool refreshed()
    {
        model().refresh();
        return harness.settle();
    }
    // Settled, and nothing went wrong.
    bool settledCleanly() { return harness.settle() && !model().activityState().presentedError(); }
};

std::optional<Bookmark> bookmarkNamed(const AppModel &model, const QString &name)
{
    for (const Bookmark &bookmark : model.workspace().snapshot().bookmarks) {
        if (bookmark.name == name)
            return bookmark;
    }
    return std::nullopt;
}

QStringList shownPaths(const AppModel &model)
{
    QStringList paths;
    for (const WorkingFile &file : model.workspace().snapshot().files)
        paths.append(file.path);
    return paths;
}

} // namespace

class ModelActionsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    // Only the marked files go in; a failed commit keeps what was typed.
    void commitsMarkedFiles_data() { test::addKindColumn(); }

    void commitsMarkedFiles()
    {
        QFETCH(RepositoryKind, kind);
        Fixture fixture(kind);
        fixture.repository->write(u"a.txt"_s, "changed\n");
        fixture.repository->write(u"new.txt"_s, "new\n");
        fixture.repository->write(u"left.txt"_s, "left alone\n");
        QVERIFY(fixture.refreshed());
        AppModel &model = fixture.model();
        model.setSelectedFilePaths({u"a.txt"_s, u"new.txt"_s});
        model.setCommitSummary(u" \n "_s);
        QVERIFY(!model.canCommit());
        model.setCommitSummary(u"Add the new file"_s);
        model.setCommitDescription(u"With details."_s);
        QVERIFY(model.canCommit());
        model.commit();
        QCOMPARE(model.activityState().activity(), u"Committing changes"_s);
        QVERIFY(!model.canCommit());
        QVERIFY(fixture.harness.settle());
        QCOMPARE(model.activityState().presentedError(), std::nullopt);
        QCOMPARE(model.workspace().commitSummary(), QString());
        QCOMPARE(model.workspace().snapshot().files, (QList<WorkingFile>{{u"left.txt"_s, FileState::untracked}}));
        QCOMPARE(model.workspace().snapshot().history.first().description, u"Add the new file\n\nWith details."_s);

        model.setSelectedFilePaths({u"left.txt"_s});
        model.setCommitSummary(u"Summary"_s);
        model.setCommitDescription(u"Description"_s);
        const test::FakeTool broken({{}, "abort: no space left\n", 255, 0, {}});
        const test::ScopedEnvironmentVariable override(test::toolVariable(kind), broken.path().toUtf8());
        model.commit();
        QVERIFY(fixture.harness.settle());
        QCOMPARE(model.activityState().presentedError()->title, u"Committing changes"_s);
        QCOMPARE(model.workspace().commitSummary(), u"Summary"_s);
        QCOMPARE(model.workspace().commitDescription(), u"Description"_s);
    }

    // Ticking "Amend Last Commit" fills only an empty box and unticking takes out only what it put in;
    // the amend replaces the commit and leaves unmarked files alone; an undo brings the message back.
    void amendsAndUndoes_data() { test::addKindColumn(); }

    void amendsAndUndoes()
    {
        QFETCH(RepositoryKind, kind);
        Fixture fixture(kind);
        fixture.repository->write(u"b.txt"_s, "b, second\n");
        fixture.repository->commitAll(u"second\n\nWith a body."_s);
        fixture.repository->write(u"a.txt"_s, "changed\n");
        QVERIFY(fixture.refreshed());
        AppModel &model = fixture.model();
        const Workspace &workspace = model.workspace();
        model.setCommitSummary(u"typed"_s);
        model.setAmendingLastCommit(true);
        model.setAmendingLastCommit(false);
        QCOMPARE(workspace.commitSummary(), u"typed"_s);
        model.setCommitSummary(QString());
        model.setAmendingLastCommit(true);
        QCOMPARE(workspace.commitSummary(), u"second"_s);
        QCOMPARE(workspace.commitDescription(), u"With a body."_s);
        QVERIFY(model.canCommit());
        model.setAmendingLastCommit(false);
        QCOMPARE(workspace.commitSummary(), QString());

        model.setAmendingLastCommit(true);
        model.setCommitSummary(u"second, reworded"_s);
        model.commit();
        QVERIFY(fixture.settledCleanly());
        QVERIFY(!workspace.amendsLastCommit());
        QCOMPARE(workspace.snapshot().history.size(), 2);
        QCOMPARE(workspace.snapshot().history.first().description, u"second, reworded\n\nWith a body."_s);
        QCOMPARE(workspace.snapshot().files, (QList<WorkingFile>{{u"a.txt"_s, FileState::modified}}));

        fixture.harness.prompts.alertAnswers = {0};
        QVERIFY(model.canUndoLastCommit());
        model.undoLastCommit();
        QVERIFY(fixture.settledCleanly());
        QCOMPARE(fixture.harness.prompts.alerts.last().buttons, (QStringList{u"Undo Commit"_s, u"Cancel"_s}));
        QCOMPARE(workspace.snapshot().history.size(), 1);
        QCOMPARE(workspace.snapshot().files.size(), 2);
        QCOMPARE(workspace.commitSummary(), u"second, reworded"_s);
        QCOMPARE(workspace.commitDescription(), u"With a body."_s);
        QCOMPARE(fixture.repository->read(u"b.txt"_s), "b, second\n"_ba);
    }

    // Git stashes untracked files too; Mercurial leaves them. The stash is named so that it can be
    // found again. With nothing to stash, nothing runs.
    void stashes_data() { test::addKindColumn(); }

    void stashes()
    {
        QFETCH(RepositoryKind, kind);
        Fixture fixture(kind);
        AppModel &model = fixture.model();
        model.stashAll();
        QVERIFY(!model.activityState().isBusy());
        fixture.repository->write(u"a.txt"_s, "changed\n");
        fixture.repository->write(u"new.txt"_s, "new\n");
        QVERIFY(fixture.refreshed());
        model.stashAll();
        QCOMPARE(model.activityState().activity(), u"Stashing all changes"_s);
        QVERIFY(fixture.settledCleanly());
        QCOMPARE(fixture.repository->read(u"a.txt"_s), QByteArray("a\n"));
        QCOMPARE(model.workspace().snapshot().files.size(), kind == RepositoryKind::git ? 0 : 1);
        const QByteArray list = fixture.repository->tool(
            kind == RepositoryKind::git ? QStringList{u"stash"_s, u"list"_s}
                                        : QStringList{u"--config=extensions.shelve="_s, u"shelve"_s, u"--list"_s});
        QVERIFY2(list.contains("wharf-"), list.constData());
    }

    // What the confirmation says; untracked files go to the Trash, or stay when it refuses them.
    void discardSelected_data()
    {
        QTest::addColumn<QStringList>("selected");
        QTest::addColumn<bool>("trashRefuses");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("informative");
        QTest::newRow("one untracked") << QStringList{u"new.txt"_s} << false << u"Discard changes to “new.txt”?"_s
                                       << u"The untracked file will be moved to the Trash."_s;
        QTest::newRow("two tracked, one untracked")
            << QStringList{u"a.txt"_s, u"b.txt"_s, u"new.txt"_s} << false << u"Discard changes to 3 selected files?"_s
            << u"Tracked files will be restored to their last committed state. Untracked files will be moved to "
               "the Trash."_s;
        QTest::newRow("the Trash refuses") << QStringList{u"new.txt"_s} << true << QString() << QString();
    }

    void discardSelected()
    {
        QFETCH(QStringList, selected);
        QFETCH(bool, trashRefuses);
        QFETCH(QString, message);
        QFETCH(QString, informative);
        Fixture fixture(RepositoryKind::git);
        fixture.repository->write(u"a.txt"_s, "changed a\n");
        fixture.repository->write(u"b.txt"_s, "changed b\n");
        fixture.repository->write(u"new.txt"_s, "precious\n");
        fixture.repository->write(u"other.txt"_s, "also precious\n");
        QVERIFY(fixture.refreshed());
        AppModel &model = fixture.model();
        QSet<WorkingFile> selection;
        for (const QString &path : selected)
            selection.insert(workingFile(model, path));
        model.selectChangeFiles(selection);
        if (trashRefuses)
            fixture.harness.desktop.trashRefusal = u"new.txt could not be moved to the Trash: no Trash here"_s;

        fixture.harness.prompts.alertAnswers = {0};
        model.discardSelected();
        QVERIFY(fixture.harness.settle());
        const QByteArray precious = fixture.repository->read(u"new.txt"_s);
        if (trashRefuses) {
            QCOMPARE(model.activityState().presentedError()->title, u"Discarding changes"_s);
            QCOMPARE(model.activityState().presentedError()->message, *fixture.harness.desktop.trashRefusal);
            QCOMPARE(precious, QByteArray("precious\n"));
            return;
        }
        QCOMPARE(fixture.harness.prompts.alerts.last().message, message);
        QCOMPARE(fixture.harness.prompts.alerts.last().informativeText, informative);
        QCOMPARE(fixture.harness.prompts.alerts.last().buttons, (QStringList{u"Discard"_s, u"Cancel"_s}));
        QCOMPARE(model.activityState().presentedError(), std::nullopt);
        QCOMPARE(fixture.repository->read(u"a.txt"_s),
                 selected.contains(u"a.txt"_s) ? QByteArray("a\n") : QByteArray("changed a\n"));
        QStringList untracked = selected.filter(u"new"_s) + selected.filter(u"other"_s);
        for (QString &path : untracked)
            path = fixture.repository->filePath(path);
        QCOMPARE(fixture.harness.desktop.trashed, untracked);
        QCOMPARE(precious == "precious\n", !selected.contains(u"new.txt"_s));
    }

    // Cancelled confirmations run nothing; a new repository is made once its kind and folder are chosen.
    void confirmationsComeFirst()
    {
        Fixture fixture(RepositoryKind::git);
        fixture.repository->write(u"a.txt"_s, "changed\n");
        fixture.repository->write(u"new.txt"_s, "new\n");
        QVERIFY(fixture.refreshed());
        AppModel &model = fixture.model();
        model.selectChangeFiles({workingFile(model, u"a.txt"_s), workingFile(model, u"new.txt"_s)});
        const QSignalSpy busy(&model.activityState(), &ActivityState::isBusyChanged);

        fixture.harness.prompts.alertAnswers = {1, std::nullopt, 1, 2};
        model.discardSelected();
        model.discardAll();
        model.deleteBookmark(model.workspace().snapshot().bookmarks.first());
        model.createRepository();
        QCOMPARE(fixture.harness.prompts.alerts.size(), 4);
        QVERIFY(fixture.harness.prompts.alerts[2].informativeText.contains(u"“main”"_s));
        QCOMPARE(busy.count(), 0);
        QCOMPARE(fixture.repository->read(u"a.txt"_s), QByteArray("changed\n"));
        QCOMPARE(fixture.repository->read(u"new.txt"_s), QByteArray("new\n"));
        QVERIFY(fixture.harness.prompts.folders.isEmpty());

        QTemporaryDir folder;
        const Repository created{folder.filePath(u"fresh/project"_s), RepositoryKind::git};
        fixture.harness.prompts.alertAnswers = {1};
        fixture.harness.prompts.folderAnswers = {created.path};
        model.createRepository();
        QCOMPARE(fixture.harness.prompts.folders.last().confirmButton, u"Create Repository"_s);
        QVERIFY(fixture.harness.settle());
        QCOMPARE(model.workspace().selectedRepository(), std::optional(created));
    }

    void branches_data() { test::addKindColumn(); }

    void branches()
    {
        QFETCH(RepositoryKind, kind);
        Fixture fixture(kind);
        AppModel &model = fixture.model();
        test::ScriptedPrompts &prompts = fixture.harness.prompts;
        if (kind == RepositoryKind::mercurial)
            model.createBookmark(u"main"_s);
        QVERIFY(fixture.settledCleanly());

        model.merge();
        QCOMPARE(prompts.alerts.last().informativeText, u"There are no other branches to choose from."_s);
        QVERIFY(prompts.choices.isEmpty());

        model.createBookmark(u"topic"_s);
        QCOMPARE(model.activityState().activity(), u"Creating branch"_s);
        QVERIFY(fixture.settledCleanly());
        QCOMPARE(model.workspace().snapshot().activeBookmark, std::optional(u"topic"_s));

        prompts.choiceAnswers = {0};
        model.compare();
        QCOMPARE(prompts.choices.last().informativeText,
                 kind == RepositoryKind::git ? u"Choose a Git branch."_s : u"Choose a Mercurial bookmark."_s);
        QCOMPARE(prompts.choices.last().choices, QStringList{u"main"_s});
        QCOMPARE(model.activityState().activity(), u"Comparing to main"_s);
        QVERIFY(fixture.settledCleanly());
        QCOMPARE(model.diffSelection().diff().text, u"There are no differences from main."_s);

        fixture.repository->write(u"t.txt"_s, "topic\n");
        fixture.repository->commitAll(u"topic work"_s);
        QVERIFY(fixture.refreshed());
        model.switchTo(*bookmarkNamed(model, u"main"_s), u"Switching to main"_s);
        QVERIFY(fixture.settledCleanly());
        QCOMPARE(model.workspace().snapshot().activeBookmark, std::optional(u"main"_s));
        fixture.repository->write(u"m.txt"_s, "main\n");
        fixture.repository->commitAll(u"main work"_s);
        QVERIFY(fixture.refreshed());
        prompts.choiceAnswers = {0};
        model.merge();
        QCOMPARE(model.activityState().activity(), u"Merging topic"_s);
        QVERIFY(fixture.settledCleanly());
        QVERIFY(QFile::exists(fixture.repository->filePath(u"t.txt"_s)));
        // The lanes are laid out with the history; Git's merge commit leaves toward both parents.
        const HistoryGraph &graph = model.workspace().historyGraph();
        QCOMPARE(graph.rowCount(), model.workspace().snapshot().history.size());
        QCOMPARE(graph.lowerHalf(0).size(), kind == RepositoryKind::git ? 2 : 1);

        prompts.textAnswers = {u"renamed"_s};
        model.renameBookmark(*bookmarkNamed(model, u"topic"_s));
        QVERIFY(fixture.settledCleanly());
        prompts.alertAnswers = {0};
        model.deleteBookmark(*bookmarkNamed(model, u"renamed"_s));
        QVERIFY(fixture.settledCleanly());
        QCOMPARE(model.workspace().snapshot().bookmarks.size(), 1);
    }

    // A clone is added and selected; a fetch leaves the files alone. (Pulls and pushes through the model:
    // tst_credentials.)
    void cloneAndFetch_data() { test::addKindColumn(); }

    void cloneAndFetch()
    {
        QFETCH(RepositoryKind, kind);
        const std::unique_ptr<test::RepositoryFixture> origin = test::makeFixture(kind);
        origin->write(u"a.txt"_s, "a\n");
        origin->commitAll(u"first"_s);
        QTemporaryDir folder;
        const Repository cloned{folder.filePath(u"copy"_s), kind};
        ModelHarness harness;
        AppModel &model = harness.start();
        model.clone(origin->path(), cloned.path, kind);
        QVERIFY(harness.settle());
        QCOMPARE(model.activityState().presentedError(), std::nullopt);
        QCOMPARE(model.workspace().selectedRepository(), std::optional(cloned));
        QCOMPARE(model.library().repositories(), QList<Repository>{cloned});

        origin->write(u"b.txt"_s, "b\n");
        origin->commitAll(u"second"_s);
        model.fetch();
        QVERIFY(harness.settle());
        QCOMPARE(model.workspace().snapshot().history.size(), 2);
        QVERIFY(!QFile::exists(cloned.path + u"/b.txt"_s));
    }

    // A tool that hangs never holds Tillery: remote commands are cancelled from
    // the activity row (a clone cut short leaves no folder behind), and
    // quitting ends whatever still runs. The stand-in leaves a mark if it is
    // let run to its end. Git's pull first reports progress, which the activity
    // shows until the cancel.
    void hungToolsAreStopped_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<QString>("command");
        QTest::addColumn<bool>("quit"); // quit instead of cancelling
        QTest::newRow("hg: cancel a push") << RepositoryKind::mercurial << u"push"_s << false;
        QTest::newRow("git: cancel a pull") << RepositoryKind::git << u"pull"_s << false;
        QTest::newRow("hg: cancel a clone") << RepositoryKind::mercurial << u"clone"_s << false;
        QTest::newRow("git: cancel a clone") << RepositoryKind::git << u"clone"_s << false;
        QTest::newRow("hg: quit during a pull") << RepositoryKind::mercurial << u"pull"_s << true;
        QTest::newRow("hg: quit during a refresh") << RepositoryKind::mercurial << u"status"_s << true;
        QTest::newRow("git: quit during a refresh") << RepositoryKind::git << u"status"_s << true;
    }

    void hungToolsAreStopped()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(QString, command);
        QFETCH(bool, quit);
        Fixture fixture(kind);
        QTemporaryDir marks;
        const QString hung = marks.filePath(u"hung"_s);
        const QString destination = marks.filePath(u"half made"_s);
        const bool gitPull = kind == RepositoryKind::git && command == u"pull";
        // A clone's destination is its last argument.
        const QByteArray start = gitPull ? "printf 'Receiving objects:  35%% (35/100)\\r' >&2; "
                                 : command == u"clone"
                                     ? "for last; do :; done; mkdir -p \"$last\"; echo partial > \"$last/partial\"; "
                                     : "";
        const QByteArray hang =
            start + "echo $$ > '" + hung.toUtf8() + "'; sleep 30; touch '" + marks.filePath(u"ended"_s).toUtf8() + "'";
        // Mercurial's status runs on a command server: it hangs in a hook there.
        std::optional<test::FakeTool> hangingTool;
        std::optional<test::ScopedEnvironmentVariable> override;
        if (kind == RepositoryKind::mercurial && command == u"status") {
            fixture.repository->write(u".hg/hgrc"_s, "[hooks]\npre-status = " + hang + "\n");
        } else {
            test::FakeToolBehaviour behaviour;
            behaviour.customBody = test::interceptedBody(kind, command.toUtf8(), hang + "; exit 0");
            hangingTool.emplace(behaviour);
            override.emplace(test::toolVariable(kind), hangingTool->path().toUtf8());
        }
        AppModel &model = fixture.model();
        if (command == u"push")
            model.push();
        else if (command == u"pull")
            model.pull();
        else if (command == u"clone")
            model.clone(u"/srv/somewhere"_s, destination, kind);
        else
            model.refresh();
        const auto hungProcess = [&hung] { return test::readFile(hung).trimmed().toLongLong(); };
        QTRY_VERIFY(hungProcess() != 0 && test::processIsRunning(hungProcess()));

        if (quit) {
            fixture.harness.stop();
        } else {
            if (gitPull)
                QTRY_COMPARE(model.activityState().activity(), u"Pulling and updating — Receiving objects: 35%"_s);
            QVERIFY(model.activityState().isCancellable());
            model.cancelOperation();
            QVERIFY(fixture.harness.settle());
            QCOMPARE(model.activityState().presentedError(), std::nullopt);
            QCOMPARE(model.activityState().activity(), QString());
            QCOMPARE(model.library().repositories().size(), 1);
        }
        QVERIFY(!test::processIsRunning(hungProcess()));
        QVERIFY(!QFile::exists(marks.filePath(u"ended"_s)));
        QVERIFY(!QFileInfo::exists(destination));
    }

    // The stored list without the repository that vanished, the last selected
    // one or else the first in the sidebar, refreshed at once. Removing one
    // asks first, selects the next repository and leaves the files alone.
    void storedRepositories()
    {
        const MercurialFixture first;
        const GitFixture second;
        second.write(u"changed.txt"_s, "x\n");
        QTemporaryDir gone;
        const QString goneRepository = gone.filePath(u"deleted"_s);
        ModelHarness harness;
        harness.modelSettings().setRepositories(
            {first.repository(), {goneRepository, RepositoryKind::git}, second.repository()});
        const QUuid folder(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11);
        harness.modelSettings().setSidebarLayout(
            {{RepositorySidebarItem::folder(folder), RepositorySidebarItem::repository(first.path())},
             {{folder, u"Work"_s, {second.path()}}}});
        harness.modelSettings().setLastSelectedRepository(goneRepository);

        AppModel &model = harness.start();
        QCOMPARE(model.library().repositories(), (QList<Repository>{first.repository(), second.repository()}));
        QCOMPARE(model.workspace().selectedRepository(), std::optional(second.repository()));
        QCOMPARE(model.activityState().activity(), u"Refreshing "_s + QFileInfo(second.path()).fileName());
        QVERIFY(harness.settle());
        QCOMPARE(shownPaths(model), QStringList{u"changed.txt"_s});
        QCOMPARE(model.settings().lastSelectedRepository(), std::optional(second.path()));

        harness.prompts.alertAnswers = {1, 0};
        model.confirmRemove(second.repository());
        QCOMPARE(harness.prompts.alerts.last().message,
                 u"Remove “"_s + QFileInfo(second.path()).fileName() + u"” from Tillery?"_s);
        QCOMPARE(model.library().repositories().size(), 2);
        model.confirmRemove(second.repository());
        QCOMPARE(model.library().repositories(), QList<Repository>{first.repository()});
        QCOMPARE(model.workspace().selectedRepository(), std::optional(first.repository()));
        QVERIFY(harness.settle());
        QVERIFY(QFileInfo(second.path() + u"/.git"_s).isDir());

        model.remove(first.repository());
        QCOMPARE(model.workspace().selectedRepository(), std::nullopt);
        QCOMPARE(harness.modelSettings().repositories(), QList<Repository>());
        QCOMPARE(harness.modelSettings().lastSelectedRepository(), std::nullopt);
    }

    // A refresh that arrives after the person moved on is dropped.
    void switchingWhileARefreshRuns()
    {
        const MercurialFixture slow;
        slow.write(u"from-slow.txt"_s, "x\n");
        const GitFixture fast;
        fast.write(u"from-fast.txt"_s, "x\n");
        QTemporaryDir gate;
        const test::FakeTool slowHg(test::running(test::interceptedBody(
            RepositoryKind::mercurial, "status", test::waitForFile(gate.filePath(u"go"_s)) + "; exec hg \"$@\"")));
        const test::ScopedEnvironmentVariable override("HG", slowHg.path().toUtf8());

        ModelHarness harness;
        AppModel &model = harness.start();
        model.adoptRepository(slow.repository());
        QVERIFY(model.workspace().isSwitchingRepository());
        model.adoptRepository(fast.repository());
        QTRY_COMPARE(shownPaths(model), QStringList{u"from-fast.txt"_s});
        test::writeFile(gate.filePath(u"go"_s), {});
        QVERIFY(harness.settle());
        QCOMPARE(shownPaths(model), QStringList{u"from-fast.txt"_s});
        QVERIFY(!model.workspace().isSwitchingRepository());
        model.select(slow.repository());
        QVERIFY(harness.settle());
        QCOMPARE(shownPaths(model), QStringList{u"from-slow.txt"_s});
    }

    // A folder inside a repository adds the repository, once; anything else is refused.
    void addingFolders()
    {
        const GitFixture repository;
        QDir().mkpath(repository.filePath(u"src/deep"_s));
        QTemporaryDir plain;
        ModelHarness harness;
        AppModel &model = harness.start();
        const QSignalSpy errors(&model.activityState(), &ActivityState::presentedErrorChanged);
        model.addRepositories({QUrl::fromLocalFile(plain.filePath(u"missing"_s)), QUrl(u"https://example.com/"_s),
                               QUrl::fromLocalFile(plain.path())});
        QVERIFY(harness.settle());
        QCOMPARE(errors.count(), 1);
        QCOMPARE(model.activityState().presentedError()->message,
                 plain.path() + u" is not a Mercurial or Git repository."_s);
        model.dismissError();

        for (int time = 0; time < 2; ++time) {
            harness.prompts.folderAnswers = {repository.filePath(u"src/deep"_s)};
            model.addRepository();
            QVERIFY(harness.settle());
        }
        QCOMPARE(model.library().repositories(), QList<Repository>{repository.repository()});
        QCOMPARE(model.workspace().selectedRepository(), std::optional(repository.repository()));
        QCOMPARE(harness.modelSettings().repositories(), QList<Repository>{repository.repository()});
    }

    // Folders go after the selected row, keep their order and name across a
    // restart, and give their repositories back when removed.
    void sidebarFolders()
    {
        const MercurialFixture a;
        const GitFixture b;
        ModelHarness harness;
        harness.modelSettings().setRepositories({a.repository(), b.repository()});
        AppModel &model = harness.start();
        QVERIFY(harness.settle());
        model.createFolder();
        QVERIFY(model.library().sidebarItems()[1].isFolder());
        const QUuid folder = model.library().sidebarItems()[1].folderId;
        QCOMPARE(model.library().selectedSidebarFolderID(), std::optional(folder));
        model.moveIntoFolder(b.path(), folder);
        harness.prompts.textAnswers = {u"Work"_s};
        model.renameFolder(folder);
        QCOMPARE(harness.prompts.texts.last().initialText, u"New Folder"_s);

        const RepositorySidebarLayout before = model.library().layout();
        AppModel &restarted = harness.start();
        QVERIFY(harness.settle());
        QCOMPARE(restarted.library().layout(), before);
        QCOMPARE(restarted.library().repositoryFolders()[0].name, u"Work"_s);

        harness.prompts.alertAnswers = {0};
        restarted.removeFolder(folder);
        QCOMPARE(restarted.library().sidebarItems(),
                 (QList<RepositorySidebarItem>{RepositorySidebarItem::repository(a.path()),
                                               RepositorySidebarItem::repository(b.path())}));
    }

    // Pictures are stored once, replace the one before, and survive a restart until removed. A wide
    // one is drawn whole and centred: 256 x 128 between transparent bands of 64.
    void repositoryIcons()
    {
        const GitFixture repository;
        QTemporaryDir pictures;
        const auto pictureFile = [&pictures](const QString &name, const QByteArray &bytes) {
            test::writeFile(pictures.filePath(name), bytes);
            return pictures.filePath(name);
        };
        ModelHarness harness;
        AppModel &model = harness.start();
        QList<bool> answers;
        const auto answer = [&answers](bool taken) { answers.append(taken); };
        model.setRepositoryIcon(repository.path(), pictureFile(u"not.png"_s, "not a picture"), answer);
        model.setRepositoryIcon(repository.path(), pictureFile(u"a.png"_s, test::pngBytes(32, 16, Qt::green)), answer);
        QVERIFY(harness.settle());
        const QString firstFile = harness.modelSettings().repositoryIconFiles().value(repository.path());
        model.setRepositoryIcon(repository.path(), pictureFile(u"b.png"_s, test::pngBytes(1024, 512, Qt::green)),
                                answer);
        QVERIFY(harness.settle());
        QCOMPARE(answers, (QList<bool>{false, true, true}));
        const QStringList files = QDir(harness.iconFolder()).entryList(QDir::Files);
        QCOMPARE(files.size(), 1);
        QVERIFY(files.first() != firstFile);

        AppModel &restarted = harness.start();
        QVERIFY(harness.settle());
        const QImage icon = restarted.icons().icons().value(repository.path());
        QCOMPARE(icon.size(), QSize(256, 256));
        for (const int y : {0, 63, 192, 255})
            QCOMPARE(qAlpha(icon.pixel(128, y)), 0);
        for (const int y : {64, 128, 191})
            QVERIFY(icon.pixelColor(0, y) == QColor(Qt::green) && icon.pixelColor(255, y) == QColor(Qt::green));
        restarted.removeRepositoryIcon(repository.path());
        QCOMPARE(QDir(harness.iconFolder()).entryList(QDir::Files), QStringList());
        QVERIFY(harness.modelSettings().repositoryIconFiles().isEmpty());
    }
};

QTEST_GUILESS_MAIN(ModelActionsTest)
#include "tst_model_actions.moc"
