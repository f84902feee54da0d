// Measures how long the main thread's event loop goes without running while
// the application model refreshes a large repository and loads diffs. A
// timer ticks every millisecond; the longest gap between two ticks is the
// longest stall a person could feel. Prints its figures; asserts nothing.

#include "Measuring.h"
#include "SilentServices.h"
#include "SnapshotBenchmark.h"

#include "model/AppModel.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace tillery;

namespace {

struct StallFigures {
    double longestGap = 0;
    double gap99 = 0;
    double wall = 0;
};

// Runs `action`, then spins the event loop until `done` says the work is
// over, probing for stalls meanwhile.
template <typename Action, typename Done>
StallFigures measure(Action action, Done done)
{
    QElapsedTimer wall;
    QEventLoop loop;
    QTimer poll;
    poll.setInterval(5);
    QObject::connect(&poll, &QTimer::timeout, [&] {
        if (done())
            loop.quit();
    });
    wall.start();
    const bench::StallProbe probe;
    action();
    poll.start();
    loop.exec();
    return {probe.longest(), probe.percentile(0.99), bench::milliseconds(wall.nsecsElapsed())};
}

void report(QTextStream &out, const QString &what, const StallFigures &figures)
{
    out << QString::asprintf("  %-44s longest stall %6.1f ms, 99th percentile %5.1f ms, over %7.0f ms\n",
                             qPrintable(what), figures.longestGap, figures.gap99, figures.wall);
    out.flush();
}

void measureRepository(QTextStream &out, const Repository &repository, int runs)
{
    QTemporaryDir folder;
    QSettings settings(folder.filePath(u"settings.ini"_s), QSettings::IniFormat);
    bench::SilentPrompts prompts;
    bench::SilentDesktop desktop;
    AppModel model({settings, prompts, desktop, folder.filePath(u"icons"_s)});
    model.start();
    out << "repository: " << repository.path << " (" << rawValue(repository.kind) << ")\n";

    const auto idle = [&model] { return model.runningBackgroundWork() == 0 && !model.activityState().isBusy(); };
    const auto diffShown = [&model] {
        return model.runningBackgroundWork() == 0 && !model.diffSelection().isLoadingDiff();
    };
    report(out, u"adding and first refresh"_s, measure([&] { model.adoptRepository(repository); }, idle));
    for (int run = 0; run < runs; ++run)
        report(out, u"refresh"_s, measure([&] { model.refresh(); }, idle));

    const QList<WorkingFile> files = model.workspace().snapshot().files;
    for (qsizetype index = 0; index < std::min<qsizetype>(files.size(), runs); ++index) {
        const WorkingFile file = files[index * (files.size() / std::max(runs, 1))];
        report(out, u"diff of "_s + file.path.section(u'/', -1), measure([&] { model.selectFile(file); }, diffShown));
    }
    model.setTab(WorkspaceTab::history);
    const QList<Changeset> history = model.workspace().snapshot().history;
    if (!history.isEmpty()) {
        report(out, u"newest changeset, its files and first diff"_s,
               measure([&] { model.selectChangeset(history.first()); },
                       [&] { return diffShown() && !model.diffSelection().changesetFiles().isEmpty(); }));
    }
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Main-thread stalls of the application model on large repositories."_s);
    parser.addHelpOption();
    const QCommandLineOption mercurialOption(u"mercurial"_s, u"Use this Mercurial repository."_s, u"folder"_s);
    const QCommandLineOption gitOption(u"git"_s, u"Use this Git repository."_s, u"folder"_s);
    const QCommandLineOption smallOption(u"small"_s, u"Generate smaller repositories (a tenth)."_s);
    const QCommandLineOption runsOption(u"runs"_s, u"Refreshes and diffs each (default 3)."_s, u"count"_s, u"3"_s);
    parser.addOptions({mercurialOption, gitOption, smallOption, runsOption});
    parser.process(application);
    const int runs = std::max(1, parser.value(runsOption).toInt());

    QTemporaryDir folder(QDir::tempPath() + u"/tillery-bench-XXXXXX"_s);
    QString mercurial = parser.value(mercurialOption);
    QString git = parser.value(gitOption);
    const bool small = parser.isSet(smallOption);
    if (mercurial.isEmpty() && git.isEmpty()) {
        mercurial = folder.filePath(u"mercurial"_s);
        git = folder.filePath(u"git"_s);
        const QStringList hgSize =
            small ? QStringList{u"--files"_s, u"5000"_s, u"--changesets"_s, u"500"_s, u"--changes"_s, u"320"_s}
                  : QStringList{};
        const QStringList gitSize =
            small ? QStringList{u"--files"_s, u"5000"_s, u"--commits"_s, u"500"_s, u"--changes"_s, u"320"_s}
                  : QStringList{};
        out << "generating the repositories in " << folder.path() << "\n";
        out.flush();
        if (!bench::generateFixture(u"make_mercurial_fixture.py"_s, QStringList{mercurial} + hgSize)
            || !bench::generateFixture(u"make_git_fixture.py"_s,
                                       QStringList{git} + gitSize + QStringList{u"--remote"_s})) {
            out << "the fixture generator failed\n";
            return 1;
        }
    }
    if (!mercurial.isEmpty())
        measureRepository(out, Repository{QDir(mercurial).absolutePath(), RepositoryKind::mercurial}, runs);
    if (!git.isEmpty())
        measureRepository(out, Repository{QDir(git).absolutePath(), RepositoryKind::git}, runs);
    out << "target: no stall longer than 16 ms\n";
    return 0;
}
