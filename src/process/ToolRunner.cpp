#include "process/ToolRunner.h"

#include "process/ChildPriority.h"
#include "process/Executables.h"
#include "records/UuidText.h"

#include <QDir>
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
};

template <typename ToolFailureType>
FinishedRun runBlocking(const ToolInvocation &tool, const QStringList &arguments,
                        const std::optional<QString> &directory)
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
    process.setArguments(QStringList{tool.leadingArgument} + arguments);
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
    while (process.waitForReadyRead(-1))
        run.standardOutput += process.readAllStandardOutput();
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

} // namespace

CommandOutput runMercurial(const QStringList &arguments, const std::optional<QString> &directory,
                           const QSet<int> &acceptedStatuses)
{
    const ToolInvocation mercurial{findMercurialExecutable(), mercurialLeadingArgument(),
                                   u"dockside-"_s, mercurialEnvironment()};
    return judge<MercurialFailure>(runBlocking<MercurialFailure>(mercurial, arguments, directory),
                                   arguments, acceptedStatuses);
}

CommandOutput runGit(const QStringList &arguments, const std::optional<QString> &directory,
                     const QSet<int> &acceptedStatuses)
{
    const ToolInvocation git{findGitExecutable(), gitLeadingArgument(), u"dockside-git-"_s,
                             gitEnvironment()};
    return judge<GitFailure>(runBlocking<GitFailure>(git, arguments, directory), arguments,
                             acceptedStatuses);
}

} // namespace tillery
