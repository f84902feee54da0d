#pragma once

#include "process/CancellableRun.h"
#include "process/Failure.h"

#include <QFuture>
#include <QObject>
#include <QPromise>
#include <QString>
#include <QThreadPool>
#include <QtConcurrent>

#include <exception>
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

// Runs `work` on the pool and hands its outcome to `done` on the context's
// thread; when the context is gone by then, or the returned future was
// cancelled, `done` never runs.
template <typename Work, typename Done>
QFuture<void> runInBackground(QThreadPool *pool, QObject *context, Work work, Done done)
{
    using Captured = background::OutcomeOf<std::invoke_result_t<Work &>>;
    QFuture<Captured> future =
        QtConcurrent::run(pool, [work = std::move(work)]() mutable { return background::captureOutcome(work); });
    future.then(context, [done = std::move(done)](Captured outcome) mutable { done(std::move(outcome)); });
    return QFuture<void>(future);
}

// The same for work that takes a cancellation check: cancelling the returned
// future stops the work's tool run, and `done` is then never called.
template <typename Work, typename Done>
QFuture<void> runCancellableInBackground(QThreadPool *pool, QObject *context, Work work, Done done)
{
    using Captured = background::OutcomeOf<std::invoke_result_t<Work &, const CancellationCheck &>>;
    QFuture<Captured> future = QtConcurrent::run(pool, [work = std::move(work)](QPromise<Captured> &promise) mutable {
        const CancellationCheck isCancelled = cancellationOf(promise);
        auto bound = [&] { return work(isCancelled); };
        Captured outcome = background::captureOutcome(bound);
        if (!promise.isCanceled())
            promise.addResult(std::move(outcome));
    });
    future.then(context, [done = std::move(done)](Captured outcome) mutable { done(std::move(outcome)); });
    return QFuture<void>(future);
}

} // namespace tillery
