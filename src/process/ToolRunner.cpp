#include "process/ToolRunner.h"

#include "process/ChildProcess.h"
#include "process/CommandLog.h"
#include "process/CommandServerPool.h"
#include "process/Executables.h"
#include "process/MercurialConfigurationFiles.h"
#include "process/Progress.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>

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
    QStringList leadingArguments;
    QProcessEnvironment environment;
    std::optional<QString> (*latestProgress)(QByteArrayView);
    // What makes the tool report progress on a pipe rather than a terminal;
    // placed after the leading arguments, never part of the caller's.
    QStringList progressArguments;
    QList<std::pair<QString, QString>> progressEnvironment;
    // What makes the tool ask through a credential channel, after the leading arguments.
    QStringList (*credentialArguments)(const CredentialChannel &);
};

constexpr int controlPollMilliseconds = 5;
constexpr qint64 progressIntervalMilliseconds = 250;

bool isCancelled(const RunControl &control)
{
    return (control.isCancelled && control.isCancelled()) || RunCancellationScope::isCancelled();
}

// Watches a running child for the controller: stops it when asked, and passes
// on the newest progress phrase of its error stream a few times a second.
void superviseRun(QProcess &process, const ToolInvocation &tool, const RunControl &control, QByteArray &standardError)
{
    QString lastReported;
    QElapsedTimer sinceReport;
    while (!process.waitForFinished(controlPollMilliseconds) && process.state() != QProcess::NotRunning) {
        if (isCancelled(control)) {
            stopChild(process);
            throw CancellationFailure();
        }
        if (!control.progress || (sinceReport.isValid() && sinceReport.elapsed() < progressIntervalMilliseconds))
            continue;
        standardError += process.readAllStandardError();
        const std::optional<QString> progress = tool.latestProgress(standardError);
        if (progress && *progress != lastReported) {
            lastReported = *progress;
            control.progress(lastReported);
            sinceReport.start();
        }
    }
}

// What the runner puts before the command's arguments for this run.
QStringList runArguments(const ToolInvocation &tool, const RunControl &control)
{
    return control.progress ? tool.leadingArguments + tool.progressArguments : tool.leadingArguments;
}

// What the runner sets in the environment for this run alone.
QList<std::pair<QString, QString>> runEnvironment(const ToolInvocation &tool, const RunControl &control)
{
    return control.progress ? control.environment + tool.progressEnvironment : control.environment;
}

template <typename ToolFailureType>
FinishedRun runToEnd(const ToolInvocation &tool, const QStringList &arguments, const std::optional<QString> &directory,
                     const RunControl &control)
{
    if (!tool.executable)
        throw ToolFailureType::notInstalled();
    if (isCancelled(control))
        throw CancellationFailure();

    QProcess process;
    process.setProgram(*tool.executable);
    QProcessEnvironment environment = tool.environment;
    for (const auto &[name, value] : runEnvironment(tool, control))
        environment.insert(name, value);
    // The credential channel stays out of the command log: a run repeated by hand asks on its terminal.
    QStringList fullArguments = runArguments(tool, control);
    if (control.credentials) {
        addCredentialVariables(environment, *control.credentials);
        fullArguments += tool.credentialArguments(*control.credentials);
    }
    process.setArguments(fullArguments + arguments);
    if (directory)
        process.setWorkingDirectory(*directory);
    process.setProcessEnvironment(environment);
    const bool withInput = !control.input.isEmpty() || control.lateInput;
    if (!withInput)
        process.setStandardInputFile(QProcess::nullDevice());
    if (control.credentials)
        runWithoutTerminal(process);
    else
        runAtBackgroundPriority(process);

    process.start();
    if (!process.waitForStarted(-1))
        throw PlatformFailure::launchFailed(*tool.executable, process.errorString());
    if (withInput) {
        process.write(control.lateInput ? control.lateInput() : control.input);
        process.closeWriteChannel();
    }

    // QProcess drains both pipes while it waits, so a child with a large
    // output never blocks on a full pipe.
    FinishedRun run;
    if (control.isCancelled || control.progress || RunCancellationScope::isActive())
        superviseRun(process, tool, control, run.standardError);
    process.waitForFinished(-1);
    if (isCancelled(control))
        throw CancellationFailure();
    run.standardOutput = process.readAllStandardOutput();
    run.standardError += process.readAllStandardError();
    run.crashed = process.exitStatus() == QProcess::CrashExit;
    run.status = process.exitCode();
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
            mercurialLeadingArguments(),
            mercurialEnvironment(),
            latestMercurialProgress,
            {u"--config=progress.assume-tty=true"_s, u"--config=progress.delay=0"_s, u"--config=progress.refresh=0.2"_s,
             u"--config=progress.format=topic number"_s},
            // Plain mode keeps quiet about progress unless told otherwise.
            {{u"HGPLAINEXCEPT"_s, u"progress"_s}},
            mercurialCredentialArguments};
}

ToolInvocation gitInvocation()
{
    // Git is asked for progress by the commands themselves ("--progress").
    return {findGitExecutable(),
            gitLeadingArguments(),
            gitEnvironment(),
            latestGitProgress,
            {},
            {},
            [](const CredentialChannel &) { return QStringList(); }};
}

// The run of a command on one of the repository's command servers, or
// nullopt where it has to run as a process of its own.
std::optional<FinishedRun> runOnCommandServer(const ToolInvocation &tool, const QStringList &arguments,
                                              const std::optional<QString> &directory, const RunControl &control)
{
    const bool needsOwnProcess = control.progress || control.ownProcess || !control.environment.isEmpty()
                                 || !control.input.isEmpty() || control.lateInput || control.credentials;
    if (!tool.executable || !directory || needsOwnProcess || !QFileInfo(*directory + u"/.hg"_s).isDir())
        return std::nullopt;
    if (isCancelled(control))
        throw CancellationFailure();
    const ServerLaunch launch{*tool.executable,
                              tool.leadingArguments + QStringList{u"serve"_s, u"--cmdserver"_s, u"pipe"_s},
                              tool.environment.toStringList(), *directory};
    const QByteArray configuration = mercurialConfigurationFingerprint(*tool.executable, tool.environment, *directory);
    const std::optional<ServedRun> served = CommandServerPool::shared().run(
        launch, configuration, tool.leadingArguments + arguments, [&control] { return isCancelled(control); });
    if (!served)
        return std::nullopt;
    return FinishedRun{served->standardOutput, served->standardError, served->status, false};
}

} // namespace

CommandOutput runMercurial(const ToolCommand &command, const std::optional<QString> &directory,
                           const RunControl &control)
{
    const ToolInvocation tool = mercurialInvocation();
    LoggedRun log(u"hg"_s, runArguments(tool, control) + command.arguments, runEnvironment(tool, control), directory);
    const FinishedRun run = withLoggedFailures(log, [&] {
        std::optional<FinishedRun> served = runOnCommandServer(tool, command.arguments, directory, control);
        if (!served)
            return runToEnd<MercurialFailure>(tool, command.arguments, directory, control);
        log.setServed();
        return *served;
    });
    log.exited(run.status, command.acceptedStatuses.contains(run.status), run.crashed);
    return judge<MercurialFailure>(run, command.arguments, command.acceptedStatuses);
}

CommandOutput runGit(const ToolCommand &command, const std::optional<QString> &directory, const RunControl &control)
{
    const ToolInvocation tool = gitInvocation();
    LoggedRun log(u"git"_s, runArguments(tool, control) + command.arguments, runEnvironment(tool, control), directory);
    const FinishedRun run =
        withLoggedFailures(log, [&] { return runToEnd<GitFailure>(tool, command.arguments, directory, control); });
    log.exited(run.status, command.acceptedStatuses.contains(run.status), run.crashed);
    return judge<GitFailure>(run, command.arguments, command.acceptedStatuses);
}

std::unique_ptr<ToolStream> streamGit(const ToolCommand &command, const QString &directory)
{
    const ToolInvocation tool = gitInvocation();
    // Recorded when the stream goes: judged, or let go before its end.
    auto log = std::make_shared<LoggedRun>(u"git"_s, tool.leadingArguments + command.arguments,
                                           QList<std::pair<QString, QString>>(), directory);
    const PipedChild child = withLoggedFailures(*log, [&] {
        if (!tool.executable)
            throw GitFailure::notInstalled();
        if (RunCancellationScope::isCancelled())
            throw CancellationFailure();
        const std::optional<PipedChild> started = startPipedChild(
            {*tool.executable, tool.leadingArguments + command.arguments, tool.environment.toStringList(), directory},
            false, true);
        if (!started)
            throw PlatformFailure::launchFailed(
                *tool.executable,
                QCoreApplication::translate("tillery::ToolRunner", "The program could not be started."));
        return *started;
    });
    return std::make_unique<ToolStream>(
        child, [log, arguments = command.arguments, accepted = command.acceptedStatuses](const CommandOutput &output) {
            log->exited(output.status, accepted.contains(output.status));
            if (!accepted.contains(output.status))
                throw GitFailure::rejected(arguments, output);
        });
}

} // namespace tillery
