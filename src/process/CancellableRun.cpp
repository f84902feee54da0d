#include "process/CancellableRun.h"

#include "process/ChildProcess.h"
#include "process/Failure.h"
#include "records/UuidText.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

constexpr int pollMilliseconds = 5;

bool createEmptyFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly);
}

QByteArray readCapture(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw PlatformFailure(u"The captured output %1 could not be read: %2"_s.arg(
            path, file.errorString()));
    return file.readAll();
}

} // namespace

CommandOutput runCommand(const QString &executable, const QStringList &arguments,
                         const QString &directory,
                         const std::optional<QProcessEnvironment> &environment,
                         const CancellationCheck &isCancelled)
{
    if (isCancelled())
        throw CancellationFailure();

    const QString stem = QDir(QDir::tempPath()).filePath(u"tillery-command-"_s + freshUuidText());
    const QString outputPath = stem + u".stdout"_s;
    const QString errorPath = stem + u".stderr"_s;
    const auto removeCaptures = qScopeGuard([&] {
        QFile::remove(outputPath);
        QFile::remove(errorPath);
    });
    const bool outputCreated = createEmptyFile(outputPath);
    if (!outputCreated || !createEmptyFile(errorPath))
        throw PlatformFailure::fileWriteUnknown();

    QProcess process;
    process.setProgram(executable);
    process.setArguments(arguments);
    process.setWorkingDirectory(directory);
    if (environment)
        process.setProcessEnvironment(*environment);
    process.setStandardInputFile(QProcess::nullDevice());
    runAtBackgroundPriority(process);
    process.setStandardOutputFile(outputPath);
    process.setStandardErrorFile(errorPath);

    process.start();
    if (!process.waitForStarted(-1))
        throw PlatformFailure::launchFailed(executable, process.errorString());

    while (!process.waitForFinished(pollMilliseconds) && process.state() != QProcess::NotRunning) {
        if (isCancelled()) {
            stopChild(process);
            throw CancellationFailure();
        }
    }
    if (isCancelled())
        throw CancellationFailure();

    return CommandOutput{readCapture(outputPath), readCapture(errorPath), process.exitCode()};
}

} // namespace tillery
