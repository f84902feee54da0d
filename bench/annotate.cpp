// Annotates a 10,000-line file that a few hundred commits touched, in a
// generated repository of each kind: the tool's own annotate run directly,
// the backend's query (which adds the parse, and for Mercurial goes through
// a command server), and painting one viewport of the annotate view at the
// top, the middle and the end of the file. Prints its figures; asserts
// nothing.

#include "Measuring.h"
#include "Offscreen.h"
#include "SnapshotBenchmark.h"

#include "git/GitTool.h"
#include "mercurial/MercurialTool.h"
#include "model/VersionControl.h"
#include "process/CommandServerPool.h"
#include "ui/AnnotationCanvas.h"

#include <QApplication>
#include <QPixmap>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTextStream>

using namespace Qt::StringLiterals;
using namespace tillery;
using namespace tillery::bench;

namespace {

constexpr int paintRuns = 61;
const QString fileName = u"big.txt"_s;

ToolCommand annotateCommand(RepositoryKind kind)
{
    if (kind == RepositoryKind::git)
        return GitTool::annotateCommand(GitTool::workingParent(), fileName);
    return MercurialTool::annotateCommand(MercurialTool::workingParent(), fileName);
}

double paintMilliseconds(AnnotationCanvas &canvas, QPixmap &target)
{
    return medianMilliseconds(paintRuns, [&] { canvas.viewport()->render(&target); });
}

} // namespace

int main(int argc, char *argv[])
{
    drawOffscreenUnlessTold();
    QApplication application(argc, argv);
    QTextStream out(stdout);
    const int runs = argc > 1 ? std::max(1, QString::fromLocal8Bit(argv[1]).toInt()) : 7;
    const QString commits = argc > 2 ? QString::fromLocal8Bit(argv[2]) : u"300"_s;

    AnnotationCanvas canvas;
    canvas.resize(1100, 800);
    canvas.show();
    QApplication::processEvents();
    QPixmap target(canvas.viewport()->size());

    for (const RepositoryKind kind : {RepositoryKind::mercurial, RepositoryKind::git}) {
        const char *name = kind == RepositoryKind::git ? "git" : "mercurial";
        QTemporaryDir folder;
        const QString repository = folder.filePath(u"repository"_s);
        if (!generateFixture(u"make_annotate_fixture.py"_s,
                             {QString::fromLatin1(name), repository, u"--commits"_s, commits})) {
            out << "the " << name << " repository could not be made\n";
            return 1;
        }
        const DirectTool tool = directTool(kind);
        const QStringList annotate = annotateCommand(kind).arguments;
        const VersionControl &backend = versionControl(kind);
        const auto query = [&] { return backend.annotateFile(repository, std::nullopt, fileName); };

        QElapsedTimer firstTimer;
        firstTimer.start();
        FileAnnotation annotation = query();
        const double first = milliseconds(firstTimer.nsecsElapsed());
        QList<double> direct;
        QList<double> queried;
        for (int run = 0; run < runs; ++run) {
            direct.append(runDirectly(tool, annotate, repository));
            queried.append(medianMilliseconds(1, [&] { annotation = query(); }));
        }
        QSet<QString> nodes;
        for (const AnnotatedLine &line : std::as_const(annotation).lines)
            nodes.insert(line.node);

        const double handOver = medianMilliseconds(7, [&] { canvas.setLines(annotation); });
        QScrollBar *bar = canvas.verticalScrollBar();
        bar->setValue(0);
        const double top = paintMilliseconds(canvas, target);
        bar->setValue(bar->maximum() / 2);
        const double middle = paintMilliseconds(canvas, target);
        bar->setValue(bar->maximum());
        const double end = paintMilliseconds(canvas, target);

        const double toolTime = median(direct);
        const double backendTime = median(queried);
        out << name << ": " << annotation.lines.size() << " lines from " << nodes.size() << " of " << commits
            << " commits in " << canvas.runStarts().size() << " runs; medians of " << runs << " runs\n";
        out << QString::asprintf("  the tool's annotate run directly   %8.1f ms\n", toolTime);
        out << QString::asprintf("  backend query                      %8.1f ms  ratio %.3f (target: at most 1.2)\n",
                                 backendTime, backendTime / toolTime);
        out << QString::asprintf("  first backend query after start-up %8.1f ms\n", first);
        out << QString::asprintf("  handing the view its lines         %8.2f ms\n", handOver);
        out << QString::asprintf("  one viewport painted (%d x %d)   top %.3f ms, middle %.3f ms, end %.3f ms\n",
                                 canvas.viewport()->width(), canvas.viewport()->height(), top, middle, end);
        out.flush();
        stopAllCommandServers();
    }
    return 0;
}
