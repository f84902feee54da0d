#include "Cancellation.h"

#include "process/Failure.h"

#include <QDeadlineTimer>
#include <QSemaphore>
#include <QThread>
#include <QtConcurrent>

#include <atomic>

namespace tillery::test {

CancellationOutcome cancelWhileToolRuns(const FakeTool &tool,
                                        const std::function<void(const CancellationCheck &)> &work)
{
    CancellationOutcome outcome;
    QSemaphore finished;
    std::atomic<bool> threwCancellation = false;
    QFuture<void> future = QtConcurrent::run([&](QPromise<void> &promise) {
        try {
            work(cancellationOf(promise));
        } catch (const CancellationFailure &) {
            threwCancellation = true;
        } catch (...) {
        }
        finished.release();
    });

    const QDeadlineTimer startDeadline(10000);
    while (!(tool.processId() != 0 && processIsRunning(tool.processId())) && !startDeadline.hasExpired())
        QThread::msleep(1);
    outcome.childStarted = tool.processId() != 0;

    future.cancel();
    (void)finished.tryAcquire(1, 10000);
    outcome.threwCancellation = threwCancellation;
    outcome.childGone = !processIsRunning(tool.processId());
    future.waitForFinished();
    return outcome;
}

} // namespace tillery::test
