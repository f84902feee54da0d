// A working copy with about 100,000 changed files: the time from the
// snapshot arriving on the main thread to the first paint of the Changes
// list, against the time the status output takes to parse, and the paint
// time of the list while scrolling. Drives the real model and main window
// offscreen. Prints its figures; asserts nothing.

#include "Measuring.h"
#include "Offscreen.h"
#include "SilentServices.h"
#include "SnapshotBenchmark.h"

#include "git/GitParsers.h"
#include "git/GitTool.h"
#include "model/AppModel.h"
#include "process/ToolRunner.h"
#include "ui/ChangesView.h"
#include "ui/MainWindow.h"
#include "ui/RepositoryWorkspace.h"
#include "ui/ViewSettings.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDeadlineTimer>
#include <QDir>
#include <QListView>
#include <QScrollBar>
#include <QSettings>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>
#include <QUrl>

using namespace Qt::StringLiterals;
using namespace tillery;
using namespace tillery::bench;

namespace {

// Notes when the list's viewport has finished its first paint with the rows.
class FirstPaintWatch final : public QObject {
public:
    FirstPaintWatch(QListView &list, qsizetype rows, QElapsedTimer &clock)
        : m_list(list)
        , m_rows(rows)
        , m_clock(clock)
    {
        list.viewport()->installEventFilter(this);
    }
    std::optional<qint64> paintedAt;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && !paintedAt && m_list.model()->rowCount() >= m_rows) {
            // Runs once the paint (and the rest of this event) is done.
            QTimer::singleShot(0, this, [this] {
                if (!paintedAt)
                    paintedAt = m_clock.nsecsElapsed();
            });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QListView &m_list;
    qsizetype m_rows;
    QElapsedTimer &m_clock;
};

struct Arrival {
    double toFirstPaint = 0;
    double wholeLoad = 0;
    QList<double> scrollPaints;
};

Arrival measureOnce(const QString &repository, qsizetype rows)
{
    QTemporaryDir folder;
    QSettings settings(folder.filePath(u"settings.ini"_s), QSettings::IniFormat);
    SilentPrompts prompts;
    SilentDesktop desktop;
    AppModel model({settings, prompts, desktop, folder.filePath(u"icons"_s)});
    QElapsedTimer clock;
    clock.start();
    // The snapshot arrives in the continuation that ends the busy state and
    // then applies it; connected before any view, so this runs first.
    qint64 arrivedAt = 0;
    QObject::connect(&model.activityState(), &ActivityState::isBusyChanged, &model, [&](bool busy) {
        if (!busy)
            arrivedAt = clock.nsecsElapsed();
    });
    ViewSettings viewSettings(settings);
    MainWindow window(model, viewSettings);
    window.resize(1200, 760);
    window.show();
    model.start();
    QApplication::processEvents();
    QListView &list = *window.workspace()->changesView()->list();
    FirstPaintWatch watch(list, rows, clock);

    const qint64 start = clock.nsecsElapsed();
    model.addRepositories({QUrl::fromLocalFile(repository)});
    const QDeadlineTimer deadline(300000);
    while (!watch.paintedAt && !deadline.hasExpired())
        QApplication::processEvents(QEventLoop::AllEvents, 5);

    Arrival arrival;
    if (!watch.paintedAt)
        return arrival;
    arrival.toFirstPaint = milliseconds(*watch.paintedAt - arrivedAt);
    arrival.wholeLoad = milliseconds(*watch.paintedAt - start);
    QScrollBar *bar = list.verticalScrollBar();
    for (int step = 0; step <= 60; ++step) {
        bar->setValue(static_cast<int>(static_cast<qint64>(bar->maximum()) * step / 60));
        QElapsedTimer paint;
        paint.start();
        list.viewport()->repaint();
        arrival.scrollPaints.append(milliseconds(paint.nsecsElapsed()));
    }
    return arrival;
}

} // namespace

int main(int argc, char *argv[])
{
    drawOffscreenUnlessTold();
    QApplication application(argc, argv);
    QTextStream out(stdout);
    QCommandLineParser parser;
    parser.setApplicationDescription(u"The Changes list with about 100,000 changed files."_s);
    parser.addHelpOption();
    const QCommandLineOption fixtureOption(u"fixture"_s, u"Use this Git repository."_s, u"folder"_s);
    const QCommandLineOption runsOption(u"runs"_s, u"Measured loads (default 3)."_s, u"count"_s, u"3"_s);
    parser.addOptions({fixtureOption, runsOption});
    parser.process(application);
    const int runs = std::max(1, parser.value(runsOption).toInt());

    QTemporaryDir folder(QDir::tempPath() + u"/tillery-bench-XXXXXX"_s);
    QString repository = parser.value(fixtureOption);
    if (repository.isEmpty()) {
        repository = folder.filePath(u"git"_s);
        out << "generating the repository in " << repository << "\n";
        out.flush();
        if (!generateFixture(u"make_git_fixture.py"_s, {repository, u"--files"_s, u"110000"_s, u"--commits"_s, u"20"_s,
                                                        u"--changes"_s, u"100000"_s})) {
            out << "the fixture generator failed\n";
            return 1;
        }
    }
    repository = QDir(repository).absolutePath();

    const QByteArray status = runGit(GitTool::statusCommand(), repository).standardOutput;
    qsizetype rows = 0;
    const double parse = medianMilliseconds(7, [&] { rows = git::parseStatus(status).size(); });
    out << QString::asprintf("changed files: %lld; parsing the status output (%.1f MiB): %.1f ms (median of 7)\n",
                             static_cast<long long>(rows), static_cast<double>(status.size()) / (1024.0 * 1024.0),
                             parse);
    out.flush();

    QList<double> arrivals;
    QList<double> scrolls;
    for (int run = 0; run < runs; ++run) {
        const Arrival arrival = measureOnce(repository, rows);
        if (arrival.scrollPaints.isEmpty()) {
            out << "the list was never painted with the files\n";
            return 1;
        }
        out << QString::asprintf("run %d: adding the repository to the first paint %.1f ms; snapshot arrival to "
                                 "first paint %.1f ms\n",
                                 run + 1, arrival.wholeLoad, arrival.toFirstPaint);
        out.flush();
        arrivals.append(arrival.toFirstPaint);
        scrolls += arrival.scrollPaints;
    }
    std::sort(scrolls.begin(), scrolls.end());
    const double arrival = median(arrivals);
    out << QString::asprintf("snapshot arrival to first paint: %.1f ms (median); over parsing: %.2f (target: at most "
                             "1.5)\n",
                             arrival, arrival / parse);
    out << QString::asprintf("list paint while scrolling: median %.2f ms, slowest %.2f ms (%lld paints)\n",
                             median(scrolls), scrolls.last(), static_cast<long long>(scrolls.size()));
    out << QString::asprintf("peak memory: benchmark process %.1f MiB\n", peakResidentMiB());
    return 0;
}
