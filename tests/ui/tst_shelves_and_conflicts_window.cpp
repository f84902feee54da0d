// Setting changes aside and getting them back, and a merge stopped by a
// conflict resolved or abandoned, as a person does it in the window, over
// both kinds; the repository's own state decides.
#include "WindowHarness.h"

#include "ui/ChangesView.h"
#include "ui/ShelvesView.h"

#include <QLabel>
#include <QListView>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace tillery;

namespace {

struct Scene {
    explicit Scene(RepositoryKind repositoryKind)
        : kind(repositoryKind)
        , repository(test::makeFixture(kind))
    {
        repository->write(u"a.txt"_s, "one\n"_ba);
        repository->write(u"b.txt"_s, "two\n"_ba);
        repository->commitAll(u"base"_s);
    }

    void open()
    {
        harness.open();
        harness.model().adoptRepository(Repository{repository->path(), kind});
        harness.settle();
    }
    void refresh()
    {
        harness.model().refresh();
        QVERIFY(harness.settle());
    }
    QStringList changedFiles()
    {
        QStringList paths;
        for (const WorkingFile &file : harness.models.model().workspace().snapshot().files) {
            // Mercurial's own backups of a merged file.
            if (!file.path.endsWith(u".orig"_s))
                paths.append(file.path + u' ' + fileStateLetter(file.state));
        }
        return paths;
    }
    QPushButton *button(const QString &name) { return test::child<QPushButton>(harness.window(), name); }

    RepositoryKind kind;
    std::unique_ptr<test::RepositoryFixture> repository;
    test::WindowHarness harness;
};

} // namespace

class ShelvesAndConflictsWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    // Two of three changed files (one untracked, with a name that looks like an option) set aside
    // under a name; the page lists the shelf with its files and a diff; restoring keeps it or not,
    // deleting asks first.
    void shelveRestoreAndDelete_data() { test::addKindColumn(); }
    void shelveRestoreAndDelete()
    {
        QFETCH(RepositoryKind, kind);
        Scene scene(kind);
        scene.repository->write(u"a.txt"_s, "one changed\n"_ba);
        scene.repository->write(u"b.txt"_s, "two changed\n"_ba);
        scene.repository->write(u"-n new.txt"_s, "new\n"_ba);
        scene.open();
        AppModel &model = scene.harness.model();
        const QList<WorkingFile> files = model.workspace().snapshot().files;
        QSet<WorkingFile> chosen;
        for (const WorkingFile &file : files) {
            if (file.path != u"b.txt")
                chosen.insert(file);
        }
        model.selectChangeFiles(chosen);
        scene.harness.models.prompts.textAnswers = {u"half-done"_s};
        model.shelveSelectedFiles();
        QVERIFY(scene.harness.settle());
        QCOMPARE(scene.changedFiles(), QStringList{u"b.txt M"_s});
        QCOMPARE(model.workspace().snapshot().shelves.size(), 1);

        model.setTab(WorkspaceTab::shelves);
        QVERIFY(scene.harness.settle());
        auto *shelves = test::child<QListView>(scene.harness.window(), u"shelves"_s);
        QVERIFY(test::rowValues(shelves).value(0).contains(u"half-done"_s));
        auto *shelfFiles = test::child<QListView>(scene.harness.window(), u"shelfFiles"_s);
        QCOMPARE(test::rowValues(shelfFiles), (QStringList{u"-n new.txt"_s, u"a.txt"_s}));
        QVERIFY(model.diffSelection().diff().text.contains(u"+new"_s));
        test::clickRow(shelfFiles, shelfFiles->model()->index(1, 0));
        QVERIFY(scene.harness.settle());
        QVERIFY(model.diffSelection().diff().text.contains(u"+one changed"_s));

        scene.button(u"restoreShelf"_s)->click();
        QVERIFY(scene.harness.settle());
        QCOMPARE(model.workspace().tab(), WorkspaceTab::changes);
        QCOMPARE(scene.changedFiles(), (QStringList{u"-n new.txt ?"_s, u"a.txt M"_s, u"b.txt M"_s}));
        QCOMPARE(test::readFile(scene.repository->filePath(u"a.txt"_s)), "one changed\n"_ba);
        QCOMPARE(model.workspace().snapshot().shelves.size(), 1);

        // Restoring again over the same changes cannot work; the shelf stays.
        scene.repository->tool(kind == RepositoryKind::git ? QStringList{u"checkout"_s, u"--"_s, u"a.txt"_s}
                                                           : QStringList{u"revert"_s, u"--no-backup"_s, u"a.txt"_s});
        QFile::remove(scene.repository->filePath(u"-n new.txt"_s));
        scene.refresh();
        model.setTab(WorkspaceTab::shelves);
        QVERIFY(scene.harness.settle());
        scene.button(u"restoreAndDeleteShelf"_s)->click();
        QVERIFY(scene.harness.settle());
        QCOMPARE(test::readFile(scene.repository->filePath(u"-n new.txt"_s)), "new\n"_ba);
        QVERIFY(model.workspace().snapshot().shelves.isEmpty());

        model.selectChangeFiles({WorkingFile{u"b.txt"_s, FileState::modified}});
        scene.harness.models.prompts.textAnswers = {u"later"_s};
        model.shelveSelectedFiles();
        QVERIFY(scene.harness.settle());
        model.setTab(WorkspaceTab::shelves);
        QVERIFY(scene.harness.settle());
        scene.harness.models.prompts.alertAnswers = {1};
        scene.button(u"deleteShelf"_s)->click();
        QVERIFY(scene.harness.settle());
        QCOMPARE(model.workspace().snapshot().shelves.size(), 1);
        scene.harness.models.prompts.alertAnswers = {0};
        scene.button(u"deleteShelf"_s)->click();
        QVERIFY(scene.harness.settle());
        QVERIFY(model.workspace().snapshot().shelves.isEmpty());
        QCOMPARE(test::readFile(scene.repository->filePath(u"b.txt"_s)), "two\n"_ba);
    }

    // Both sides changed a.txt: the merge stops and the banner says so. Taking a side, or editing the
    // file and marking it, lets the merge be committed; aborting puts everything back.
    void mergeConflict_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<QString>("resolution");
        QTest::addColumn<QByteArray>("merged");
        for (const RepositoryKind kind : {RepositoryKind::mercurial, RepositoryKind::git}) {
            const char *name = kind == RepositoryKind::git ? "git" : "mercurial";
            QTest::addRow("%s, mine", name) << kind << u"mine"_s << "ours\n"_ba;
            QTest::addRow("%s, theirs", name) << kind << u"theirs"_s << "theirs\n"_ba;
            QTest::addRow("%s, by hand", name) << kind << u"hand"_s << "both\n"_ba;
            QTest::addRow("%s, aborted", name) << kind << u"abort"_s << "ours\n"_ba;
        }
    }
    void mergeConflict()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(QString, resolution);
        QFETCH(QByteArray, merged);
        Scene scene(kind);
        const QString base = scene.repository->parentNode();
        const bool git = kind == RepositoryKind::git;
        scene.repository->write(u"a.txt"_s, "theirs\n"_ba);
        const QString theirs = scene.repository->commitAll(u"theirs"_s);
        scene.repository->tool(git ? QStringList{u"checkout"_s, u"-q"_s, u"-b"_s, u"ours"_s, base}
                                   : QStringList{u"update"_s, u"-r"_s, base});
        scene.repository->write(u"a.txt"_s, "ours\n"_ba);
        scene.repository->write(u"b.txt"_s, "two, ours\n"_ba);
        const QString ours = scene.repository->commitAll(u"ours"_s);
        // The merge stops with a conflict, which the fixture reports as a failure.
        QVERIFY_THROWS_EXCEPTION(std::runtime_error,
                                 scene.repository->tool(
                                     git ? QStringList{u"-c"_s, u"merge.conflictStyle=merge"_s, u"merge"_s, theirs}
                                         : QStringList{u"merge"_s, u"--tool=:merge"_s, u"-r"_s, theirs}));
        scene.open();
        AppModel &model = scene.harness.model();
        auto *banner = test::child<QWidget>(scene.harness.changes(), u"conflictBanner"_s);
        QVERIFY(banner->isVisible());
        QCOMPARE(test::child<QLabel>(*banner, u"conflictText"_s)->text(), u"Merge in progress — 1 unresolved file"_s);
        QVERIFY(!scene.button(u"continueOperation"_s)->isEnabled());
        model.selectChangeFiles({WorkingFile{u"a.txt"_s, FileState::unresolved}});
        QVERIFY(scene.harness.settle());
        QVERIFY(model.diffSelection().diff().text.contains(u"+<<<<<<<"_s));
        if (resolution == u"abort") {
            scene.harness.models.prompts.alertAnswers = {0};
            scene.button(u"abortOperation"_s)->click();
            QVERIFY(scene.harness.settle());
            QVERIFY(!banner->isVisible());
            QCOMPARE(scene.repository->parentNode(), ours);
            QCOMPARE(scene.changedFiles(), QStringList());
            QCOMPARE(test::readFile(scene.repository->filePath(u"a.txt"_s)), merged);
            return;
        }
        if (resolution == u"hand") {
            scene.repository->write(u"a.txt"_s, "both\n"_ba);
            model.markSelectedResolved(true);
        } else {
            model.takeConflictSide(resolution == u"mine" ? ConflictSide::mine : ConflictSide::theirs);
        }
        QVERIFY(scene.harness.settle());
        QCOMPARE(test::child<QLabel>(*banner, u"conflictText"_s)->text(),
                 u"Merge in progress — no conflicts left: continue when ready"_s);
        QVERIFY(scene.button(u"continueOperation"_s)->isEnabled());
        model.setCommitSummary(u"Join the two"_s);
        scene.button(u"continueOperation"_s)->click();
        QVERIFY(scene.harness.settle());
        QVERIFY(!banner->isVisible());
        const Changeset head = model.workspace().snapshot().history.value(0);
        QCOMPARE(head.summary, u"Join the two"_s);
        QCOMPARE(head.parents.size(), 2);
        QCOMPARE(test::readFile(scene.repository->filePath(u"a.txt"_s)), merged);
        QCOMPARE(test::readFile(scene.repository->filePath(u"b.txt"_s)), "two, ours\n"_ba);
        QCOMPARE(scene.changedFiles(), QStringList());
    }
};

QTEST_MAIN(ShelvesAndConflictsWindowTest)
#include "tst_shelves_and_conflicts_window.moc"
