#include "process/ChildProcess.h"

#include <QProcess>

#ifdef Q_OS_UNIX
#include <cerrno>
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

void stopChild(QProcess &process)
{
    process.terminate();
    if (!process.waitForFinished(terminateGraceMilliseconds)) {
        process.kill();
        process.waitForFinished(-1);
    }
}

} // namespace tillery
