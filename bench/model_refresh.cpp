// Refreshes a one-file repository of each kind through the application model
// and reports how long each refresh takes until the model is idle again: the
// first one after start-up apart, then the median of the rest. Prints its
// figures; asserts nothing.

#include "Measuring.h"
#include "SilentServices.h"

#include "model/AppModel.h"

#include <QCoreApplication>
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

bool run(const QString &program, const QStringList &arguments, const QString &directory)
{
    QProcess process;
    process.setWorkingDirectory(directory);
    process.start(program, arguments);
    return process.waitForFinished(-1) && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

bool makeRepository(RepositoryKind kind, const QString &folder)
{
    QFile file(folder + u"/readme.txt"_s);
    if (!file.open(QIODevice::WriteOnly) || file.write("one file\n") != 9)
        return false;
    file.close();
    const QStringList identity{u"-c"_s, u"user.name=Bench"_s, u"-c"_s, u"user.email=bench@example.com"_s};
    if (kind == RepositoryKind::git)
        return run(u"git"_s, {u"init"_s, u"-q"_s}, folder) && run(u"git"_s, {u"add"_s, u"."_s}, folder)
               && run(u"git"_s, identity + QStringList{u"commit"_s, u"-qm"_s, u"first"_s}, folder);
    return run(u"hg"_s, {u"init"_s}, folder)
           && run(u"hg"_s, {u"commit"_s, u"-Am"_s, u"first"_s, u"-u"_s, u"Bench <bench@example.com>"_s}, folder);
}

// Milliseconds from the action until the model is idle again.
template <typename Action>
double timed(AppModel &model, Action action)
{
    QElapsedTimer timer;
    timer.start();
    action();
    while (!model.isIdle()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        QThread::usleep(200);
    }
    return bench::milliseconds(timer.nsecsElapsed());
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    const int runs = argc > 1 ? std::max(1, QString::fromLocal8Bit(argv[1]).toInt()) : 20;
    for (const RepositoryKind kind : {RepositoryKind::mercurial, RepositoryKind::git}) {
        QTemporaryDir folder;
        if (!makeRepository(kind, folder.path())) {
            out << "the repository could not be made\n";
            return 1;
        }
        QSettings settings(folder.filePath(u".settings.ini"_s), QSettings::IniFormat);
        bench::SilentPrompts prompts;
        bench::SilentDesktop desktop;
        AppModel model({settings, prompts, desktop, folder.filePath(u".icons"_s)});
        model.start();
        const double first = timed(model, [&] { model.adoptRepository(Repository{folder.path(), kind}); });
        QList<double> refreshes;
        for (int index = 0; index < runs; ++index)
            refreshes.append(timed(model, [&] { model.refresh(); }));
        out << QString::asprintf("%-10s first refresh after start-up %7.1f ms; then median %6.1f ms over %d runs%s\n",
                                 kind == RepositoryKind::git ? "git" : "mercurial", first, bench::median(refreshes),
                                 runs, kind == RepositoryKind::mercurial ? " (target: at most 80)" : "");
        out.flush();
    }
    return 0;
}
