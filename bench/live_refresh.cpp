// Live refresh on a generated repository of each kind with 5,000 working
// folders (and an ignored folder of 2,000 more, a file in each): how long setting up the
// watch takes, how long asking the tool about every folder takes next to
// listing every ignored file, and how many refreshes bursts of writes cause.
// Prints its figures; asserts nothing.
//
//     bench_live_refresh [folders]

#include "Measuring.h"
#include "SilentServices.h"

#include "model/AppModel.h"
#include "model/RepositoryWatcher.h"
#include "model/WatchPlan.h"
#include "process/ToolRunner.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QTextStream>
#include <QThread>

using namespace Qt::StringLiterals;
using namespace tillery;

namespace {

// Runs each command line (program first) in the folder, stopping at the first that fails.
bool runAll(const QString &folder, const QList<QStringList> &commands)
{
    return std::all_of(commands.cbegin(), commands.cend(), [&folder](const QStringList &command) {
        QProcess process;
        process.setWorkingDirectory(folder);
        process.start(command.first(), command.sliced(1));
        return process.waitForFinished(-1) && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    });
}

bool writeFile(const QString &path, const QByteArray &contents)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size();
}

// `folders` folders in two levels, a file in each, committed; node_modules
// with 2,000 ignored folders of its own.
bool makeRepository(RepositoryKind kind, const QString &root, int folders)
{
    const int perTop = 100;
    QDir base(root);
    for (int index = 0; index < folders; ++index) {
        const QString folder = u"part-%1/unit-%2"_s.arg(index / perTop).arg(index % perTop);
        if (!base.mkpath(folder) || !writeFile(root + u'/' + folder + u"/file.txt"_s, "contents\n"))
            return false;
    }
    for (int index = 0; index < 2000; ++index) {
        const QString package = u"node_modules/package-%1/lib"_s.arg(index);
        if (!base.mkpath(package) || !writeFile(root + u'/' + package + u"/index.js"_s, "module\n"))
            return false;
    }
    const bool git = kind == RepositoryKind::git;
    if (!writeFile(root + (git ? u"/.gitignore"_s : u"/.hgignore"_s),
                   git ? "node_modules/\n" : "syntax: glob\nnode_modules\n"))
        return false;
    if (git)
        return runAll(root, {{u"git"_s, u"init"_s, u"-q"_s},
                             {u"git"_s, u"add"_s, u"."_s},
                             {u"git"_s, u"-c"_s, u"user.name=Bench"_s, u"-c"_s, u"user.email=bench@example.com"_s,
                              u"commit"_s, u"-qm"_s, u"first"_s}});
    return runAll(root, {{u"hg"_s, u"init"_s},
                         {u"hg"_s, u"commit"_s, u"-qAm"_s, u"first"_s, u"-u"_s, u"Bench <bench@example.com>"_s}});
}

void waitUntil(const std::function<bool()> &done)
{
    while (!done()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        QThread::usleep(200);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    const int folders = argc > 1 ? std::max(1, QString::fromLocal8Bit(argv[1]).toInt()) : 5000;
    for (const RepositoryKind kind : {RepositoryKind::mercurial, RepositoryKind::git}) {
        const char *name = kind == RepositoryKind::git ? "git" : "mercurial";
        QTemporaryDir folder;
        const QString root = folder.filePath(u"repository"_s);
        if (!QDir().mkpath(root) || !makeRepository(kind, root, folders)) {
            out << "the repository could not be made\n";
            return 1;
        }
        const Repository repository{root, kind};

        // The watch alone.
        {
            BackgroundPool pool(2);
            ActivityState activity;
            RepositoryWatcher watcher(pool, activity);
            bool ready = false;
            QObject::connect(&watcher, &RepositoryWatcher::ready, [&ready] { ready = true; });
            QElapsedTimer timer;
            timer.start();
            watcher.watch(repository);
            waitUntil([&] { return ready; });
            out << QString::asprintf("%-10s watch set up in %7.1f ms: %lld working folders watched\n", name,
                                     bench::milliseconds(timer.nsecsElapsed()),
                                     static_cast<long long>(watcher.watchedFolderCount()));
        }

        // Asking about every folder, depth by depth, next to listing every ignored file.
        {
            QElapsedTimer timer;
            timer.start();
            const QStringList walked = walkWorkingFolders(root, {root}, ignoredQuery(repository));
            const double walking = bench::milliseconds(timer.nsecsElapsed());
            timer.restart();
            const ToolCommand everyIgnored =
                kind == RepositoryKind::git
                    ? ToolCommand{{u"ls-files"_s, u"--others"_s, u"--ignored"_s, u"--exclude-standard"_s, u"-z"_s}}
                    : ToolCommand{{u"status"_s, u"--ignored"_s, u"--no-status"_s, u"--print0"_s}};
            const auto listed =
                kind == RepositoryKind::git ? runGit(everyIgnored, root) : runMercurial(everyIgnored, root);
            out << QString::asprintf("%-10s walk asking about each depth %7.1f ms (%lld folders kept); "
                                     "listing every ignored file %7.1f ms (%lld bytes)\n",
                                     name, walking, static_cast<long long>(walked.size()),
                                     bench::milliseconds(timer.nsecsElapsed()),
                                     static_cast<long long>(listed.standardOutput.size()));
        }

        // Bursts through the model: how many refreshes they cause.
        QSettings settings(folder.filePath(u"settings.ini"_s), QSettings::IniFormat);
        bench::SilentPrompts prompts;
        bench::SilentDesktop desktop;
        AppModel model({settings, prompts, desktop, folder.filePath(u"icons"_s)});
        model.start();
        model.adoptRepository(repository);
        waitUntil([&] { return model.isIdle(); });
        for (const int writes : {200, 2000}) {
            int refreshed = 0;
            const QMetaObject::Connection counting =
                QObject::connect(&model.workspace(), &Workspace::snapshotChanged, [&refreshed] { ++refreshed; });
            QElapsedTimer timer;
            timer.start();
            for (int index = 0; index < writes; ++index) {
                writeFile(
                    root
                        + u"/part-%1/unit-%2/burst-%3-%4.txt"_s.arg(index % 50).arg(index % 100).arg(writes).arg(index),
                    "burst\n");
                QCoreApplication::processEvents();
            }
            const double burst = bench::milliseconds(timer.nsecsElapsed());
            waitUntil([&] { return model.isIdle(); });
            out << QString::asprintf("%-10s burst of %5d writes over %7.1f ms: %lld refreshes, idle again after "
                                     "%7.1f ms\n",
                                     name, writes, burst, static_cast<long long>(refreshed),
                                     bench::milliseconds(timer.nsecsElapsed()));
            QObject::disconnect(counting);
        }
        out.flush();
    }
    return 0;
}
