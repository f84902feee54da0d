#pragma once

#include "process/Cancellation.h"

#include <QList>

#include <future>
#include <type_traits>

namespace tillery {

// Starts `work` on a thread of its own while the caller goes on with other
// work; get() on the result waits for it and rethrows what it threw. Tool
// runs in `work` stop when the caller's own runs would (the caller's
// cancellation scopes hold for it), and the caller waits for it in any case:
// the returned future joins the thread when it goes.
template <typename Work>
std::future<std::invoke_result_t<Work &>> startConcurrently(Work work)
{
    return std::async(std::launch::async, [work = std::move(work), check = RunCancellationScope::current()]() mutable {
        const RunCancellationScope scope(check);
        return work();
    });
}

// The results of `work(index)` for every index below `count`, in order; the
// second half is worked out on a thread of its own while the caller does
// the first, when there are enough to be worth a thread.
template <typename Work>
QList<std::invoke_result_t<Work &, qsizetype>> mappedInTwo(qsizetype count, Work work)
{
    using Result = std::invoke_result_t<Work &, qsizetype>;
    const auto range = [&work](qsizetype from, qsizetype to) {
        QList<Result> results;
        results.reserve(to - from);
        for (qsizetype index = from; index < to; ++index)
            results.append(work(index));
        return results;
    };
    constexpr qsizetype worthAThread = 16;
    if (count < worthAThread)
        return range(0, count);
    const qsizetype half = count / 2;
    // Should the first half fail, its failure is the one seen: the second is waited for as the future goes.
    std::future<QList<Result>> second = startConcurrently([&range, half, count] { return range(half, count); });
    QList<Result> results = range(0, half);
    results.append(second.get());
    return results;
}

// Called from a catch block of work that ran beside `startedFirst`: throws
// the failure of the work started first if it failed too, else the one being
// handled; the failure seen is the one a run one after the other would give.
template <typename T>
[[noreturn]] void rethrowInOrder(std::future<T> &startedFirst)
{
    startedFirst.get();
    throw;
}

} // namespace tillery
