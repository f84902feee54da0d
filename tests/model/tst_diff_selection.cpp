#include "Checks.h"
#include "FakeTool.h"
#include "ModelHarness.h"
#include "Pictures.h"
#include "RecordPrinting.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::ModelHarness;
using test::workingFile;

namespace {

// A repository with three modified files, added to a started model.
struct ThreeChanges {
    std::unique_ptr<test::RepositoryFixture> repository;
    ModelHarness harness;

    explicit ThreeChanges(RepositoryKind kind = RepositoryKind::mercurial)
        : repository(test::makeFixture(kind))
    {
        for (const char *name : {"one.txt", "two.txt", "three.txt"})
            repository->write(QString::fromLatin1(name), QByteArray(name) + " before\n");
        repository->commitAll(u"base"_s);
        for (const char *name : {"one.txt", "two.txt", "three.txt"})
            repository->write(QString::fromLatin1(name), QByteArray(name) + " after\n");
        harness.start();
        harness.adopt(*repository);
    }

    AppModel &model() { return harness.model(); }
    WorkingFile file(const QString &path) { return workingFile(model(), path); }
};

} // namespace

class DiffSelectionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    // Clicking through files fast, or a burst of list selections in one turn
    // of the event loop, loads the last one only, once, and no indicator shows.
    void quickSelectionsLoadTheLastOnce_data()
    {
        QTest::addColumn<bool>("fromTheList");
        QTest::newRow("single files") << false;
        QTest::newRow("list selections") << true;
    }

    void quickSelectionsLoadTheLastOnce()
    {
        QFETCH(bool, fromTheList);
        ThreeChanges fixture;
        AppModel &model = fixture.model();
        const QSignalSpy diffs(&model.diffSelection(), &DiffSelection::diffChanged);
        const QSignalSpy indicator(&model.diffSelection(), &DiffSelection::showDiffLoadingIndicatorChanged);
        if (fromTheList) {
            model.selectChangeFiles({fixture.file(u"one.txt"_s)});
            model.selectChangeFiles({fixture.file(u"one.txt"_s), fixture.file(u"two.txt"_s)});
            // The first in the list's order among the selection.
            model.selectChangeFiles({fixture.file(u"two.txt"_s), fixture.file(u"three.txt"_s)});
        } else {
            model.selectFile(fixture.file(u"one.txt"_s));
            model.selectFile(fixture.file(u"two.txt"_s));
            model.selectFile(fixture.file(u"three.txt"_s));
            QVERIFY(model.diffSelection().isLoadingDiff());
        }
        QVERIFY(fixture.harness.settle());
        QCOMPARE(diffs.count(), 1);
        QVERIFY(model.diffSelection().diff().text.contains(u"+three.txt after"_s));
        QCOMPARE(indicator.count(), 0);
        QCOMPARE(model.diffSelection().selectedFile(), std::optional(fixture.file(u"three.txt"_s)));

        model.selectChangeFiles({});
        QCOMPARE(model.diffSelection().selectedFile(), std::nullopt);
        QCOMPARE(model.diffSelection().diff(), emptyDiffDocument());
        QVERIFY(!model.diffSelection().isLoadingDiff());
    }

    // Moving on from a diff that is still loading ends its tool run: to another
    // file, or from History back to Changes. The slow load shows the indicator
    // after a while, not at once; a load that fails says what ran.
    void movingOnEndsTheOldLoad_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<bool>("inHistory");
        QTest::newRow("hg changes") << RepositoryKind::mercurial << false;
        QTest::newRow("hg history") << RepositoryKind::mercurial << true;
        QTest::newRow("git changes") << RepositoryKind::git << false;
    }

    void movingOnEndsTheOldLoad()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(bool, inHistory);
        ThreeChanges fixture(kind);
        AppModel &model = fixture.model();
        fixture.repository->write(u"new.txt"_s, "new\n");
        if (inHistory)
            fixture.repository->commitAll(u"three"_s);
        model.refresh();
        QVERIFY(fixture.harness.settle());
        model.setTab(inHistory ? WorkspaceTab::history : WorkspaceTab::changes);
        QVERIFY(fixture.harness.settle());
        if (inHistory)
            QCOMPARE(model.diffSelection().selectedChangeset()->summary, u"three"_s);
        const test::FakeTool stuck({{}, {}, 0, 60, {}});
        std::optional<test::ScopedEnvironmentVariable> override(std::in_place, test::toolVariable(kind),
                                                                stuck.path().toUtf8());

        if (inHistory)
            model.selectChangesetFile(WorkingFile{u"two.txt"_s, FileState::modified});
        else
            model.selectFile(fixture.file(u"one.txt"_s));
        QVERIFY(!model.diffSelection().showDiffLoadingIndicator());
        QTRY_VERIFY(stuck.processId() != 0 && test::processIsRunning(stuck.processId()));
        QTRY_VERIFY(model.diffSelection().showDiffLoadingIndicator());
        override.reset();
        if (inHistory)
            model.setTab(WorkspaceTab::changes);
        else
            model.selectFile(fixture.file(u"new.txt"_s));
        QTRY_VERIFY(!test::processIsRunning(stuck.processId()));
        QVERIFY(fixture.harness.settle());
        QCOMPARE(model.activityState().presentedError(), std::nullopt);
        QVERIFY(!model.diffSelection().showDiffLoadingIndicator());
        if (inHistory)
            return;
        QVERIFY(model.diffSelection().diff().text.endsWith(u"+++ b/new.txt\n+new\n+"_s));

        const test::FakeTool broken({{}, "abort: broken\n", 255, 0, {}});
        const test::ScopedEnvironmentVariable failing(test::toolVariable(kind), broken.path().toUtf8());
        model.selectFile(fixture.file(u"two.txt"_s));
        QVERIFY(fixture.harness.settle());
        QCOMPARE(model.activityState().presentedError()->title, u"Loading diff"_s);
        const QString message = model.activityState().presentedError()->message;
        QVERIFY2(message.startsWith(kind == RepositoryKind::git ? u"git "_s : u"hg "_s)
                     && message.endsWith(u" -- two.txt exited with status 255.\n\nabort: broken"_s),
                 qPrintable(message));
    }

    void selectionSurvivesRefreshAndRestart()
    {
        ThreeChanges fixture;
        AppModel &model = fixture.model();
        model.selectFile(fixture.file(u"two.txt"_s));
        model.setSelectedFilePaths({u"one.txt"_s, u"two.txt"_s});
        QVERIFY(fixture.harness.settle());

        // A refresh after one.txt was committed keeps what still exists.
        fixture.repository->tool({u"commit"_s, u"-m"_s, u"one"_s, u"one.txt"_s});
        model.refresh();
        QVERIFY(fixture.harness.settle());
        QCOMPARE(model.diffSelection().selectedFilePaths(), QSet<QString>{u"two.txt"_s});
        QCOMPARE(model.diffSelection().selectedFile(), std::optional(fixture.file(u"two.txt"_s)));

        AppModel &restarted = fixture.harness.start();
        QVERIFY(fixture.harness.settle());
        // The restored diff's row is the selected one.
        QCOMPARE(restarted.diffSelection().selectedChangeFiles(), QSet<WorkingFile>{fixture.file(u"two.txt"_s)});
        QVERIFY(restarted.diffSelection().diff().text.contains(u"+two.txt after"_s));

        // A refresh that removes the focused file clears the diff.
        fixture.repository->tool({u"revert"_s, u"--no-backup"_s, u"two.txt"_s});
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
        QVERIFY(harness.adopt(*repository));
        const DiffSelection &selection = model.diffSelection();
        for (const bool inHistory : {false, true}) {
            if (inHistory) {
                repository->commitAll(u"changes"_s);
                model.refresh();
                QVERIFY(harness.settle());
                model.setTab(WorkspaceTab::history);
                QVERIFY(harness.settle());
                QCOMPARE(selection.changesetFiles().size(), 4);
            }
            const auto show = [&](const QString &path, FileState state) {
                if (inHistory)
                    model.selectChangesetFile({path, state});
                else
                    model.selectFile(workingFile(model, path));
                return harness.settle();
            };
            QVERIFY(show(u"kept.png"_s, FileState::modified));
            QCOMPARE(selection.previewImage().size(), QSize(40, 20));
            QCOMPARE(selection.previewCaption(), QString());
            QCOMPARE(selection.diff(), emptyDiffDocument());
            QVERIFY(show(u"deleted.png"_s, FileState::removed));
            QCOMPARE(selection.previewImage().size(), QSize(30, 10));
            QCOMPARE(selection.previewCaption(), u"Deleted"_s);
            QVERIFY(show(u"broken.png"_s, FileState::modified));
            QCOMPARE(selection.diff().text, u"This image file could not be previewed."_s);
            QVERIFY(show(u"data.bin"_s, FileState::modified));
            QCOMPARE(selection.diff().text, u"Binary file"_s);
        }
    }

    void changesets()
    {
        const test::GitFixture repository;
        repository.write(u"a.txt"_s, "a\n");
        repository.write(u"b.txt"_s, "b\n");
        repository.commitAll(u"files"_s);
        repository.git({u"commit"_s, u"--quiet"_s, u"--allow-empty"_s, u"-m"_s, u"nothing"_s});
        ModelHarness harness;
        AppModel &model = harness.start();
        QVERIFY(harness.adopt(repository));
        model.setTab(WorkspaceTab::history);
        const QList<Changeset> history = model.workspace().snapshot().history;

        model.selectChangeset(history[0]);
        QVERIFY(harness.settle());
        QCOMPARE(model.diffSelection().changesetFiles(), QList<WorkingFile>());
        QCOMPARE(model.diffSelection().diff().text, u"This commit has no changed files."_s);

        // The files of a changeset left before they arrive are dropped.
        model.selectChangeset(history[1]);
        model.selectChangeset(history[0]);
        model.selectChangeset(history[1]);
        QVERIFY(harness.settle());
        QCOMPARE(model.diffSelection().changesetFiles().size(), 2);
        QCOMPARE(model.diffSelection().selectedChangesetFile(),
                 std::optional(WorkingFile{u"a.txt"_s, FileState::added}));
        QVERIFY(model.diffSelection().diff().text.contains(u"+a"_s));
        model.selectChangesetFile(WorkingFile{u"b.txt"_s, FileState::added});
        QVERIFY(harness.settle());
        QVERIFY(model.diffSelection().diff().text.contains(u"+b"_s));

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
