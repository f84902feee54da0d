#include "process/ChildProcess.h"

#include <QProcess>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <csignal>
#include <unistd.h>
#endif

namespace tillery {

namespace {
constexpr int terminateGraceMilliseconds = 200;
} // namespace

void runAtBackgroundPriority(QProcess &process)
{
#ifdef Q_OS_UNIX
    process.setChildProcessModifier([] {
        const int savedErrno = errno;
        // A failure only leaves the child at the application's priority.
        (void)nice(backgroundNiceness);
        errno = savedErrno;
    });
#else
    Q_UNUSED(process);
#endif
}

namespace {

// A child that leads a process group of its own (one started in a session
// of its own) is stopped with everything it started: ssh, and the helper
// that asks for a password, would otherwise outlive it.
void signalGroupItLeads([[maybe_unused]] QProcess &process, [[maybe_unused]] bool force)
{
#ifdef Q_OS_UNIX
    const pid_t child = pid_t(process.processId());
    if (child > 0 && getpgid(child) == child)
        (void)::kill(-child, force ? SIGKILL : SIGTERM);
#endif
}

} // namespace

void stopChild(QProcess &process)
{
    signalGroupItLeads(process, false);
    process.terminate();
    if (!process.waitForFinished(terminateGraceMilliseconds)) {
        signalGroupItLeads(process, true);
        process.kill();
        process.waitForFinished(-1);
    }
}

} // namespace tillery
