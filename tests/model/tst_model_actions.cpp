#include "Checks.h"
#include "FakeTool.h"
#include "ModelHarness.h"
#include "RecordPrinting.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::GitFixture;
using test::MercurialFixture;
using test::ModelHarness;
using test::readFile;

Q_DECLARE_METATYPE(tillery::RepositoryKind)

namespace {

WorkingFile fileNamed(const AppModel &model, const QString &path)
{
    for (const WorkingFile &file : model.workspace().snapshot().files) {
        if (file.path == path)
            return file;
    }
    qFatal("no working file %s", qPrintable(path));
}

QStringList trashedNames()
{
    return QDir(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/Trash/files"_s)
        .entryList(QDir::Files);
}

} // namespace

class ModelActionsTest : public QObject {
    Q_OBJECT

private:
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
            harness.start().adoptRepository(Repository{repository->path(), kind});
        }
        AppModel &model() { return harness.model(); }
        bool refreshed()
        {
            model().refresh();
            return harness.settle();
        }
    };

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

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
        QCOMPARE(model.workspace().commitDescription(), QString());
        QCOMPARE(model.workspace().snapshot().files, (QList<WorkingFile>{{u"left.txt"_s, FileState::untracked}}));
        QCOMPARE(model.workspace().snapshot().history.first().description, u"Add the new file\n\nWith details."_s);
    }

    void failedCommitKeepsTheTexts()
    {
        Fixture fixture(RepositoryKind::mercurial);
        fixture.repository->write(u"a.txt"_s, "changed\n");
        QVERIFY(fixture.refreshed());
        AppModel &model = fixture.model();
        model.setSelectedFilePaths({u"a.txt"_s});
        model.setCommitSummary(u"Summary"_s);
        model.setCommitDescription(u"Description"_s);
        const test::FakeTool brokenHg({{}, "abort: no space left\n", 255, 0, {}});
        const test::ScopedEnvironmentVariable override("HG", brokenHg.path().toUtf8());
        model.commit();
        QVERIFY(fixture.harness.settle());
        QCOMPARE(model.activityState().presentedError()->title, u"Committing changes"_s);
        QCOMPARE(model.workspace().commitSummary(), u"Summary"_s);
        QCOMPARE(model.workspace().commitDescription(), u"Description"_s);
    }

    // The confirmation's texts, and untracked files in the Trash rather than gone.
    void discardSelected_data()
    {
        QTest::addColumn<QStringList>("selected");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("informative");
        QTest::newRow("one untracked") << QStringList{u"new.txt"_s} << u"Discard changes to “new.txt”?"_s
                                       << u"The untracked file will be moved to the Trash."_s;
        QTest::newRow("two untracked") << QStringList{u"new.txt"_s, u"other.txt"_s}
                                       << u"Discard changes to 2 selected files?"_s
                                       << u"The untracked files will be moved to the Trash."_s;
        QTest::newRow("one tracked") << QStringList{u"a.txt"_s} << u"Discard changes to “a.txt”?"_s
                                     << u"The file will be restored to its last committed state."_s;
        QTest::newRow("two tracked") << QStringList{u"a.txt"_s, u"b.txt"_s} << u"Discard changes to 2 selected files?"_s
                                     << u"The files will be restored to their last committed state."_s;
        QTest::newRow("two tracked, one untracked")
            << QStringList{u"a.txt"_s, u"b.txt"_s, u"new.txt"_s} << u"Discard changes to 3 selected files?"_s
            << u"Tracked files will be restored to their last committed state. Untracked files will be moved to "
               "the Trash."_s;
    }

    void discardSelected()
    {
        QFETCH(QStringList, selected);
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
            selection.insert(fileNamed(model, path));
        model.selectChangeFiles(selection);
        const QStringList trashedBefore = trashedNames();

        fixture.harness.prompts.alertAnswers = {0};
        model.discardSelected();
        QCOMPARE(fixture.harness.prompts.alerts.last().message, message);
        QCOMPARE(fixture.harness.prompts.alerts.last().informativeText, informative);
        QCOMPARE(fixture.harness.prompts.alerts.last().buttons, (QStringList{u"Discard"_s, u"Cancel"_s}));
        QVERIFY(fixture.harness.settle());
        QCOMPARE(model.activityState().presentedError(), std::nullopt);
        if (selected.contains(u"a.txt"_s))
            QCOMPARE(readFile(fixture.repository->filePath(u"a.txt"_s)), QByteArray("a\n"));
        for (const QString &path : selected) {
            if (path.startsWith(u"new"_s) || path.startsWith(u"other"_s)) {
                QVERIFY(!QFile::exists(fixture.repository->filePath(path)));
                QVERIFY(fixture.harness.desktop.trashed.contains(fixture.repository->filePath(path)));
            }
        }
        QCOMPARE(trashedNames().size() - trashedBefore.size(),
                 selected.filter(QRegularExpression(u"^(new|other)"_s)).size());
    }

    void trashThatCannotTakeAFileLeavesIt()
    {
        Fixture fixture(RepositoryKind::mercurial);
        fixture.repository->write(u"new.txt"_s, "precious\n");
        QVERIFY(fixture.refreshed());
        AppModel &model = fixture.model();
        model.selectChangeFiles({fileNamed(model, u"new.txt"_s)});
        fixture.harness.desktop.trashRefusal = u"new.txt could not be moved to the Trash: no Trash on this disk"_s;
        fixture.harness.prompts.alertAnswers = {0};
        model.discardSelected();
        QVERIFY(fixture.harness.settle());
        QCOMPARE(model.activityState().presentedError()->title, u"Discarding changes"_s);
        QCOMPARE(model.activityState().presentedError()->message,
                 u"new.txt could not be moved to the Trash: no Trash on this disk"_s);
        QCOMPARE(readFile(fixture.repository->filePath(u"new.txt"_s)), QByteArray("precious\n"));
    }

    void cancelledConfirmationsRunNothing()
    {
        Fixture fixture(RepositoryKind::git);
        fixture.repository->write(u"a.txt"_s, "changed\n");
        fixture.repository->write(u"new.txt"_s, "new\n");
        QVERIFY(fixture.refreshed());
        AppModel &model = fixture.model();
        model.selectChangeFiles({fileNamed(model, u"a.txt"_s), fileNamed(model, u"new.txt"_s)});
        const QSignalSpy busy(&model.activityState(), &ActivityState::isBusyChanged);

        fixture.harness.prompts.alertAnswers = {1, std::nullopt, 1, 2};
        model.discardSelected();
        model.discardAll();
        QCOMPARE(fixture.harness.prompts.alerts[1].message, u"Discard All Changes?"_s);
        QCOMPARE(fixture.harness.prompts.alerts[1].informativeText,
                 u"All tracked working-copy changes will be permanently reverted. Untracked files will be left "
                 "untouched."_s);
        QCOMPARE(fixture.harness.prompts.alerts[1].buttons, (QStringList{u"Discard Changes"_s, u"Cancel"_s}));
        model.deleteBookmark(model.workspace().snapshot().bookmarks.first());
        QCOMPARE(fixture.harness.prompts.alerts[2].message, u"Delete Branch?"_s);
        QCOMPARE(fixture.harness.prompts.alerts[2].informativeText,
                 u"The branch “main” will be deleted. Its commits will remain in the repository."_s);
        model.createRepository();
        QCOMPARE(fixture.harness.prompts.alerts[3].informativeText,
                 u"Choose the version control system for the new repository."_s);
        QCOMPARE(busy.count(), 0);
        QCOMPARE(readFile(fixture.repository->filePath(u"a.txt"_s)), QByteArray("changed\n"));
        QCOMPARE(readFile(fixture.repository->filePath(u"new.txt"_s)), QByteArray("new\n"));
        QVERIFY(fixture.harness.prompts.folders.isEmpty());
    }

    void stashes_data() { test::addKindColumn(); }

    void stashes()
    {
        QFETCH(RepositoryKind, kind);
        Fixture fixture(kind);
        AppModel &model = fixture.model();
        QVERIFY(fixture.harness.settle());
        const QSignalSpy busy(&model.activityState(), &ActivityState::isBusyChanged);
        model.stashAll();
        QCOMPARE(busy.count(), 0);

        fixture.repository->write(u"a.txt"_s, "changed\n");
        fixture.repository->write(u"new.txt"_s, "new\n");
        QVERIFY(fixture.refreshed());
        model.stashAll();
        QCOMPARE(model.activityState().activity(), u"Stashing all changes"_s);
        QVERIFY(fixture.harness.settle());
        QCOMPARE(model.activityState().presentedError(), std::nullopt);
        QCOMPARE(readFile(fixture.repository->filePath(u"a.txt"_s)), QByteArray("a\n"));
        QCOMPARE(model.workspace().snapshot().files.size(), kind == RepositoryKind::git ? 0 : 1);
    }

    void branchesThroughTheModel_data() { test::addKindColumn(); }

    void branchesThroughTheModel()
    {
        QFETCH(RepositoryKind, kind);
        Fixture fixture(kind);
        AppModel &model = fixture.model();
        QVERIFY(fixture.harness.settle());
        if (kind == RepositoryKind::mercurial) {
            model.createBookmark(u"main"_s);
            QVERIFY(fixture.harness.settle());
        }

        // With one branch there is nothing to choose.
        model.merge();
        QCOMPARE(fixture.harness.prompts.alerts.last().message, u"Merge into Current Branch"_s);
        QCOMPARE(fixture.harness.prompts.alerts.last().informativeText,
                 u"There are no other branches to choose from."_s);
        QCOMPARE(fixture.harness.prompts.alerts.last().buttons, QStringList{u"OK"_s});
        QVERIFY(fixture.harness.prompts.choices.isEmpty());

        model.createBookmark(u"topic"_s);
        QCOMPARE(model.activityState().activity(), u"Creating branch"_s);
        QVERIFY(fixture.harness.settle());
        QCOMPARE(model.workspace().snapshot().activeBookmark, std::optional(u"topic"_s));

        // An identical branch has no differences.
        fixture.harness.prompts.choiceAnswers = {0};
        model.compare();
        QCOMPARE(fixture.harness.prompts.choices.last().title, u"Compare to Branch"_s);
        QCOMPARE(fixture.harness.prompts.choices.last().informativeText,
                 kind == RepositoryKind::git ? u"Choose a Git branch."_s : u"Choose a Mercurial bookmark."_s);
        QCOMPARE(fixture.harness.prompts.choices.last().choices, QStringList{u"main"_s});
        QCOMPARE(model.activityState().activity(), u"Comparing to main"_s);
        QVERIFY(fixture.harness.settle());
        QCOMPARE(model.diffSelection().diff().text, u"There are no differences from main."_s);

        fixture.repository->write(u"t.txt"_s, "topic\n");
        fixture.repository->commitAll(u"topic work"_s);
        QVERIFY(fixture.refreshed());
        Bookmark main;
        for (const Bookmark &bookmark : model.workspace().snapshot().bookmarks) {
            if (bookmark.name == u"main")
                main = bookmark;
        }
        model.switchTo(main, u"Switching to main"_s);
        QCOMPARE(model.activityState().activity(), u"Switching to main"_s);
        QVERIFY(fixture.harness.settle());
        QCOMPARE(model.workspace().snapshot().activeBookmark, std::optional(u"main"_s));
        fixture.repository->write(u"m.txt"_s, "main\n");
        fixture.repository->commitAll(u"main work"_s);
        QVERIFY(fixture.refreshed());
        fixture.harness.prompts.choiceAnswers = {0};
        model.merge();
        QCOMPARE(model.activityState().activity(), u"Merging topic"_s);
        QVERIFY(fixture.harness.settle());
        QCOMPARE(model.activityState().presentedError(), std::nullopt);
        QVERIFY(QFile::exists(fixture.repository->filePath(u"t.txt"_s)));

        fixture.harness.prompts.textAnswers = {u"renamed"_s};
        for (const Bookmark &bookmark : model.workspace().snapshot().bookmarks) {
            if (bookmark.name == u"topic")
                model.renameBookmark(bookmark);
        }
        QVERIFY(fixture.harness.settle());
        fixture.harness.prompts.alertAnswers = {0};
        for (const Bookmark &bookmark : model.workspace().snapshot().bookmarks) {
            if (bookmark.name == u"renamed")
                model.deleteBookmark(bookmark);
        }
        QVERIFY(fixture.harness.settle());
        QCOMPARE(model.workspace().snapshot().bookmarks.size(), 1);
        QCOMPARE(model.activityState().presentedError(), std::nullopt);
    }

    void remoteWording_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<QString>("fetching");
        QTest::addColumn<QString>("pushing");
        QTest::newRow("mercurial") << RepositoryKind::mercurial << u"Fetching changesets"_s << u"Pushing changesets"_s;
        QTest::newRow("git") << RepositoryKind::git << u"Fetching commits"_s << u"Pushing commits"_s;
    }

    // Fetch, pull and push against a local clone's origin, and clone itself.
    void remoteWording()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(QString, fetching);
        QFETCH(QString, pushing);
        const std::unique_ptr<test::RepositoryFixture> origin = test::makeFixture(kind);
        origin->write(u"a.txt"_s, "a\n");
        origin->commitAll(u"first"_s);
        if (kind == RepositoryKind::git)
            test::runTool(u"git"_s, {u"config"_s, u"receive.denyCurrentBranch"_s, u"updateInstead"_s}, origin->path());
        QTemporaryDir folder;
        const QString clonePath = folder.filePath(u"copy"_s);
        ModelHarness harness;
        AppModel &model = harness.start();
        model.clone(origin->path(), clonePath, kind);
        QVERIFY(model.activityState().activity().startsWith(u"Cloning repository"_s));
        QVERIFY(model.activityState().isCancellable());
        QVERIFY(harness.settle());
        QCOMPARE(model.activityState().presentedError(), std::nullopt);
        QVERIFY(!model.activityState().isCancellable());
        const Repository cloned{clonePath, kind};
        QCOMPARE(model.workspace().selectedRepository(), std::optional(cloned));
        QCOMPARE(model.library().repositories(), QList<Repository>{cloned});

        origin->write(u"b.txt"_s, "b\n");
        origin->commitAll(u"second"_s);
        model.fetch();
        QCOMPARE(model.activityState().activity(), fetching);
        QVERIFY(harness.settle());
        QCOMPARE(model.workspace().snapshot().history.size(), 2);
        origin->write(u"b2.txt"_s, "b2\n");
        origin->commitAll(u"third"_s);
        model.pull();
        QCOMPARE(model.activityState().activity(), u"Pulling and updating"_s);
        QVERIFY(harness.settle());
        QVERIFY(QFile::exists(clonePath + u"/b.txt"_s) && QFile::exists(clonePath + u"/b2.txt"_s));

        QFile file(clonePath + u"/c.txt"_s);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("c\n");
        file.close();
        model.refresh();
        QVERIFY(harness.settle());
        model.setSelectedFilePaths({u"c.txt"_s});
        model.setCommitSummary(u"from the clone"_s);
        model.commit();
        QVERIFY(harness.settle());
        model.push();
        QCOMPARE(model.activityState().activity(), pushing);
        QVERIFY(harness.settle());
        QCOMPARE(model.activityState().presentedError(), std::nullopt);
        QCOMPARE(versionControl(kind).loadSnapshot(origin->path()).history.first().summary, u"from the clone"_s);
    }

    void progressShowsInTheActivity()
    {
        Fixture fixture(RepositoryKind::git);
        QVERIFY(fixture.harness.settle());
        AppModel &model = fixture.model();
        test::FakeToolBehaviour behaviour;
        behaviour.customBody = "[ \"$2\" = fetch ] || exec git \"$@\"\n"
                               "for n in 10 35 60 85; do printf 'Receiving objects:  %s%% (%s/100)\\r' $n $n >&2; "
                               "sleep 0.4; done; printf 'Receiving objects: 100%% (100/100), done.\\n' >&2";
        const test::FakeTool slowGit(behaviour);
        const test::ScopedEnvironmentVariable override("GIT", slowGit.path().toUtf8());
        const QSignalSpy activity(&model.activityState(), &ActivityState::activityChanged);
        model.fetch();
        QTRY_VERIFY_WITH_TIMEOUT(
            model.activityState().activity().startsWith(u"Fetching commits — Receiving objects: "_s), 5000);
        QVERIFY(fixture.harness.settle());
        QStringList seen;
        for (const QList<QVariant> &change : activity)
            seen.append(change.first().toString());
        QVERIFY2(seen.size() >= 3, qPrintable(seen.join(u" | "_s)));
        QVERIFY2(seen.size() <= 8, "progress is published a few times a second at most");
        QCOMPARE(seen.last(), QString());
    }

    void cancellingASlowClone_data() { test::addKindColumn(); }

    void cancellingASlowClone()
    {
        QFETCH(RepositoryKind, kind);
        test::FakeToolBehaviour behaviour;
        behaviour.customBody =
            "for last; do :; done; mkdir -p \"$last\"; echo partial > \"$last/partial\"; exec sleep 60";
        const test::FakeTool slowTool(behaviour);
        const test::ScopedEnvironmentVariable override(kind == RepositoryKind::git ? "GIT" : "HG",
                                                       slowTool.path().toUtf8());
        QTemporaryDir folder;
        const QString destination = folder.filePath(u"half made"_s);
        ModelHarness harness;
        AppModel &model = harness.start();
        model.clone(u"/srv/somewhere"_s, destination, kind);
        QTRY_VERIFY(QFile::exists(destination + u"/partial"_s));
        model.cancelOperation();
        QVERIFY(harness.settle());
        QVERIFY(!QFileInfo::exists(destination));
        QVERIFY(!test::processIsRunning(slowTool.processId()));
        QCOMPARE(model.activityState().presentedError(), std::nullopt);
        QVERIFY(!model.activityState().isBusy());
        QVERIFY(model.library().repositories().isEmpty());
    }

    // A tool that hangs never holds Tillery: every remote command can be
    // cancelled from the activity row, and quitting ends whatever still runs.
    void hungToolsAreStopped_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<QString>("command"); // the tool command that hangs
        QTest::addColumn<bool>("quit"); // quit instead of cancelling
        for (const RepositoryKind kind : {RepositoryKind::mercurial, RepositoryKind::git}) {
            const char *name = kind == RepositoryKind::mercurial ? "hg" : "git";
            QTest::addRow("%s: cancel a push", name) << kind << u"push"_s << false;
            QTest::addRow("%s: cancel a pull", name) << kind << u"pull"_s << false;
            QTest::addRow("%s: quit during a push", name) << kind << u"push"_s << true;
            QTest::addRow("%s: quit during a refresh", name) << kind << u"status"_s << true;
        }
        QTest::newRow("git: cancel a fetch") << RepositoryKind::git << u"fetch"_s << false;
    }

    void hungToolsAreStopped()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(QString, command);
        QFETCH(bool, quit);
        Fixture fixture(kind);
        QVERIFY(fixture.harness.settle());
        const bool hg = kind == RepositoryKind::mercurial;
        test::FakeToolBehaviour behaviour;
        behaviour.customBody = "case \" $* \" in *' " + command.toUtf8() + " '*) exec sleep 60 ;; esac\nexec "
                               + (hg ? "hg" : "git") + " \"$@\"";
        const test::FakeTool hangingTool(behaviour);
        const test::ScopedEnvironmentVariable override(hg ? "HG" : "GIT", hangingTool.path().toUtf8());
        AppModel &model = fixture.model();
        if (command == u"push")
            model.push();
        else if (command == u"pull")
            model.pull();
        else if (command == u"fetch")
            model.fetch();
        else
            model.refresh();
        QTRY_VERIFY(hangingTool.processId() != 0 && test::processIsRunning(hangingTool.processId()));
        QTRY_VERIFY(model.activityState().isBusy() || command == u"status");

        QElapsedTimer sinceStop;
        sinceStop.start();
        if (quit) {
            fixture.harness.stop();
        } else {
            QVERIFY(model.activityState().isCancellable());
            model.cancelOperation();
            QVERIFY(fixture.harness.settle());
            QCOMPARE(model.activityState().presentedError(), std::nullopt);
        }
        QVERIFY2(sinceStop.elapsed() < 3000, qPrintable(QString::number(sinceStop.elapsed())));
        QVERIFY(!test::processIsRunning(hangingTool.processId()));
    }

    void createsRepositories()
    {
        QTemporaryDir folder;
        ModelHarness harness;
        AppModel &model = harness.start();
        harness.prompts.alertAnswers = {1};
        harness.prompts.folderAnswers = {folder.filePath(u"fresh/project"_s)};
        model.createRepository();
        QCOMPARE(harness.prompts.folders.last().confirmButton, u"Create Repository"_s);
        QCOMPARE(model.activityState().activity(), u"Creating repository"_s);
        QVERIFY(harness.settle());
        const Repository created{folder.filePath(u"fresh/project"_s), RepositoryKind::git};
        QCOMPARE(model.workspace().selectedRepository(), std::optional(created));
    }
};

QTEST_GUILESS_MAIN(ModelActionsTest)
#include "tst_model_actions.moc"
