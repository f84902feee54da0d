#include "process/ToolRunner.h"

#include "process/ChildProcess.h"
#include "process/Executables.h"
#include "process/Progress.h"
#include "records/UuidText.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

struct FinishedRun {
    QByteArray standardOutput;
    QByteArray standardError;
    int status = 0;
    bool crashed = false;
};

// Everything that distinguishes a Mercurial run from a Git run.
struct ToolInvocation {
    std::optional<QString> executable;
    QString leadingArgument;
    QString errorFilePrefix;
    QProcessEnvironment environment;
    std::optional<QString> (*latestProgress)(QByteArrayView);
    // What makes the tool report progress on a file rather than a terminal;
    // placed after the leading argument, never part of the caller's.
    QStringList progressArguments;
};

constexpr int controlPollMilliseconds = 20;
constexpr qint64 progressIntervalMilliseconds = 250;

// Watches a running child for the controller: stops it when asked, and passes
// on the newest progress phrase of its error stream a few times a second.
void superviseRun(QProcess &process, const QString &errorPath, const ToolInvocation &tool,
                  const RunControl &control, QByteArray &standardOutput)
{
    QFile errorStream(errorPath);
    errorStream.open(QIODevice::ReadOnly);
    QByteArray errorSoFar;
    QString lastReported;
    QElapsedTimer sinceReport;
    while (!process.waitForFinished(controlPollMilliseconds) && process.state() != QProcess::NotRunning) {
        standardOutput += process.readAllStandardOutput();
        if (control.isCancelled && control.isCancelled()) {
            stopChild(process);
            throw CancellationFailure();
        }
        if (!control.progress || (sinceReport.isValid() && sinceReport.elapsed() < progressIntervalMilliseconds))
            continue;
        errorSoFar += errorStream.readAll();
        const std::optional<QString> progress = tool.latestProgress(errorSoFar);
        if (progress && *progress != lastReported) {
            lastReported = *progress;
            control.progress(lastReported);
            sinceReport.start();
        }
    }
}

template <typename ToolFailureType>
FinishedRun runBlocking(const ToolInvocation &tool, const QStringList &arguments,
                        const std::optional<QString> &directory, const RunControl *control)
{
    if (!tool.executable)
        throw ToolFailureType::notInstalled();

    const QString errorPath =
        QDir(QDir::tempPath()).filePath(tool.errorFilePrefix + freshUuidText() + u".stderr"_s);
    {
        QFile errorFile(errorPath);
        if (!errorFile.open(QIODevice::WriteOnly))
            throw ToolFailureType::malformedOutput(u"could not create a temporary error stream"_s);
    }
    const auto removeErrorFile = qScopeGuard([&errorPath] { QFile::remove(errorPath); });

    QProcess process;
    process.setProgram(*tool.executable);
    QStringList fullArguments{tool.leadingArgument};
    if (control && control->progress)
        fullArguments += tool.progressArguments;
    process.setArguments(fullArguments + arguments);
    if (directory)
        process.setWorkingDirectory(*directory);
    process.setProcessEnvironment(tool.environment);
    process.setStandardInputFile(QProcess::nullDevice());
    runAtBackgroundPriority(process);
    process.setStandardErrorFile(errorPath);
    process.setReadChannel(QProcess::StandardOutput);

    process.start();
    if (!process.waitForStarted(-1))
        throw PlatformFailure::launchFailed(*tool.executable, process.errorString());

    // Read while the child runs so that a large output never fills the pipe.
    FinishedRun run;
    if (control && (control->isCancelled || control->progress)) {
        superviseRun(process, errorPath, tool, *control, run.standardOutput);
    } else {
        while (process.waitForReadyRead(-1))
            run.standardOutput += process.readAllStandardOutput();
    }
    process.waitForFinished(-1);
    run.standardOutput += process.readAllStandardOutput();
    run.crashed = process.exitStatus() == QProcess::CrashExit;
    run.status = process.exitCode();

    QFile errorFile(errorPath);
    if (errorFile.open(QIODevice::ReadOnly))
        run.standardError = errorFile.readAll();
    return run;
}

template <typename ToolFailureType>
CommandOutput judge(FinishedRun run, const QStringList &arguments, const QSet<int> &accepted)
{
    CommandOutput output{std::move(run.standardOutput), std::move(run.standardError), run.status};
    if (run.crashed || !accepted.contains(run.status))
        throw ToolFailureType::rejected(arguments, output);
    return output;
}

ToolInvocation mercurialInvocation()
{
    return {findMercurialExecutable(),
            mercurialLeadingArgument(),
            u"dockside-"_s,
            mercurialEnvironment(),
            latestMercurialProgress,
            {u"--config"_s, u"progress.assume-tty=true"_s, u"--config"_s, u"progress.delay=0"_s, u"--config"_s,
             u"progress.refresh=0.2"_s, u"--config"_s, u"progress.format=topic number"_s}};
}

ToolInvocation gitInvocation()
{
    // Git is asked for progress by the commands themselves ("--progress").
    return {findGitExecutable(), gitLeadingArgument(), u"dockside-git-"_s, gitEnvironment(), latestGitProgress, {}};
}

} // namespace

CommandOutput runMercurial(const QStringList &arguments, const std::optional<QString> &directory,
                           const QSet<int> &acceptedStatuses)
{
    return judge<MercurialFailure>(runBlocking<MercurialFailure>(mercurialInvocation(), arguments, directory, nullptr),
                                   arguments, acceptedStatuses);
}

CommandOutput runGit(const QStringList &arguments, const std::optional<QString> &directory,
                     const QSet<int> &acceptedStatuses)
{
    return judge<GitFailure>(runBlocking<GitFailure>(gitInvocation(), arguments, directory, nullptr), arguments,
                             acceptedStatuses);
}

CommandOutput runMercurial(const ToolCommand &command, const std::optional<QString> &directory,
                           const RunControl &control)
{
    return judge<MercurialFailure>(
        runBlocking<MercurialFailure>(mercurialInvocation(), command.arguments, directory, &control),
        command.arguments, command.acceptedStatuses);
}

CommandOutput runGit(const ToolCommand &command, const std::optional<QString> &directory, const RunControl &control)
{
    return judge<GitFailure>(runBlocking<GitFailure>(gitInvocation(), command.arguments, directory, &control),
                             command.arguments, command.acceptedStatuses);
}

} // namespace tillery
