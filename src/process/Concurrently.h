#pragma once

#include "process/Cancellation.h"

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
