#include "integrations/Launcher.h"

#include "records/TextDecoding.h"

#include <QCoreApplication>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace tillery {

#ifdef Q_OS_MACOS
bool openGhosttyWindow(const QString &folder);
#endif

namespace {

std::optional<QString> startDetached(const LaunchPlan &plan)
{
    QProcess process;
    process.setProgram(plan.program);
    process.setArguments(plan.arguments);
    process.setWorkingDirectory(plan.workingDirectory);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    if (!process.startDetached())
        return QCoreApplication::translate("tillery::Launcher", "%1 could not be started: %2")
            .arg(plan.applicationName, process.errorString());
    return std::nullopt;
}

std::optional<QString> runToEnd(const LaunchPlan &plan)
{
    QProcess process;
    process.setProgram(plan.program);
    process.setArguments(plan.arguments);
    process.setWorkingDirectory(plan.workingDirectory);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start();
    if (!process.waitForStarted(-1))
        return process.errorString();
    process.waitForFinished(-1);
    if (process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0)
        return std::nullopt;
    const QString error = decodeUtf8OrEmpty(process.readAllStandardError()).trimmed();
    return error.isEmpty() ? QCoreApplication::translate("tillery::Launcher", "%1 could not open the repository.")
                                 .arg(plan.applicationName)
                           : error;
}

} // namespace

std::optional<QString> launch(const LaunchPlan &plan)
{
    switch (plan.start) {
    case LaunchPlan::Start::detached:
        return startDetached(plan);
    case LaunchPlan::Start::awaited:
        return runToEnd(plan);
    case LaunchPlan::Start::ghosttyService:
#ifdef Q_OS_MACOS
        if (openGhosttyWindow(plan.workingDirectory))
            return std::nullopt;
#endif
        return QCoreApplication::translate(
            "tillery::Launcher", "Ghostty could not open the repository. Check that Ghostty is still installed.");
    }
    Q_UNREACHABLE();
    return std::nullopt;
}

} // namespace tillery
