// Paints the diff canvas for documents of 1,000 and 1,000,000 lines (each
// added line after a removed one an edit of it, its changed words marked)
// at the top, the middle and the end, in both layouts, and times handing the
// canvas a new 1,000,000-line document up to its first paint. A painted
// viewport should cost the same whatever the document's length. Prints its
// figures; asserts nothing.

#include "GeneratedDiff.h"
#include "Measuring.h"
#include "Offscreen.h"

#include "diff/DiffDocument.h"
#include "ui/DiffCanvas.h"

#include <QApplication>
#include <QPixmap>
#include <QScrollBar>
#include <QThreadPool>
#include <QTextStream>

using namespace Qt::StringLiterals;
using namespace tillery;
using namespace tillery::bench;

namespace {

constexpr int paintRuns = 61;

// One full viewport painted into a picture, as the window system would ask,
// once the word changes of its lines (worked out on other threads) are in.
double paintMilliseconds(DiffCanvas &canvas, QPixmap &target)
{
    canvas.viewport()->render(&target);
    QThreadPool::globalInstance()->waitForDone();
    QApplication::processEvents();
    return medianMilliseconds(paintRuns, [&] { canvas.viewport()->render(&target); });
}

// Each added line right after a removed one becomes that line with one
// word changed, as edits usually are, so that its changed words are marked.
QString withEditedPairs(const QString &diff)
{
    QStringList lines = diff.split(u'\n');
    for (qsizetype index = 1; index < lines.size(); ++index) {
        if (lines[index].startsWith(u'+') && lines[index - 1].startsWith(u'-') && !lines[index].startsWith(u"+++")) {
            QString edited = u'+' + lines[index - 1].sliced(1);
            const qsizetype space = edited.indexOf(u' ', edited.size() / 2);
            lines[index] = space < 0 ? edited + u" edited"_s : edited.insert(space, u" edited"_s);
        }
    }
    return lines.join(u'\n');
}

struct Positions {
    double top = 0;
    double middle = 0;
    double end = 0;
    double slowest() const { return std::max({top, middle, end}); }
};

Positions paintAtPositions(DiffCanvas &canvas, QPixmap &target)
{
    QScrollBar *bar = canvas.verticalScrollBar();
    Positions positions;
    bar->setValue(0);
    positions.top = paintMilliseconds(canvas, target);
    bar->setValue(bar->maximum() / 2);
    positions.middle = paintMilliseconds(canvas, target);
    bar->setValue(bar->maximum());
    positions.end = paintMilliseconds(canvas, target);
    return positions;
}

} // namespace

int main(int argc, char *argv[])
{
    drawOffscreenUnlessTold();
    QApplication application(argc, argv);
    QTextStream out(stdout);

    const PresentedDiffDocument small = buildDiffDocument(withEditedPairs(generatedDiff(1000)));
    const PresentedDiffDocument large = buildDiffDocument(withEditedPairs(generatedDiff(1000000)));

    DiffCanvas canvas;
    canvas.resize(1100, 800);
    canvas.show();
    QApplication::processEvents();
    QPixmap target(canvas.viewport()->size());
    out << "viewport " << canvas.viewport()->width() << " x " << canvas.viewport()->height() << ", "
        << canvas.viewport()->height() / DiffCanvas::rowHeight + 1 << " rows; median of " << paintRuns << " paints\n";
    out << QString::asprintf("%-8s %10s %10s %10s %10s\n", "layout", "lines", "top ms", "middle ms", "end ms");

    double ratio = 0;
    for (const DiffCanvas::Layout layout : {DiffCanvas::Layout::unified, DiffCanvas::Layout::split}) {
        canvas.setLayout(layout);
        const char *name = layout == DiffCanvas::Layout::unified ? "unified" : "split";
        canvas.setDocument(small);
        const Positions few = paintAtPositions(canvas, target);
        out << QString::asprintf("%-8s %10lld %10.3f %10.3f %10.3f\n", name,
                                 static_cast<long long>(small.unifiedLines.size()), few.top, few.middle, few.end);
        canvas.setDocument(large);
        const Positions many = paintAtPositions(canvas, target);
        out << QString::asprintf("%-8s %10lld %10.3f %10.3f %10.3f\n", name,
                                 static_cast<long long>(large.unifiedLines.size()), many.top, many.middle, many.end);
        ratio = std::max(ratio, many.slowest() / few.slowest());
        out.flush();
    }
    out << QString::asprintf(
        "slowest 1,000,000-line viewport over slowest 1,000-line one: %.2f (target: at most 1.2)\n", ratio);

    // A new document arrives: the time until its first viewport is painted.
    canvas.setLayout(DiffCanvas::Layout::unified);
    QList<double> handOvers;
    QList<double> firstPaints;
    for (int run = 0; run < 7; ++run) {
        canvas.setDocument(small);
        canvas.viewport()->render(&target);
        QElapsedTimer timer;
        timer.start();
        canvas.setDocument(large);
        handOvers.append(milliseconds(timer.nsecsElapsed()));
        canvas.viewport()->render(&target);
        firstPaints.append(milliseconds(timer.nsecsElapsed()));
    }
    out << QString::asprintf("new 1,000,000-line document to its first paint: %.2f ms, of which handing it over "
                             "%.2f ms (medians of 7)\n",
                             median(firstPaints), median(handOvers));
    return 0;
}
