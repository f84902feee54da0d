#pragma once

#include "process/Cancellation.h"
#include "process/Failure.h"

#include <QObject>
#include <QFuture>
#include <QString>
#include <QThreadPool>
#include <QtConcurrent>

#include <atomic>
#include <exception>
#include <memory>
#include <functional>
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
    explicit BackgroundTask(std::shared_ptr<std::atomic<bool>> cancelled) : m_cancelled(std::move(cancelled)) {}

    void cancel()
    {
        if (m_cancelled)
            m_cancelled->store(true);
    }

private:
    std::shared_ptr<std::atomic<bool>> m_cancelled;
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
// meanwhile. Qt drops the continuation when the context is gone.
template <typename Captured, typename Work, typename Done>
BackgroundTask start(QThreadPool *pool, QObject *context, Work work, Done done)
{
    auto cancelled = std::make_shared<std::atomic<bool>>(false);
    QFuture<Captured> future = QtConcurrent::run(pool, [work = std::move(work), cancelled]() mutable {
        const CancellationCheck isCancelled = [cancelled] { return cancelled->load(); };
        auto bound = [&] { return work(isCancelled); };
        return captureOutcome(bound);
    });
    future.then(context, [done = std::move(done), cancelled](Captured outcome) mutable {
        if (!cancelled->load())
            done(std::move(outcome));
    });
    return BackgroundTask(cancelled);
}

} // namespace background

// Runs `work` on the pool and hands its outcome to `done` on the context's
// thread; when the context is gone by then, or the task was cancelled, `done`
// never runs.
template <typename Work, typename Done>
BackgroundTask runInBackground(QThreadPool *pool, QObject *context, Work work, Done done)
{
    using Captured = background::OutcomeOf<std::invoke_result_t<Work &>>;
    return background::start<Captured>(
        pool, context, [work = std::move(work)](const CancellationCheck &) mutable { return work(); },
        std::move(done));
}

// The same for work that takes a cancellation check: cancelling the returned
// task stops the work's tool run, and `done` is then never called.
template <typename Work, typename Done>
BackgroundTask runCancellableInBackground(QThreadPool *pool, QObject *context, Work work, Done done)
{
    using Captured = background::OutcomeOf<std::invoke_result_t<Work &, const CancellationCheck &>>;
    return background::start<Captured>(pool, context, std::move(work), std::move(done));
}

} // namespace tillery
