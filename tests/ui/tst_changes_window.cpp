// The Changes page's work as a person does it, over both kinds; the repository's own state decides:
// choosing lines in the diff, committing and discarding them; setting changes aside and getting them
// back; a merge stopped by a conflict resolved or abandoned.
#include "WindowHarness.h"

#include "ui/DiffCanvas.h"
#include "ui/ShelvesView.h"

#include <QTimer>

using namespace Qt::StringLiterals;
using namespace tillery;

namespace {

// f.txt with ten lines committed, then its second and ninth lines changed:
// one hunk of a removed and an added line each.
struct LinesScene {
    explicit LinesScene(RepositoryKind kind)
        : repository(test::makeFixture(kind))
    {
        repository->write(u"f.txt"_s, "1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n");
        repository->commitAll(u"base"_s);
        repository->write(u"f.txt"_s, "1\ntwo\n3\n4\n5\n6\n7\n8\nnine\n10\n");
        harness.open();
        harness.model().setTab(WorkspaceTab::changes);
        harness.adopt(*repository);
        harness.model().selectFile(harness.model().workspace().snapshot().files.value(0));
        harness.settle();
    }

    DiffCanvas &canvas() { return *test::child<DiffCanvas>(harness.changes()); }
    QPoint box(qsizetype unifiedLine)
    {
        return {DiffCanvas::choiceWidth / 2,
                static_cast<int>(unifiedLine) * DiffCanvas::rowHeight + DiffCanvas::rowHeight / 2};
    }
    QPoint text(qsizetype unifiedLine) { return box(unifiedLine) + QPoint(200, 0); }
    Qt::CheckState fileMark()
    {
        QListView *list = harness.changes().list();
        return list->model()->index(0, 0).data(Qt::CheckStateRole).value<Qt::CheckState>();
    }
    QByteArray working() const { return test::readFile(repository->filePath(u"f.txt"_s)); }

    std::unique_ptr<test::RepositoryFixture> repository;
    test::WindowHarness harness;
};

struct ChangesScene {
    explicit ChangesScene(RepositoryKind repositoryKind)
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
        harness.adopt(*repository);
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

class ChangesWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    // Unified lines: 0 header, 1 "1", 2 "-2", 3 "+two", 4-9 context, 10 "-9", 11 "+nine", 12 "10".
    // A click chooses a line, Shift-click the range to it, Space the selected rows (moved and stretched with the
    // arrows); the file is then partly
    // marked and the commit takes exactly those lines. What is left is discarded by its hunk, after asking.
    void chooseCommitAndDiscard_data() { test::addKindColumn(); }
    void chooseCommitAndDiscard()
    {
        QFETCH(RepositoryKind, kind);
        LinesScene scene(kind);
        QWidget *viewport = scene.canvas().viewport();
        QTest::mouseClick(viewport, Qt::LeftButton, {}, scene.box(2));
        QTest::mouseClick(viewport, Qt::LeftButton, Qt::ShiftModifier, scene.box(3));
        QCOMPARE(scene.harness.model().chosenLines().shownLineState(0), Qt::PartiallyChecked);
        QCOMPARE(scene.fileMark(), Qt::PartiallyChecked);
        QTest::mouseClick(viewport, Qt::LeftButton, {}, scene.text(8));
        QTest::keyClick(&scene.canvas(), Qt::Key_Down);
        QTest::keyClick(&scene.canvas(), Qt::Key_Down);
        QTest::keyClick(&scene.canvas(), Qt::Key_Down, Qt::ShiftModifier);
        QTest::keyClick(&scene.canvas(), Qt::Key_Space);
        QCOMPARE(scene.fileMark(), Qt::Checked);
        QTest::keyClick(&scene.canvas(), Qt::Key_Space);
        QCOMPARE(scene.harness.model().chosenLines().shownLineState(10), Qt::Unchecked);
        QCOMPARE(test::child<QPushButton>(scene.harness.window(), u"commitButton"_s)->text(), u"Commit 1 File"_s);

        scene.harness.model().setCommitSummary(u"Two"_s);
        scene.harness.model().commit();
        QVERIFY(scene.harness.settle());
        const QByteArray committed = scene.repository->tool(
            kind == RepositoryKind::git ? QStringList{u"show"_s, u"HEAD:f.txt"_s}
                                        : QStringList{u"cat"_s, u"-r"_s, u"."_s, u"path:f.txt"_s});
        QCOMPARE(committed, "1\ntwo\n3\n4\n5\n6\n7\n8\n9\n10\n"_ba);
        QCOMPARE(scene.working(), "1\ntwo\n3\n4\n5\n6\n7\n8\nnine\n10\n"_ba);
        QCOMPARE(scene.fileMark(), Qt::Unchecked);

        // The diff is now one hunk, the ninth line's; its menu discards it.
        scene.harness.models.prompts.alertAnswers = {0};
        QTimer::singleShot(0, [] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            QVERIFY(menu);
            for (QAction *action : menu->actions()) {
                if (action->text() == u"Discard This Hunk"_s)
                    action->trigger();
            }
            menu->close();
        });
        Q_EMIT scene.canvas().customContextMenuRequested(scene.text(3));
        QVERIFY(scene.harness.settle());
        QCOMPARE(scene.working(), committed);
        QVERIFY(scene.harness.model().workspace().snapshot().files.isEmpty());
    }

    // White space changes can be left out of the diff only while no line is chosen, and lines cannot be
    // chosen in such a diff, which is not the file's.
    void whitespaceIgnoredOnlyWithoutChosenLines_data() { test::addKindColumn(); }
    void whitespaceIgnoredOnlyWithoutChosenLines()
    {
        QFETCH(RepositoryKind, kind);
        LinesScene scene(kind);
        auto *ignore = test::child<QAction>(scene.harness.changes(), u"ignoreWhitespace"_s);
        QTest::mouseClick(scene.canvas().viewport(), Qt::LeftButton, {}, scene.box(2));
        QVERIFY(!ignore->isEnabled());
        scene.harness.model().setDiffWhitespace(WhitespaceChanges::ignored);
        QCOMPARE(scene.harness.model().diffSelection().whitespace(), WhitespaceChanges::shown);
        QTest::mouseClick(scene.canvas().viewport(), Qt::LeftButton, {}, scene.box(2));
        QVERIFY(ignore->isEnabled());
        ignore->trigger();
        QVERIFY(scene.harness.settle());
        QVERIFY(!scene.harness.model().chosenLines().canChooseShownLines());
        QCOMPARE(scene.harness.model().diffSelection().diff().unifiedLines.size(), 13);
        ignore->trigger();
        QVERIFY(scene.harness.settle());
        QVERIFY(scene.harness.model().chosenLines().canChooseShownLines());
    }

    // Two of three changed files (one untracked, with a name that looks like an option) set aside
    // under a name; the page lists the shelf with its files and a diff; restoring keeps it or not,
    // deleting asks first.
    void shelveRestoreAndDelete_data() { test::addKindColumn(); }
    void shelveRestoreAndDelete()
    {
        QFETCH(RepositoryKind, kind);
        ChangesScene scene(kind);
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
        ChangesScene scene(kind);
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
        QVERIFY_THROWS_EXCEPTION(
            std::runtime_error,
            scene.repository->tool(git ? QStringList{u"-c"_s, u"merge.conflictStyle=merge"_s, u"merge"_s, theirs}
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

QTEST_MAIN(ChangesWindowTest)
#include "tst_changes_window.moc"
