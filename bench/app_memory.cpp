// Peak memory of the application with the large benchmark repositories
// open: the real model and main window (offscreen) add each repository,
// show its changes and a diff, then its newest changeset with its files,
// and go on to the next. Prints resident memory after each step; asserts
// nothing.

#include "Measuring.h"
#include "Offscreen.h"
#include "SilentServices.h"
#include "SnapshotBenchmark.h"

#include "model/AppModel.h"
#include "process/RepositoryDetection.h"
#include "ui/MainWindow.h"
#include "ui/ViewSettings.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDeadlineTimer>
#include <QDir>
#include <QSettings>
#include <QTemporaryDir>
#include <QTextStream>
#include <QThread>

using namespace Qt::StringLiterals;
using namespace tillery;
using namespace tillery::bench;

namespace {

void waitUntilIdle(const AppModel &model)
{
    const QDeadlineTimer deadline(600000);
    int quietTurns = 0;
    while (!deadline.hasExpired() && quietTurns < 5) {
        QApplication::processEvents(QEventLoop::AllEvents, 20);
        const bool idle = model.runningBackgroundWork() == 0 && !model.activityState().isBusy()
                          && !model.diffSelection().isLoadingDiff();
        quietTurns = idle ? quietTurns + 1 : 0;
        QThread::msleep(5);
    }
}

void report(QTextStream &out, const QString &step)
{
    out << QString::asprintf("  %-52s resident %7.1f MiB, peak %7.1f MiB\n", qPrintable(step), residentMiB(),
                             peakResidentMiB());
    out.flush();
}

} // namespace

int main(int argc, char *argv[])
{
    drawOffscreenUnlessTold();
    QApplication application(argc, argv);
    QTextStream out(stdout);
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Peak memory of the application with large repositories open."_s);
    parser.addHelpOption();
    const QCommandLineOption repositoryOption(u"repository"_s,
                                              u"Open this repository (repeatable); without it the large benchmark "
                                              "repositories are generated."_s,
                                              u"folder"_s);
    const QCommandLineOption smallOption(u"small"_s, u"Generate smaller repositories (a tenth)."_s);
    parser.addOptions({repositoryOption, smallOption});
    parser.process(application);

    QTemporaryDir folder(QDir::tempPath() + u"/tillery-bench-XXXXXX"_s);
    QStringList paths = parser.values(repositoryOption);
    if (paths.isEmpty()) {
        const bool small = parser.isSet(smallOption);
        const QString tenth = small ? u"10"_s : u"1"_s;
        const auto scaled = [&](int count) { return QString::number(count / tenth.toInt()); };
        const QList<std::pair<QString, QStringList>> fixtures{
            {u"make_mercurial_fixture.py"_s,
             {folder.filePath(u"mercurial"_s), u"--files"_s, scaled(50000), u"--changesets"_s, scaled(5000)}},
            {u"make_git_fixture.py"_s,
             {folder.filePath(u"git-wide"_s), u"--files"_s, scaled(50000), u"--commits"_s, scaled(5000),
              u"--remote"_s}},
            {u"make_git_fixture.py"_s,
             {folder.filePath(u"git-deep"_s), u"--files"_s, scaled(5000), u"--commits"_s, scaled(200000)}},
        };
        out << "generating the repositories in " << folder.path() << "\n";
        out.flush();
        for (const auto &[script, arguments] : fixtures) {
            if (!generateFixture(script, arguments)) {
                out << "the fixture generator failed\n";
                return 1;
            }
            paths.append(arguments.first());
        }
    }

    QSettings settings(folder.filePath(u"settings.ini"_s), QSettings::IniFormat);
    SilentPrompts prompts;
    SilentDesktop desktop;
    AppModel model({settings, prompts, desktop, folder.filePath(u"icons"_s)});
    ViewSettings viewSettings(settings);
    MainWindow window(model, viewSettings);
    window.show();
    model.start();
    waitUntilIdle(model);
    out << QString::asprintf("application started: resident %.1f MiB\n", residentMiB());

    for (const QString &path : std::as_const(paths)) {
        const Repository repository = detectRepository(QDir(path).absolutePath());
        out << repository.path << " (" << rawValue(repository.kind) << ")\n";
        model.setTab(WorkspaceTab::changes);
        model.adoptRepository(repository);
        waitUntilIdle(model);
        report(out, u"changes listed (%1 files)"_s.arg(model.workspace().snapshot().files.size()));
        const QList<WorkingFile> files = model.workspace().snapshot().files;
        if (!files.isEmpty()) {
            model.selectChangeFiles({files.first()});
            waitUntilIdle(model);
            report(out, u"diff of "_s + files.first().path.section(u'/', -1));
        }
        model.setTab(WorkspaceTab::history);
        const QList<Changeset> history = model.workspace().snapshot().history;
        if (!history.isEmpty()) {
            model.selectChangeset(history.first());
            waitUntilIdle(model);
            report(out, u"history (%1 changesets), newest one's files"_s.arg(history.size()));
        }
    }
    out << QString::asprintf("peak memory of the application: %.1f MiB; largest tool child %.1f MiB\n",
                             peakResidentMiB(), largestChildMiB());
    return 0;
}
