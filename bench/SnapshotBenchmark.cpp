#include "SnapshotBenchmark.h"

#include "process/CommandServerPool.h"

#include "Measuring.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>
#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace tillery::bench {

namespace {

QTextStream &out()
{
    static QTextStream stream(stdout);
    return stream;
}

QString printable(const QStringList &arguments)
{
    const QString text = commandLine(arguments);
    return text.size() > 60 ? text.first(57) + u"..."_s : text;
}

// Loads once with the tool variable pointing at a wrapper that records each
// command line before handing over to the real tool.
QList<QStringList> commandsOfOneLoad(const SnapshotLoader &loader, const QString &repository)
{
    QTemporaryDir folder;
    const QString log = folder.filePath(u"commands"_s);
    const QString wrapper = folder.filePath(u"tool"_s);
    QFile script(wrapper);
    script.open(QIODevice::WriteOnly);
    // A command server would hide the commands it serves: the wrapper will not be one.
    script.write("#!/bin/sh\ncase \"$*\" in *'serve --cmdserver pipe'*) exit 97 ;; esac\n"
                 "for a in \"$@\"; do printf '%s\\037' \"$a\"; done >> '"
                 + log.toUtf8() + "'\nprintf '\\036' >> '" + log.toUtf8() + "'\nexec '" + loader.executable.toUtf8()
                 + "' \"$@\"\n");
    script.close();
    script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);

    const QByteArray previous = qgetenv(loader.toolVariable);
    qputenv(loader.toolVariable, wrapper.toUtf8());
    loader.load(repository);
    qputenv(loader.toolVariable, previous);

    QFile recorded(log);
    recorded.open(QIODevice::ReadOnly);
    QList<QStringList> commands;
    for (const QByteArray &line : recorded.readAll().split('\x1e')) {
        if (line.isEmpty())
            continue;
        QStringList arguments;
        for (const QByteArray &argument : line.split('\x1f'))
            arguments.append(QString::fromUtf8(argument));
        arguments.removeLast();
        commands.append(arguments);
    }
    return commands;
}

qint64 runDirectly(const SnapshotLoader &loader, const QStringList &arguments, const QString &repository)
{
    QElapsedTimer timer;
    timer.start();
    QProcess process;
    process.setWorkingDirectory(repository);
    process.setProcessEnvironment(loader.environment);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(loader.executable, arguments);
    while (process.waitForReadyRead(-1))
        process.readAllStandardOutput();
    process.waitForFinished(-1);
    return timer.nsecsElapsed();
}

} // namespace

BenchmarkOptions parseBenchmarkOptions(const QCoreApplication &application, const QString &description)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(description);
    parser.addHelpOption();
    const QCommandLineOption fixtureOption(u"fixture"_s, u"Measure an existing repository."_s, u"folder"_s);
    const QCommandLineOption smallOption(u"small"_s, u"Generate smaller repositories (a tenth)."_s);
    const QCommandLineOption keepOption(u"keep"_s, u"Keep the generated repositories."_s);
    const QCommandLineOption runsOption(u"runs"_s, u"Timed runs (default 5)."_s, u"count"_s, u"5"_s);
    parser.addOptions({fixtureOption, smallOption, keepOption, runsOption});
    parser.process(application);
    const QString fixture = parser.value(fixtureOption);
    return BenchmarkOptions{fixture.isEmpty() ? QString() : QDir(fixture).absolutePath(), parser.isSet(smallOption),
                            parser.isSet(keepOption), std::max(1, parser.value(runsOption).toInt())};
}

int measureSnapshotLoading(const SnapshotLoader &loader, const QString &repository, int runs)
{
    const QList<QStringList> commands = commandsOfOneLoad(loader, repository);
    // The first load after start-up pays for starting the tool's servers, if it keeps any.
    stopAllCommandServers();
    loader.forgetCaches();
    QElapsedTimer firstTimer;
    firstTimer.start();
    RepositorySnapshot snapshot = loader.load(repository);
    const double firstLoad = milliseconds(firstTimer.nsecsElapsed());
    const auto isStatus = [](const QStringList &command) { return command.contains(u"status"_s); };
    const qsizetype statusIndex = std::find_if(commands.cbegin(), commands.cend(), isStatus) - commands.cbegin();

    QList<double> loadTimes;
    QList<double> directTimes;
    QList<QList<double>> perCommand(commands.size());
    for (int run = 0; run < runs; ++run) {
        QElapsedTimer timer;
        timer.start();
        snapshot = loader.load(repository);
        loadTimes.append(milliseconds(timer.nsecsElapsed()));

        qint64 direct = 0;
        for (qsizetype index = 0; index < commands.size(); ++index) {
            const qint64 elapsed = runDirectly(loader, commands[index], repository);
            perCommand[index].append(milliseconds(elapsed));
            direct += elapsed;
        }
        directTimes.append(milliseconds(direct));
    }

    const size_t heapBefore = heapInUse();
    std::optional<RepositorySnapshot> retained = loader.load(repository);
    const size_t heapAfter = heapInUse();
    rusage self{};
    rusage children{};
    getrusage(RUSAGE_SELF, &self);
    getrusage(RUSAGE_CHILDREN, &children);

    const double load = median(loadTimes);
    const double direct = median(directTimes);
    out() << "repository: " << repository << "\n";
    out() << "snapshot: " << snapshot.files.size() << " working-copy changes, " << snapshot.history.size()
          << " history entries, " << snapshot.bookmarks.size() << " bookmarks or branches\n";
    out() << "runs: " << runs << " (medians); the " << commands.size() << " commands of one load, run directly:\n";
    // A run of commands that differ only in a branch or remote name is summed on one line.
    for (qsizetype start = 0; start < commands.size();) {
        qsizetype end = start + 1;
        while (end < commands.size() && commands[end].mid(0, 3) == commands[start].mid(0, 3))
            ++end;
        if (end - start < 3)
            end = start + 1;
        double time = 0;
        for (qsizetype index = start; index < end; ++index)
            time += median(perCommand[index]);
        const QString label = end - start > 1
                                  ? printable(commands[start].mid(0, 3)) + u" ... x"_s + QString::number(end - start)
                                  : printable(commands[start]);
        out() << QString::asprintf("  %-66s %9.1f ms %5.1f%%\n", qPrintable(label), time, 100.0 * time / direct);
        start = end;
    }
    out() << QString::asprintf("%-32s %9.1f ms\n", qPrintable(loader.title + u':'), load);
    out() << QString::asprintf("%-32s %9.1f ms\n", "same commands run directly:", direct);
    out() << QString::asprintf("ratio: %.3f\n", load / direct);
    out() << QString::asprintf("first load after start-up:       %9.1f ms\n", firstLoad);
    if (statusIndex < commands.size()) {
        const double status = median(perCommand[statusIndex]);
        out() << QString::asprintf(
            "status alone, run directly:      %9.1f ms; load / status %.3f (target: at most %s), first load / "
            "status %.3f\n",
            status, load / status, loader.title.contains(u"Git"_s) ? "1.2" : "1.1", firstLoad / status);
    }
    out() << QString::asprintf("heap held by one snapshot: %.2f MiB\n",
                               static_cast<double>(heapAfter - heapBefore) / (1024.0 * 1024.0));
    out() << QString::asprintf("peak memory: benchmark process %.1f MiB, largest tool child %.1f MiB\n",
                               static_cast<double>(self.ru_maxrss) / 1024.0,
                               static_cast<double>(children.ru_maxrss) / 1024.0);
    out().flush();
    return 0;
}

bool generateFixture(const QString &script, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(u"/usr/bin/python3"_s,
                  QStringList{QStringLiteral(TILLERY_SOURCE_DIR "/bench/") + script} + arguments);
    return process.waitForFinished(-1) && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

std::optional<QByteArray> fixtureScriptOutput(const QString &script, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(u"/bin/bash"_s, QStringList{QStringLiteral(TILLERY_SOURCE_DIR "/bench/") + script} + arguments);
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return std::nullopt;
    return process.readAllStandardOutput();
}

int measureInChild(const QStringList &arguments)
{
    out().flush();
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedChannels);
    child.start(QCoreApplication::applicationFilePath(), arguments);
    child.waitForFinished(-1);
    return child.exitStatus() == QProcess::NormalExit ? child.exitCode() : 1;
}

} // namespace tillery::bench
