#include "WindowHarness.h"

#include "ui/ImagePreview.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QScrollBar>
#include <QSettings>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::WindowHarness;

namespace {

int rowOf(const QListView *list, const QString &path)
{
    return static_cast<int>(test::listedPaths(list).indexOf(path));
}

// Selects rows in the list as a person does, which selects them in the model.
void selectRows(QListView *list, const QStringList &paths)
{
    QItemSelection selection;
    for (const QString &path : paths)
        selection.select(list->model()->index(rowOf(list, path), 0), list->model()->index(rowOf(list, path), 0));
    list->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

QList<Qt::CheckState> checkStates(const QListView *list)
{
    QList<Qt::CheckState> states;
    for (int row = 0; row < list->model()->rowCount(); ++row)
        states.append(list->model()->index(row, 0).data(Qt::CheckStateRole).value<Qt::CheckState>());
    return states;
}

int rowCentre(qsizetype row)
{
    return static_cast<int>(row) * DiffCanvas::rowHeight + DiffCanvas::rowHeight / 2;
}

// A diff canvas of its own, on screen, showing the diff text.
std::unique_ptr<DiffCanvas> shownCanvas(int width, int height, const QString &diff)
{
    auto canvas = std::make_unique<DiffCanvas>();
    canvas->resize(width, height);
    canvas->show();
    if (!QTest::qWaitForWindowExposed(canvas.get()))
        qWarning("The diff canvas was not shown");
    canvas->setDocument(buildDiffDocument(diff));
    return canvas;
}

} // namespace

class ChangesViewTest : public QObject {
    Q_OBJECT

    // One window, opened with the split diff layout stored, over a repository of each kind with the
    // same new files; the Git one also changes a text file and a binary file and adds a picture.
    std::unique_ptr<test::RepositoryFixture> m_repositories[2];
    std::unique_ptr<WindowHarness> m_shared;

    ChangesView &show(RepositoryKind kind)
    {
        m_shared->model().select(Repository{QDir::cleanPath(m_repositories[int(kind)]->path()), kind});
        m_shared->settle();
        return m_shared->changes();
    }

private Q_SLOTS:
    void initTestCase()
    {
        test::prepareUiTest();
        m_shared = std::make_unique<WindowHarness>();
        m_shared->models.settings().setValue(u"diffLayout.v1"_s, u"Split"_s);
        m_shared->open();
        for (const RepositoryKind kind : {RepositoryKind::mercurial, RepositoryKind::git})
            m_repositories[int(kind)] = test::chartRepository(kind);
        const test::RepositoryFixture &git = *m_repositories[int(RepositoryKind::git)];
        git.write(u"data.bin"_s, QByteArray("\x00\x01\x02\x03binary", 10));
        git.commitAll(u"Binary"_s);
        git.write(u"data.bin"_s, QByteArray("\x00\x01\x02\x04binary", 10));
        git.write(u"chart.txt"_s, "harbour\nbuoy\n");
        QImage image(40, 30, QImage::Format_RGB32);
        image.fill(Qt::red);
        image.save(git.filePath(u"buoy.png"_s));
        for (const std::unique_ptr<test::RepositoryFixture> &repository : m_repositories) {
            for (const QString &path :
                 {u"Makefile"_s, u"archive.tar.gz"_s, u"docs/guide/intro.md"_s, u"R&D/plan.a&b"_s})
                repository->write(path, "text\n");
            m_shared->addThroughMenu(repository->path());
        }
    }

    void cleanupTestCase() { m_shared.reset(); }

    // The menu's first part, up to the copy commands.
    void contextMenuItems_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<QStringList>("selected");
        QTest::addColumn<QString>("clicked");
        QTest::addColumn<QString>("expected");
        const QStringList three{u"Makefile"_s, u"archive.tar.gz"_s, u"docs/guide/intro.md"_s};
        QTest::newRow("mercurial, nested file, nothing selected")
            << RepositoryKind::mercurial << QStringList() << u"docs/guide/intro.md"_s
            << u"Discard Changes, -, Ignore File (Add to .hgignore), Ignore Folder (Add to .hgignore) [docs, "
               u"docs/guide], "
               "Ignore All .md Files (Add to .hgignore)"_s;
        QTest::newRow("mercurial, three selected")
            << RepositoryKind::mercurial << three << u"archive.tar.gz"_s
            << u"Discard 3 Selected Changes, -, Ignore File (Add to .hgignore), Ignore All .gz Files (Add to .hgignore)"_s;
        QTest::newRow("git, three selected, no extension")
            << RepositoryKind::git << three << u"Makefile"_s
            << u"Discard 3 Selected Changes, -, Ignore File (Add to .gitignore)"_s;
        QTest::newRow("git, clicked outside the selection")
            << RepositoryKind::git << QStringList({u"Makefile"_s, u"docs/guide/intro.md"_s}) << u"archive.tar.gz"_s
            << u"Discard Changes, -, Ignore File (Add to .gitignore), Ignore All .gz Files (Add to .gitignore)"_s;
        QTest::newRow("git, ampersands shown as they are")
            << RepositoryKind::git << QStringList() << u"R&D/plan.a&b"_s
            << u"Discard Changes, -, Ignore File (Add to .gitignore), Ignore Folder (Add to .gitignore) [R&D], "
               "Ignore All .a&b Files (Add to .gitignore)"_s;
    }

    void contextMenuItems()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(QStringList, selected);
        QFETCH(QString, clicked);
        QFETCH(QString, expected);
        ChangesView &changes = show(kind);
        selectRows(changes.list(), selected);
        const std::unique_ptr<QMenu> menu(changes.contextMenuFor(rowOf(changes.list(), clicked)));
        const QStringList items = test::menuItems(menu.get());
        QVERIFY2(items.indexOf(u"Copy File Path"_s) > 0, qPrintable(items.join(u", "_s)));
        QCOMPARE(items.first(items.indexOf(u"Copy File Path"_s) - 1).join(u", "_s), expected);
    }

    void contextMenuCommandsActOnTheClickedFile()
    {
        const test::GitFixture repository;
        repository.write(u"docs/guide/intro.md"_s, "text\n");
        repository.write(u"notes.txt"_s, "text\n");

        WindowHarness harness;
        ChangesView &changes = harness.openOn(repository.path());
        const std::unique_ptr<QMenu> menu(changes.contextMenuFor(rowOf(changes.list(), u"docs/guide/intro.md"_s)));
        test::findAction(menu.get(), u"Copy File Path"_s)->trigger();
        test::findAction(menu.get(), u"Copy Relative File Path"_s)->trigger();
        QCOMPARE(harness.models.desktop.clipboard,
                 QStringList({repository.path() + u"/docs/guide/intro.md"_s, u"docs/guide/intro.md"_s}));

        test::findAction(menu.get(), u"docs"_s)->trigger();
        QVERIFY(harness.settle());
        QCOMPARE(test::readFile(repository.filePath(u".gitignore"_s)), QByteArray("docs/\n"));
        QCOMPARE(test::listedPaths(changes.list()), QStringList({u".gitignore"_s, u"notes.txt"_s}));
    }

    void discardAsksFirst()
    {
        const test::GitFixture repository;
        repository.write(u"chart.txt"_s, "harbour\n");
        repository.commitAll(u"Start"_s);
        repository.write(u"chart.txt"_s, "harbour\nbuoy\n");
        repository.write(u"scratch.txt"_s, "draft\n");

        WindowHarness harness;
        ChangesView &changes = harness.openOn(repository.path());
        selectRows(changes.list(), {u"chart.txt"_s, u"scratch.txt"_s});
        const std::unique_ptr<QMenu> menu(changes.contextMenuFor(rowOf(changes.list(), u"chart.txt"_s)));
        QAction *discard = test::findAction(menu.get(), u"Discard 2 Selected Changes"_s);

        harness.models.prompts.alertAnswers = {1};
        discard->trigger();
        QVERIFY(harness.settle());
        QCOMPARE(harness.models.prompts.alerts.size(), 1);
        QCOMPARE(test::readFile(repository.filePath(u"chart.txt"_s)), QByteArray("harbour\nbuoy\n"));

        harness.models.prompts.alertAnswers = {0};
        discard->trigger();
        QVERIFY(harness.settle());
        QCOMPARE(test::readFile(repository.filePath(u"chart.txt"_s)), QByteArray("harbour\n"));
        QCOMPARE(harness.models.desktop.trashed, QStringList({repository.filePath(u"scratch.txt"_s)}));
        QVERIFY(!changes.list()->isVisible());
    }

    // The row whose diff shows is the current one, after a restart too; Space ticks it, and the
    // select-all box follows the ticks. A ticked file that leaves the working copy no longer counts.
    void tickingRows()
    {
        const test::GitFixture repository;
        for (const char *name : {"a.txt", "b.txt", "c.txt"})
            repository.write(QString::fromLatin1(name), "x\n");
        WindowHarness harness;
        selectRows(harness.openOn(repository.path()).list(), {u"b.txt"_s});
        QVERIFY(harness.settle());
        harness.close();
        harness.open();
        QListView *list = harness.changes().list();
        QTRY_VERIFY(harness.model().diffSelection().diff().text.contains(u"b.txt"_s));
        QCOMPARE(list->currentIndex().row(), 1);
        QCOMPARE(list->selectionModel()->selectedRows(), QModelIndexList({list->model()->index(1, 0)}));

        list->setFocus();
        QTest::keyClick(list, Qt::Key_Space);
        QCOMPARE(checkStates(list), (QList<Qt::CheckState>{Qt::Unchecked, Qt::Checked, Qt::Unchecked}));
        QTest::keyClick(list, Qt::Key_Down);
        QTRY_VERIFY(harness.model().diffSelection().diff().text.contains(u"c.txt"_s));
        QTest::keyClick(list, Qt::Key_Space);
        QCOMPARE(checkStates(list), (QList<Qt::CheckState>{Qt::Unchecked, Qt::Checked, Qt::Checked}));

        auto *selectAll = test::child<QCheckBox>(harness.changes(), u"selectAllFiles"_s);
        QPushButton *commit = test::child<CommitBox>(harness.changes())->commitButton();
        QVERIFY(!selectAll->isChecked());
        test::clickCheckBox(list, 0);
        QVERIFY(selectAll->isChecked());
        QCOMPARE(commit->text(), u"Commit 3 Files"_s);
        selectAll->click();
        QCOMPARE(checkStates(list), QList<Qt::CheckState>(3, Qt::Unchecked));
        selectAll->click();
        QCOMPARE(checkStates(list), QList<Qt::CheckState>(3, Qt::Checked));
        repository.removeFromDisk(u"c.txt"_s);
        harness.model().refresh();
        QVERIFY(harness.settle());
        QCOMPARE(test::listedPaths(list), QStringList({u"a.txt"_s, u"b.txt"_s}));
        QCOMPARE(commit->text(), u"Commit 2 Files"_s);
    }
    void diffFollowsTheSelectedFile()
    {
        ChangesView &changes = show(RepositoryKind::git);
        DiffView *view = test::child<DiffView>(changes);
        const auto selectFile = [&](const QString &path) {
            test::clickRow(changes.list(), changes.list()->model()->index(rowOf(changes.list(), path), 0));
            m_shared->settle();
        };
        const auto shown = [view] { return test::child<QLabel>(*view, u"diffPath"_s)->text(); };
        selectFile(u"chart.txt"_s);
        QVERIFY(test::child<DiffCanvas>(*view)->isVisible());
        QCOMPARE(shown(), u"chart.txt"_s);

        selectFile(u"data.bin"_s);
        QVERIFY(!test::child<DiffCanvas>(*view)->isVisible());
        QVERIFY(test::child<QPlainTextEdit>(*view)->isVisible());
        QVERIFY2(!test::child<QPlainTextEdit>(*view)->toPlainText().isEmpty(), "a binary file shows its message");

        selectFile(u"buoy.png"_s);
        QVERIFY(test::child<ImagePreview>(*view)->isVisible());
        QCOMPARE(shown(), u"buoy.png"_s);
    }

    void layoutChoiceIsStoredAndFollowed()
    {
        DiffView *view = test::child<DiffView>(m_shared->changes());
        test::ModelHarness stored;
        QCOMPARE(ViewSettings(stored.settings()).diffLayout(), DiffCanvas::Layout::unified);
        stored.settings().setValue(u"diffLayout.v1"_s, u"Diagonal"_s);
        QCOMPARE(ViewSettings(stored.settings()).diffLayout(), DiffCanvas::Layout::unified);

        const DiffCanvas &canvas = *test::child<DiffCanvas>(*view);
        QMenu *menu = test::child<QToolButton>(*view)->menu();
        QVERIFY(!test::findAction(menu, u"Split"_s)->icon().isNull());
        QCOMPARE(canvas.layout(), DiffCanvas::Layout::split);
        for (const auto &[item, layout, other] : {std::tuple(u"Unified"_s, DiffCanvas::Layout::unified, u"Split"_s),
                                                  std::tuple(u"Split"_s, DiffCanvas::Layout::split, u"Unified"_s)}) {
            test::findAction(menu, item)->trigger();
            QVERIFY(!test::findAction(menu, item)->icon().isNull() && test::findAction(menu, other)->icon().isNull());
            QCOMPARE(canvas.layout(), layout);
            m_shared->models.settings().sync();
            QCOMPARE(QSettings(m_shared->models.settings().fileName(), QSettings::IniFormat)
                         .value(u"diffLayout.v1"_s)
                         .toString(),
                     item);
        }
    }

    void narrowSplitKeepsBothHalvesAndScrolls()
    {
        const std::unique_ptr<DiffCanvas> canvas = shownCanvas(500, 200, u"@@ -1 +1,2 @@\n harbour\n+buoy\n"_s);
        canvas->setLayout(DiffCanvas::Layout::split);
        QCOMPARE(canvas->splitHalfWidth(), DiffCanvas::minimumHalfWidth);
        QCOMPARE(canvas->horizontalScrollBar()->maximum(), canvas->contentWidth() - canvas->viewport()->width());
        QVERIFY(canvas->horizontalScrollBar()->maximum() > 0);

        // Scrolled fully right, the added line (row 2, with nothing on the old side) is drawn at the right edge.
        canvas->horizontalScrollBar()->setValue(canvas->horizontalScrollBar()->maximum());
        const QImage picture = canvas->viewport()->grab().toImage();
        const QColor rightEdge = picture.pixelColor(picture.width() - 4, rowCentre(2));
        QVERIFY2(rightEdge.green() > rightEdge.red() + 10, qPrintable(rightEdge.name()));
        QVERIFY2(rightEdge != picture.pixelColor(4, rowCentre(2)), "the empty left side is not an addition");
    }

    // The widest line scrolls fully into view, whatever it holds: tabs are
    // wider than a letter, East Asian characters and emoji take two cells.
    void longLinesScrollToTheirEnd_data()
    {
        QTest::addColumn<QString>("line");
        QTest::newRow("tabs") << u"x\t"_s.repeated(60) + u"end"_s;
        QTest::newRow("wide characters") << u"\u6f22\u5b57"_s.repeated(80) + u"end"_s;
        QTest::newRow("emoji") << u"\U0001F600"_s.repeated(80) + u"end"_s;
    }

    void longLinesScrollToTheirEnd()
    {
        QFETCH(QString, line);
        // Where the line's last ink is, in the canvas's own coordinates, scrolled fully right.
        const auto lastInk = [&line](int width) {
            const std::unique_ptr<DiffCanvas> canvas = shownCanvas(width, 120, u"@@ -1 +1 @@\n+"_s + line + u"\n"_s);
            canvas->horizontalScrollBar()->setValue(canvas->horizontalScrollBar()->maximum());
            const QImage picture = canvas->viewport()->grab().toImage();
            const int y = rowCentre(1);
            const int background =
                picture.pixelColor(picture.width() - 1, y - DiffCanvas::rowHeight / 2 + 1).lightness();
            int rightmost = -1;
            for (int x = 0; x < picture.width(); ++x) {
                for (int row = y - 6; row <= y + 6; ++row) {
                    if (std::abs(picture.pixelColor(x, row).lightness() - background) > 60)
                        rightmost = x;
                }
            }
            return canvas->horizontalScrollBar()->value() + rightmost;
        };
        const int whole = lastInk(16000);
        QVERIFY(whole > 1000);
        QCOMPARE(lastInk(600), whole);
    }

    void dragSelectsRowsAndCopies_data()
    {
        QTest::addColumn<DiffCanvas::Layout>("layout");
        QTest::newRow("unified") << DiffCanvas::Layout::unified;
        QTest::newRow("split") << DiffCanvas::Layout::split;
    }

    void dragSelectsRowsAndCopies()
    {
        QFETCH(DiffCanvas::Layout, layout);
        const std::unique_ptr<DiffCanvas> canvas = shownCanvas(900, 300, u"@@ -1,4 +1,4 @@\n a\n b\n c\n-d\n+e\n"_s);
        canvas->setLayout(layout);
        QWidget *viewport = canvas->viewport();
        QTest::mousePress(viewport, Qt::LeftButton, {}, QPoint(60, rowCentre(1)));
        QTest::mouseMove(viewport, QPoint(60, rowCentre(3)));
        QTest::mouseRelease(viewport, Qt::LeftButton, {}, QPoint(60, rowCentre(3)));
        QCOMPARE(canvas->selectedText(), u" a\n b\n c"_s);

        QGuiApplication::clipboard()->clear();
        QTest::keyClick(canvas.get(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), u" a\n b\n c"_s);

        // A click below the last row selects nothing.
        QTest::mouseClick(viewport, Qt::LeftButton, {}, QPoint(60, viewport->height() - 2));
        QCOMPARE(canvas->selectedText(), QString());
    }

    // Home and End (with Ctrl too) go to the first and the last row.
    void homeAndEndKeys()
    {
        QString text = u"@@ -1,300 +1,300 @@\n"_s;
        for (int line = 1; line <= 300; ++line)
            text += u" line %1 with some width to scroll sideways through\n"_s.arg(line);
        const std::unique_ptr<DiffCanvas> canvas = shownCanvas(500, 200, text);
        QScrollBar *vertical = canvas->verticalScrollBar();
        QVERIFY(vertical->maximum() > 0);
        for (const Qt::KeyboardModifiers modifiers :
             {Qt::KeyboardModifiers(), Qt::KeyboardModifiers(Qt::ControlModifier)}) {
            canvas->horizontalScrollBar()->setValue(canvas->horizontalScrollBar()->maximum());
            QTest::keyClick(canvas.get(), Qt::Key_End, modifiers);
            QCOMPARE(vertical->value(), vertical->maximum());
            QCOMPARE(canvas->horizontalScrollBar()->value(), 0);
            QTest::keyClick(canvas.get(), Qt::Key_Home, modifiers);
            QCOMPARE(vertical->value(), 0);
        }
    }
};

QTEST_MAIN(ChangesViewTest)
#include "tst_changes_view.moc"
