// Choosing lines in the Changes page's diff, committing and discarding them,
// as a person does, over both kinds; the repository's bytes decide.
#include "WindowHarness.h"

#include "ui/ChangesView.h"
#include "ui/DiffCanvas.h"
#include "ui/DiffView.h"

#include <QMenu>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace tillery;

namespace {

// f.txt with ten lines committed, then its second and ninth lines changed:
// one hunk of a removed and an added line each.
struct Scene {
    explicit Scene(RepositoryKind kind)
        : repository(test::makeFixture(kind))
    {
        repository->write(u"f.txt"_s, "1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n");
        repository->commitAll(u"base"_s);
        repository->write(u"f.txt"_s, "1\ntwo\n3\n4\n5\n6\n7\n8\nnine\n10\n");
        harness.open();
        harness.model().setTab(WorkspaceTab::changes);
        harness.model().adoptRepository(Repository{repository->path(), kind});
        harness.settle();
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

} // namespace

class ChosenLinesWindowTest : public QObject {
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
        Scene scene(kind);
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
        Scene scene(kind);
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
};

QTEST_MAIN(ChosenLinesWindowTest)
#include "tst_chosen_lines_window.moc"
