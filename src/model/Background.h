#pragma once

#include "process/Cancellation.h"
#include "process/Failure.h"

#include <QFuture>
#include <QObject>
#include <QPromise>
#include <QString>
#include <QThreadPool>
#include <QtConcurrent>

#include <atomic>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <variant>

namespace tillery {

// What a piece of background work ended with: its value, or the description
// of its failure. A cancelled piece never reaches its continuation.
template <typename T>
struct Outcome {
    std::optional<T> value;
    QString failure;

    bool succeeded() const { return value.has_value(); }
};

// The result of work that returns nothing.
using Done = std::monostate;

// A handle on background work that can stop it: its tool run ends (when it
// has a cancellation check) and its continuation never runs. Copies share the
// same work; a default handle stops nothing.
class BackgroundTask {
public:
    BackgroundTask() = default;
    explicit BackgroundTask(std::shared_ptr<std::atomic<bool>> cancelled)
        : m_cancelled(std::move(cancelled))
    {
    }

    void cancel()
    {
        if (m_cancelled)
            m_cancelled->store(true);
    }

private:
    std::shared_ptr<std::atomic<bool>> m_cancelled;
};

// The workers of one model. Stopping it cancels every task it runs: their
// tool runs end within a fraction of a second, and no continuation runs.
class BackgroundPool {
public:
    explicit BackgroundPool(int threadCount);
    // Stops what still runs and waits for it a short while.
    ~BackgroundPool();
    BackgroundPool(const BackgroundPool &) = delete;
    BackgroundPool &operator=(const BackgroundPool &) = delete;

    QThreadPool *threads() const { return m_threads; }
    bool isStopping() const { return m_stopping->load(); }
    const std::shared_ptr<std::atomic<bool>> &stoppingFlag() const { return m_stopping; }
    // Cancels every task and waits at most this long for them to end;
    // whether they all did.
    bool stop(int milliseconds);

private:
    QThreadPool *m_threads;
    std::shared_ptr<std::atomic<bool>> m_stopping = std::make_shared<std::atomic<bool>>(false);
};

namespace background {

QString describe(const std::exception_ptr &error);

template <typename Result>
using OutcomeOf = Outcome<std::conditional_t<std::is_void_v<Result>, Done, Result>>;

template <typename Work>
OutcomeOf<std::invoke_result_t<Work &>> captureOutcome(Work &work)
{
    using Result = std::invoke_result_t<Work &>;
    using Value = std::conditional_t<std::is_void_v<Result>, Done, Result>;
    try {
        if constexpr (std::is_void_v<Result>) {
            work();
            return Outcome<Value>{Done{}, {}};
        } else {
            return Outcome<Value>{work(), {}};
        }
    } catch (...) {
        return Outcome<Value>{std::nullopt, describe(std::current_exception())};
    }
}

} // namespace background

namespace background {

// Runs `work` (given the cancellation check) on the pool and hands its
// outcome to `done` on the context's thread, unless the task was cancelled
// or the pool stopped meanwhile. Every tool run of the work obeys the same
// check. Qt drops the continuation when the context is gone.
template <typename Captured, typename Work, typename Done>
BackgroundTask start(BackgroundPool *pool, QObject *context, Work work, Done done)
{
    auto cancelled = std::make_shared<std::atomic<bool>>(false);
    const CancellationCheck isCancelled = [cancelled, stopping = pool->stoppingFlag()] {
        return cancelled->load() || stopping->load();
    };
    // The continuation is attached before the work starts: attached to a
    // future that has already finished, it would run at once, inside the
    // call that started the work.
    auto promise = std::make_shared<QPromise<Captured>>();
    promise->future().then(context, [done = std::move(done), isCancelled](Captured outcome) mutable {
        if (!isCancelled())
            done(std::move(outcome));
    });
    pool->threads()->start([promise, work = std::move(work), isCancelled]() mutable {
        const RunCancellationScope scope(isCancelled);
        auto bound = [&] { return work(isCancelled); };
        promise->start();
        promise->addResult(captureOutcome(bound));
        promise->finish();
    });
    return BackgroundTask(cancelled);
}

} // namespace background

// Runs `work` on the pool and hands its outcome to `done` on the context's
// thread; when the context is gone by then, or the task was cancelled, `done`
// never runs.
template <typename Work, typename Done>
BackgroundTask runInBackground(BackgroundPool *pool, QObject *context, Work work, Done done)
{
    using Captured = background::OutcomeOf<std::invoke_result_t<Work &>>;
    return background::start<Captured>(
        pool, context, [work = std::move(work)](const CancellationCheck &) mutable { return work(); }, std::move(done));
}

// The same for work that takes a cancellation check: cancelling the returned
// task stops the work's tool run, and `done` is then never called.
template <typename Work, typename Done>
BackgroundTask runCancellableInBackground(BackgroundPool *pool, QObject *context, Work work, Done done)
{
    using Captured = background::OutcomeOf<std::invoke_result_t<Work &, const CancellationCheck &>>;
    return background::start<Captured>(pool, context, std::move(work), std::move(done));
}

} // namespace tillery
