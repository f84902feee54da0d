#include "RepositoryFixtures.h"
#include "TestEnvironment.h"
#include "WindowHarness.h"

#include "ui/ChangesView.h"
#include "ui/DiffCanvas.h"
#include "ui/DiffView.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMenu>
#include <QScrollBar>
#include <QSettings>
#include <QTest>

#include <cmath>
#include <QToolButton>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::GitFixture;
using test::WindowHarness;

namespace {

QByteArray numberedLines(int first, int count)
{
    QByteArray text;
    for (int line = first; line < first + count; ++line)
        text += "line " + QByteArray::number(line) + '\n';
    return text;
}

// A repository whose working copy changes `chart.txt` (one line replaced in
// forty, one added), changes a binary file and adds a picture.
struct ChangedRepository {
    ChangedRepository()
    {
        QByteArray before = numberedLines(1, 40);
        repository.write(u"chart.txt"_s, before);
        repository.write(u"data.bin"_s, QByteArray("\x00\x01\x02\x03binary", 10));
        repository.commitAll(u"Start"_s);
        QByteArray after = before;
        after.replace("line 20\n", "line twenty\nline twenty-one and a half\n");
        repository.write(u"chart.txt"_s, after);
        repository.write(u"data.bin"_s, QByteArray("\x00\x01\x02\x04binary", 10));
        QImage image(40, 30, QImage::Format_RGB32);
        image.fill(Qt::red);
        image.save(repository.filePath(u"buoy.png"_s));
    }
    GitFixture repository;
};

void selectFile(WindowHarness &harness, const QString &path)
{
    for (const WorkingFile &file : harness.model().workspace().snapshot().files) {
        if (file.path == path)
            harness.model().selectChangeFiles({file});
    }
    harness.settle();
}

// The item of the diff settings menu that carries the check mark.
QString checkedLayoutItem(const DiffView &view)
{
    for (const QAction *action : view.settingsButton()->menu()->actions()) {
        if (!action->isSeparator() && !action->icon().isNull())
            return action->text();
    }
    return QString();
}

QAction *layoutItem(const DiffView &view, const QString &label)
{
    for (QAction *action : view.settingsButton()->menu()->actions()) {
        if (action->text() == label && !action->isSeparator())
            return action;
    }
    return nullptr;
}

int rowCentre(qsizetype row)
{
    return static_cast<int>(row) * DiffCanvas::rowHeight + DiffCanvas::rowHeight / 2;
}

} // namespace

class DiffViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void bodyFollowsTheSelectedFile()
    {
        ChangedRepository fixture;
        WindowHarness harness;
        harness.openOn(fixture.repository.path());
        DiffView &view = *harness.changes().diffView();
        QCOMPARE(view.body(), DiffView::Body::empty);

        selectFile(harness, u"chart.txt"_s);
        QCOMPARE(view.body(), DiffView::Body::rows);
        QCOMPARE(view.shownFileName(), u"chart.txt"_s);
        QVERIFY(view.canvas()->rowCount() > 3);

        selectFile(harness, u"data.bin"_s);
        QCOMPARE(view.body(), DiffView::Body::message);
        QVERIFY2(!view.messageText().isEmpty(), "a binary file shows its message, not an empty grid");

        selectFile(harness, u"buoy.png"_s);
        QCOMPARE(view.body(), DiffView::Body::image);
        QCOMPARE(view.shownFileName(), u"buoy.png"_s);
    }

    void layoutChoiceIsStoredAndFollowed_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<QString>("shown");
        QTest::newRow("nothing stored") << QVariant() << u"Unified"_s;
        QTest::newRow("split stored") << QVariant(u"Split"_s) << u"Split"_s;
        QTest::newRow("unknown text") << QVariant(u"Diagonal"_s) << u"Unified"_s;
    }

    void layoutChoiceIsStoredAndFollowed()
    {
        QFETCH(QVariant, stored);
        QFETCH(QString, shown);
        ChangedRepository fixture;
        WindowHarness harness;
        if (stored.isValid())
            harness.models.settings().setValue(u"diffLayout.v1"_s, stored);
        harness.openOn(fixture.repository.path());
        selectFile(harness, u"chart.txt"_s);
        DiffView &view = *harness.changes().diffView();
        QCOMPARE(checkedLayoutItem(view), shown);
        QCOMPARE(view.canvas()->layout(), shown == u"Split" ? DiffCanvas::Layout::split : DiffCanvas::Layout::unified);

        const QString other = shown == u"Split" ? u"Unified"_s : u"Split"_s;
        layoutItem(view, other)->trigger();
        QCOMPARE(checkedLayoutItem(view), other);
        QCOMPARE(view.canvas()->layout(), other == u"Split" ? DiffCanvas::Layout::split : DiffCanvas::Layout::unified);
        harness.models.settings().sync();
        QSettings reread(harness.models.settings().fileName(), QSettings::IniFormat);
        QCOMPARE(reread.value(u"diffLayout.v1"_s).toString(), other);
    }

    void narrowWindowKeepsBothHalvesAndScrolls()
    {
        ChangedRepository fixture;
        WindowHarness harness;
        harness.models.settings().setValue(u"diffLayout.v1"_s, u"Split"_s);
        MainWindow &window = harness.open();
        window.resize(window.minimumSize());
        harness.addThroughMenu(fixture.repository.path());
        selectFile(harness, u"chart.txt"_s);
        DiffCanvas &canvas = *harness.changes().diffView()->canvas();
        QTRY_VERIFY(canvas.viewport()->width() < 2 * DiffCanvas::minimumHalfWidth + 1);

        QCOMPARE(canvas.splitHalfWidth(), DiffCanvas::minimumHalfWidth);
        QCOMPARE(canvas.horizontalScrollBar()->maximum(), canvas.contentWidth() - canvas.viewport()->width());
        QVERIFY(canvas.horizontalScrollBar()->maximum() > 0);

        // Scrolled fully right, the new side's added line is drawn at the right edge.
        const PresentedDiffDocument &document = harness.model().diffSelection().diff();
        qsizetype addedRow = -1;
        for (qsizetype row = 0; row < document.splitLines.size(); ++row) {
            const std::optional<PresentedDiffLine> &right = document.splitLines[row].right;
            if (right && right->kind == DiffLineKind::addition && !document.splitLines[row].left) {
                addedRow = row;
                break;
            }
        }
        QVERIFY(addedRow >= 0);
        canvas.horizontalScrollBar()->setValue(canvas.horizontalScrollBar()->maximum());
        const QImage picture = canvas.viewport()->grab().toImage();
        const QColor rightEdge = picture.pixelColor(picture.width() - 4, rowCentre(addedRow));
        const QColor leftEdge = picture.pixelColor(4, rowCentre(addedRow));
        QVERIFY2(rightEdge.green() > rightEdge.red() + 10, qPrintable(rightEdge.name()));
        QVERIFY2(rightEdge != leftEdge, "the empty left side is not painted as an addition");
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
        const PresentedDiffDocument document = buildDiffDocument(u"@@ -1 +1 @@\n+"_s + line + u"\n"_s);
        // Where the line's last ink is, in the canvas's own coordinates,
        // scrolled fully right in a view of the width.
        const auto lastInk = [&document](int width) {
            DiffCanvas canvas;
            canvas.resize(width, 120);
            canvas.show();
            if (!QTest::qWaitForWindowExposed(&canvas))
                return -1;
            canvas.setDocument(document);
            canvas.horizontalScrollBar()->setValue(canvas.horizontalScrollBar()->maximum());
            const QImage picture = canvas.viewport()->grab().toImage();
            const int y = rowCentre(1);
            const int background = picture.pixelColor(picture.width() - 1, y - DiffCanvas::rowHeight / 2 + 1).lightness();
            int rightmost = -1;
            for (int x = 0; x < picture.width(); ++x) {
                for (int row = y - 6; row <= y + 6; ++row) {
                    if (std::abs(picture.pixelColor(x, row).lightness() - background) > 60)
                        rightmost = x;
                }
            }
            return canvas.horizontalScrollBar()->value() + rightmost;
        };
        const int whole = lastInk(16000);
        QVERIFY(whole > 1000);
        QCOMPARE(lastInk(600), whole);
    }

    void dragSelectsRowsAndCopies_data()
    {
        QTest::addColumn<QString>("layout");
        QTest::newRow("unified") << u"Unified"_s;
        QTest::newRow("split") << u"Split"_s;
    }

    void dragSelectsRowsAndCopies()
    {
        QFETCH(QString, layout);
        ChangedRepository fixture;
        WindowHarness harness;
        harness.models.settings().setValue(u"diffLayout.v1"_s, layout);
        harness.openOn(fixture.repository.path());
        selectFile(harness, u"chart.txt"_s);
        DiffCanvas &canvas = *harness.changes().diffView()->canvas();
        QWidget *viewport = canvas.viewport();

        // Rows 1 to 3 follow the hunk header: three lines of context.
        QTest::mousePress(viewport, Qt::LeftButton, {}, QPoint(60, rowCentre(1)));
        QTest::mouseMove(viewport, QPoint(60, rowCentre(3)));
        QTest::mouseRelease(viewport, Qt::LeftButton, {}, QPoint(60, rowCentre(3)));
        QCOMPARE(canvas.selectedText(), u" line 17\n line 18\n line 19"_s);

        QGuiApplication::clipboard()->clear();
        canvas.setFocus();
        QTest::keyClick(&canvas, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), u" line 17\n line 18\n line 19"_s);

        // A click below the last row selects nothing.
        QTest::mouseClick(viewport, Qt::LeftButton, {}, QPoint(60, viewport->height() - 2));
        QCOMPARE(canvas.selectedText(), QString());
    }

    // Home and End (with Ctrl too) go to the first and the last row.
    void homeAndEndKeys()
    {
        DiffCanvas canvas;
        canvas.resize(500, 200);
        canvas.show();
        QVERIFY(QTest::qWaitForWindowExposed(&canvas));
        QString text = u"@@ -1,300 +1,300 @@\n"_s;
        for (int line = 1; line <= 300; ++line)
            text += u" line %1 with some width to scroll sideways through\n"_s.arg(line);
        canvas.setDocument(buildDiffDocument(text));
        QScrollBar *vertical = canvas.verticalScrollBar();
        for (const Qt::KeyboardModifiers modifiers : {Qt::KeyboardModifiers(), Qt::KeyboardModifiers(Qt::ControlModifier)}) {
            canvas.horizontalScrollBar()->setValue(canvas.horizontalScrollBar()->maximum());
            QTest::keyClick(&canvas, Qt::Key_End, modifiers);
            QCOMPARE(vertical->value(), vertical->maximum());
            QCOMPARE(canvas.horizontalScrollBar()->value(), 0);
            QTest::keyClick(&canvas, Qt::Key_Home, modifiers);
            QCOMPARE(vertical->value(), 0);
        }
        QVERIFY(vertical->maximum() > 0);
    }
};

QTEST_MAIN(DiffViewTest)
#include "tst_diff_view.moc"
