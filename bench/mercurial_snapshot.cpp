// Loads a large generated Mercurial repository with loadMercurialSnapshot and
// compares its wall time with the same hg commands run directly, then reports
// peak memory. Prints its figures; asserts nothing.

#include "mercurial/MercurialCommands.h"
#include "mercurial/MercurialSnapshot.h"
#include "process/Executables.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>
#include <cstdio>
#include <malloc.h>
#include <sys/resource.h>

using namespace Qt::StringLiterals;
using namespace tillery;

namespace {

QTextStream &out()
{
    static QTextStream stream(stdout);
    return stream;
}

struct FixtureSize {
    int files = 50000;
    int changesets = 5000;
    int bookmarks = 36;
    int changes = 3200;
};

const QList<ToolCommand> &snapshotCommands()
{
    static const QList<ToolCommand> commands{
        mercurial::statusCommand(),        mercurial::unresolvedFilesCommand(),
        mercurial::historyCommand(),       mercurial::bookmarksCommand(),
        mercurial::bookmarkDatesCommand(), mercurial::currentBranchCommand(),
        mercurial::pathsCommand()};
    return commands;
}

// One command as a person would run it in a shell: same executable, same
// arguments, same environment, output read to the end.
qint64 runDirectly(const QString &hg, const ToolCommand &command, const QString &repository)
{
    QElapsedTimer timer;
    timer.start();
    QProcess process;
    process.setWorkingDirectory(repository);
    process.setProcessEnvironment(mercurialEnvironment());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(hg, QStringList{u"--noninteractive"_s} + command.arguments);
    process.waitForFinished(-1);
    process.readAllStandardOutput();
    return timer.nsecsElapsed();
}

QString printable(const QStringList &arguments)
{
    return arguments.join(u' ').replace(u'\t', u"\\t"_s).replace(u'\n', u"\\n"_s);
}

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double milliseconds(qint64 nanoseconds)
{
    return static_cast<double>(nanoseconds) / 1e6;
}

int measure(const QString &repository, int runs)
{
    const std::optional<QString> hg = findMercurialExecutable();
    if (!hg) {
        out() << "hg was not found\n";
        return 1;
    }

    // Warm the file-system cache so that the first timed run is not special.
    RepositorySnapshot snapshot = loadMercurialSnapshot(repository);

    QList<double> loadTimes;
    QList<double> directTimes;
    QList<QList<double>> perCommand(snapshotCommands().size());
    for (int run = 0; run < runs; ++run) {
        QElapsedTimer timer;
        timer.start();
        snapshot = loadMercurialSnapshot(repository);
        loadTimes.append(milliseconds(timer.nsecsElapsed()));

        qint64 direct = 0;
        for (qsizetype index = 0; index < snapshotCommands().size(); ++index) {
            const qint64 elapsed = runDirectly(*hg, snapshotCommands()[index], repository);
            perCommand[index].append(milliseconds(elapsed));
            direct += elapsed;
        }
        directTimes.append(milliseconds(direct));
    }

    const size_t heapBefore = mallinfo2().uordblks;
    std::optional<RepositorySnapshot> retained = loadMercurialSnapshot(repository);
    const size_t heapAfter = mallinfo2().uordblks;

    rusage self{};
    rusage children{};
    getrusage(RUSAGE_SELF, &self);
    getrusage(RUSAGE_CHILDREN, &children);

    out() << "repository: " << repository << "\n";
    out() << "snapshot: " << snapshot.files.size() << " working-copy changes, " << snapshot.history.size()
          << " changesets, " << snapshot.bookmarks.size() << " bookmarks\n";
    out() << "runs: " << runs << " (medians below)\n";
    for (qsizetype index = 0; index < snapshotCommands().size(); ++index) {
        out() << QString::asprintf("  hg %-40s %9.1f ms\n",
                                   qPrintable(printable(snapshotCommands()[index].arguments)),
                                   median(perCommand[index]));
    }
    const double load = median(loadTimes);
    const double direct = median(directTimes);
    out() << QString::asprintf("loadMercurialSnapshot:          %9.1f ms\n", load);
    out() << QString::asprintf("same seven hg commands directly: %8.1f ms\n", direct);
    out() << QString::asprintf("ratio: %.3f (target: at most 1.05)\n", load / direct);
    out() << QString::asprintf("heap held by one snapshot: %.2f MiB\n",
                               static_cast<double>(heapAfter - heapBefore) / (1024.0 * 1024.0));
    out() << QString::asprintf("peak memory: benchmark process %.1f MiB, largest hg child %.1f MiB\n",
                               static_cast<double>(self.ru_maxrss) / 1024.0,
                               static_cast<double>(children.ru_maxrss) / 1024.0);
    out().flush();
    return 0;
}

bool generateFixture(const QString &destination, const FixtureSize &size)
{
    const QString generator = QStringLiteral(TILLERY_SOURCE_DIR "/bench/make_mercurial_fixture.py");
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(u"/usr/bin/python3"_s,
                  {generator, destination, u"--files"_s, QString::number(size.files), u"--changesets"_s,
                   QString::number(size.changesets), u"--bookmarks"_s, QString::number(size.bookmarks),
                   u"--changes"_s, QString::number(size.changes)});
    return process.waitForFinished(-1) && process.exitStatus() == QProcess::NormalExit
           && process.exitCode() == 0;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Mercurial snapshot loading benchmark."_s);
    parser.addHelpOption();
    const QCommandLineOption fixtureOption(u"fixture"_s, u"Measure an existing repository."_s, u"folder"_s);
    const QCommandLineOption smallOption(u"small"_s, u"Generate a smaller repository (a tenth)."_s);
    const QCommandLineOption keepOption(u"keep"_s, u"Keep the generated repository."_s);
    const QCommandLineOption runsOption(u"runs"_s, u"Timed runs (default 5)."_s, u"count"_s, u"5"_s);
    parser.addOptions({fixtureOption, smallOption, keepOption, runsOption});
    parser.process(application);
    const int runs = std::max(1, parser.value(runsOption).toInt());

    if (parser.isSet(fixtureOption))
        return measure(QDir(parser.value(fixtureOption)).absolutePath(), runs);

    FixtureSize size;
    if (parser.isSet(smallOption))
        size = FixtureSize{5000, 500, 12, 320};
    QTemporaryDir folder(QDir::tempPath() + u"/tillery-bench-XXXXXX"_s);
    folder.setAutoRemove(!parser.isSet(keepOption));
    const QString repository = QDir(folder.path()).filePath(u"repository"_s);
    out() << "generating " << size.files << " files, " << size.changesets << " changesets, "
          << size.changes << " working-copy changes in " << repository << "\n";
    out().flush();
    if (!generateFixture(repository, size)) {
        out() << "the fixture generator failed\n";
        return 1;
    }
    // Measured in a child of its own, so that the generator's memory does not
    // count as the largest hg child's.
    QProcess measuring;
    measuring.setProcessChannelMode(QProcess::ForwardedChannels);
    measuring.start(QCoreApplication::applicationFilePath(),
                    {u"--fixture"_s, repository, u"--runs"_s, QString::number(runs)});
    measuring.waitForFinished(-1);
    if (parser.isSet(keepOption))
        out() << "kept " << repository << "\n";
    return measuring.exitCode();
}
