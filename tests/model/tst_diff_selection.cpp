#include "FakeTool.h"
#include "ModelHarness.h"
#include "Pictures.h"
#include "RecordPrinting.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::GitFixture;
using test::MercurialFixture;
using test::ModelHarness;

namespace {

WorkingFile fileNamed(const AppModel &model, const QString &path)
{
    for (const WorkingFile &file : model.workspace().snapshot().files) {
        if (file.path == path)
            return file;
    }
    qFatal("no working file %s", qPrintable(path));
}

// A Mercurial repository with three modified files, added to a started model.
struct ThreeChanges {
    MercurialFixture repository;
    ModelHarness harness;

    ThreeChanges()
    {
        for (const char *name : {"one.txt", "two.txt", "three.txt"})
            repository.write(QString::fromLatin1(name), QByteArray(name) + " before\n");
        repository.commitAll(u"base"_s);
        for (const char *name : {"one.txt", "two.txt", "three.txt"})
            repository.write(QString::fromLatin1(name), QByteArray(name) + " after\n");
        harness.start().adoptRepository(Repository{repository.path(), RepositoryKind::mercurial});
    }

    AppModel &model() { return harness.model(); }
};

} // namespace

class DiffSelectionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    // Clicking through files fast shows the last one only, once, and no indicator.
    void quickSelectionsShowTheLastFile()
    {
        ThreeChanges fixture;
        AppModel &model = fixture.model();
        QVERIFY(fixture.harness.settle());
        const QSignalSpy diffs(&model.diffSelection(), &DiffSelection::diffChanged);
        const QSignalSpy indicator(&model.diffSelection(), &DiffSelection::showDiffLoadingIndicatorChanged);
        model.selectFile(fileNamed(model, u"one.txt"_s));
        model.selectFile(fileNamed(model, u"two.txt"_s));
        model.selectFile(fileNamed(model, u"three.txt"_s));
        QVERIFY(model.diffSelection().isLoadingDiff());
        QVERIFY(fixture.harness.settle());
        QCOMPARE(diffs.count(), 1);
        QVERIFY(model.diffSelection().diff().text.contains(u"+three.txt after"_s));
        QCOMPARE(indicator.count(), 0);
        QVERIFY(!model.diffSelection().isLoadingDiff());
        QCOMPARE(model.diffSelection().selectedFile(), std::optional(fileNamed(model, u"three.txt"_s)));
    }

    // A burst of list-selection changes in one turn of the event loop loads once.
    void selectionBurstLoadsOnce()
    {
        ThreeChanges fixture;
        AppModel &model = fixture.model();
        QVERIFY(fixture.harness.settle());
        const QSignalSpy diffs(&model.diffSelection(), &DiffSelection::diffChanged);
        model.selectChangeFiles({fileNamed(model, u"one.txt"_s)});
        model.selectChangeFiles({fileNamed(model, u"one.txt"_s), fileNamed(model, u"two.txt"_s)});
        model.selectChangeFiles({fileNamed(model, u"two.txt"_s), fileNamed(model, u"three.txt"_s)});
        QVERIFY(fixture.harness.settle());
        QCOMPARE(diffs.count(), 1);
        // The first of the list's order among the selection.
        QCOMPARE(model.diffSelection().selectedFile(), std::optional(fileNamed(model, u"three.txt"_s)));

        model.selectChangeFiles({});
        QCOMPARE(model.diffSelection().selectedFile(), std::nullopt);
        QCOMPARE(model.diffSelection().diff(), emptyDiffDocument());
        QVERIFY(!model.diffSelection().isLoadingDiff());
    }

    // A diff that takes two seconds shows the indicator from half a second.
    void slowDiffShowsTheIndicator()
    {
        ThreeChanges fixture;
        AppModel &model = fixture.model();
        QVERIFY(fixture.harness.settle());
        test::FakeToolBehaviour behaviour;
        behaviour.customBody = "sleep 2; printf '@@ -1 +1 @@\\n-a\\n+b\\n'";
        const test::FakeTool slowHg(behaviour);
        const test::ScopedEnvironmentVariable override("HG", slowHg.path().toUtf8());

        QElapsedTimer sinceSelection;
        sinceSelection.start();
        model.selectFile(fileNamed(model, u"one.txt"_s));
        QVERIFY(!model.diffSelection().showDiffLoadingIndicator());
        QTRY_VERIFY_WITH_TIMEOUT(model.diffSelection().showDiffLoadingIndicator(), 5000);
        const qint64 shownAfter = sinceSelection.elapsed();
        QVERIFY2(shownAfter >= 450, qPrintable(u"shown after %1 ms"_s.arg(shownAfter)));
        QVERIFY(model.diffSelection().isLoadingDiff());
        QTRY_VERIFY_WITH_TIMEOUT(!model.diffSelection().isLoadingDiff(), 10000);
        QVERIFY(!model.diffSelection().showDiffLoadingIndicator());
        QVERIFY2(sinceSelection.elapsed() >= 2000, "the diff arrived with the tool's output");
        QCOMPARE(model.diffSelection().diff().unifiedLines.size(), 3);
    }

    // Moving on from a file whose diff is still loading ends its tool run.
    void newSelectionEndsTheOldLoad()
    {
        ThreeChanges fixture;
        AppModel &model = fixture.model();
        fixture.repository.write(u"new.txt"_s, "new\n");
        model.refresh();
        QVERIFY(fixture.harness.settle());
        const test::FakeTool stuckHg({{}, {}, 0, 60, {}});
        const test::ScopedEnvironmentVariable override("HG", stuckHg.path().toUtf8());

        model.selectFile(fileNamed(model, u"one.txt"_s));
        QTRY_VERIFY(stuckHg.processId() != 0 && test::processIsRunning(stuckHg.processId()));
        model.selectFile(fileNamed(model, u"new.txt"_s));
        QTRY_VERIFY(!test::processIsRunning(stuckHg.processId()));
        QVERIFY(fixture.harness.settle());
        QVERIFY(model.diffSelection().diff().text.endsWith(u"+++ b/new.txt\n+new\n+"_s));
        QCOMPARE(model.activityState().presentedError(), std::nullopt);
    }

    // Opening History shows the newest changeset, focus or not; going back to
    // Changes ends the run of a changeset file's diff.
    void historyOpensOnTheNewestAndLeavingEndsItsLoad()
    {
        ThreeChanges fixture;
        fixture.repository.commitAll(u"three"_s);
        AppModel &model = fixture.model();
        QVERIFY(fixture.harness.settle());
        model.setTab(WorkspaceTab::history);
        QVERIFY(fixture.harness.settle());
        QCOMPARE(model.diffSelection().selectedChangeset()->summary, u"three"_s);
        QVERIFY(!model.diffSelection().changesetFiles().isEmpty());
        const test::FakeTool stuckHg({{}, {}, 0, 60, {}});
        const test::ScopedEnvironmentVariable override("HG", stuckHg.path().toUtf8());

        model.selectChangesetFile(WorkingFile{u"two.txt"_s, FileState::modified});
        QTRY_VERIFY(stuckHg.processId() != 0 && test::processIsRunning(stuckHg.processId()));
        model.setTab(WorkspaceTab::changes);
        QTRY_VERIFY(!test::processIsRunning(stuckHg.processId()));
        QCOMPARE(model.activityState().presentedError(), std::nullopt);
    }

    void failedLoadIsPresented()
    {
        ThreeChanges fixture;
        AppModel &model = fixture.model();
        QVERIFY(fixture.harness.settle());
        const test::FakeTool brokenHg({{}, "abort: broken\n", 255, 0, {}});
        const test::ScopedEnvironmentVariable override("HG", brokenHg.path().toUtf8());
        model.selectFile(fileNamed(model, u"one.txt"_s));
        QVERIFY(fixture.harness.settle());
        QCOMPARE(model.activityState().presentedError()->title, u"Loading diff"_s);
        QCOMPARE(model.activityState().presentedError()->message,
                 u"hg diff --git -- one.txt exited with status 255.\n\nabort: broken"_s);
        QVERIFY(!model.diffSelection().isLoadingDiff());
    }

    void selectionSurvivesRefreshAndRestart()
    {
        ThreeChanges fixture;
        AppModel &model = fixture.model();
        QVERIFY(fixture.harness.settle());
        model.selectFile(fileNamed(model, u"two.txt"_s));
        model.setSelectedFilePaths({u"one.txt"_s, u"two.txt"_s});
        QVERIFY(fixture.harness.settle());

        // A refresh after one.txt was committed keeps what still exists.
        fixture.repository.hg({u"commit"_s, u"-m"_s, u"one"_s, u"one.txt"_s});
        model.refresh();
        QVERIFY(fixture.harness.settle());
        QCOMPARE(model.diffSelection().selectedFilePaths(), QSet<QString>{u"two.txt"_s});
        QCOMPARE(model.diffSelection().selectedFile(), std::optional(fileNamed(model, u"two.txt"_s)));
        QVERIFY(model.diffSelection().diff().text.contains(u"+two.txt after"_s));

        AppModel &restarted = fixture.harness.start();
        QVERIFY(fixture.harness.settle());
        QCOMPARE(restarted.diffSelection().selectedFile(), std::optional(fileNamed(restarted, u"two.txt"_s)));
        // The restored diff's row is the selected one.
        QCOMPARE(restarted.diffSelection().selectedChangeFiles(),
                 QSet<WorkingFile>{fileNamed(restarted, u"two.txt"_s)});
        QVERIFY(restarted.diffSelection().diff().text.contains(u"+two.txt after"_s));

        // A refresh that removes the focused file clears the diff.
        fixture.repository.hg({u"revert"_s, u"--no-backup"_s, u"two.txt"_s});
        restarted.refresh();
        QVERIFY(fixture.harness.settle());
        QCOMPARE(restarted.diffSelection().selectedFile(), std::nullopt);
        QCOMPARE(restarted.diffSelection().diff(), emptyDiffDocument());
    }

    // Pictures show as pictures (a deleted one as it was, said so), binary
    // files as such, on both pages and for both kinds.
    void picturesAndBinaryFiles_data() { test::addKindColumn(); }

    void picturesAndBinaryFiles()
    {
        QFETCH(RepositoryKind, kind);
        const auto repository = test::makeFixture(kind);
        repository->write(u"kept.png"_s, test::pngBytes(40, 20, Qt::magenta));
        repository->write(u"deleted.png"_s, test::pngBytes(30, 10, Qt::magenta));
        repository->write(u"broken.png"_s, "not a picture");
        repository->write(u"data.bin"_s, QByteArray("\x00\x01\x02binary", 9));
        repository->commitAll(u"pictures"_s);
        repository->write(u"kept.png"_s, test::pngBytes(40, 20, Qt::magenta) + "trailing");
        repository->write(u"broken.png"_s, "still not a picture");
        repository->write(u"data.bin"_s, QByteArray("\x00\x01\x03binary", 9));
        repository->removeFromDisk(u"deleted.png"_s);
        ModelHarness harness;
        AppModel &model = harness.start();
        model.adoptRepository(Repository{repository->path(), kind});
        QVERIFY(harness.settle());
        const DiffSelection &selection = model.diffSelection();
        const auto show = [&](const WorkingFile &file, bool inHistory) {
            if (inHistory)
                model.selectChangesetFile(file);
            else
                model.selectFile(fileNamed(model, file.path));
            return harness.settle();
        };

        QVERIFY(show({u"kept.png"_s, FileState::modified}, false));
        QCOMPARE(selection.previewImage().size(), QSize(40, 20));
        QCOMPARE(selection.previewCaption(), QString());
        QCOMPARE(selection.diff(), emptyDiffDocument());
        QVERIFY(show({u"deleted.png"_s, FileState::removed}, false));
        QCOMPARE(selection.previewImage().size(), QSize(30, 10));
        QCOMPARE(selection.previewCaption(), u"Deleted"_s);
        QVERIFY(show({u"broken.png"_s, FileState::modified}, false));
        QCOMPARE(selection.diff().text, u"This image file could not be previewed."_s);
        QVERIFY(show({u"data.bin"_s, FileState::modified}, false));
        QCOMPARE(selection.diff().text, u"Binary file"_s);

        repository->commitAll(u"changes"_s);
        model.refresh();
        QVERIFY(harness.settle());
        model.setTab(WorkspaceTab::history);
        model.selectChangeset(model.workspace().snapshot().history.first());
        QVERIFY(harness.settle());
        QCOMPARE(selection.changesetFiles().size(), 4);
        QVERIFY(show({u"deleted.png"_s, FileState::removed}, true));
        QCOMPARE(selection.previewImage().size(), QSize(30, 10));
        QCOMPARE(selection.previewCaption(), u"Deleted"_s);
        QVERIFY(show({u"data.bin"_s, FileState::modified}, true));
        QCOMPARE(selection.diff().text, u"Binary file"_s);
        QVERIFY(show({u"kept.png"_s, FileState::modified}, true));
        QCOMPARE(selection.previewImage().size(), QSize(40, 20));
        QCOMPARE(selection.previewCaption(), QString());
    }

    void changesets()
    {
        const GitFixture repository;
        repository.write(u"a.txt"_s, "a\n");
        repository.write(u"b.txt"_s, "b\n");
        repository.commitAll(u"files"_s);
        repository.git({u"commit"_s, u"--quiet"_s, u"--allow-empty"_s, u"-m"_s, u"nothing"_s});
        ModelHarness harness;
        AppModel &model = harness.start();
        model.adoptRepository(Repository{repository.path(), RepositoryKind::git});
        QVERIFY(harness.settle());
        model.setTab(WorkspaceTab::history);
        const QList<Changeset> history = model.workspace().snapshot().history;

        model.selectChangeset(history[0]);
        QVERIFY(harness.settle());
        QCOMPARE(model.diffSelection().changesetFiles(), QList<WorkingFile>());
        QCOMPARE(model.diffSelection().diff().text, u"This commit has no changed files."_s);

        model.selectChangeset(history[1]);
        QVERIFY(harness.settle());
        QCOMPARE(model.diffSelection().selectedChangesetFile(),
                 std::optional(WorkingFile{u"a.txt"_s, FileState::added}));
        QVERIFY(model.diffSelection().diff().text.contains(u"+a"_s));
        model.selectChangesetFile(WorkingFile{u"b.txt"_s, FileState::added});
        QVERIFY(harness.settle());
        QVERIFY(model.diffSelection().diff().text.contains(u"+b"_s));
        QCOMPARE(model.activityState().activity(), QString());

        // A refresh keeps the changeset and its file.
        model.refresh();
        QVERIFY(harness.settle());
        QCOMPARE(model.diffSelection().selectedChangeset()->node, history[1].node);
        QCOMPARE(model.diffSelection().selectedChangesetFile(),
                 std::optional(WorkingFile{u"b.txt"_s, FileState::added}));
    }
};

QTEST_GUILESS_MAIN(DiffSelectionTest)
#include "tst_diff_selection.moc"
