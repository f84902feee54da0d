#pragma once

#include <QPromise>

#include <functional>

namespace tillery {

// Asked every few milliseconds while cancellable work runs.
using CancellationCheck = std::function<bool()>;

// The cancellation of the task that a promise belongs to: cancelling its
// QFuture stops work that runs under this check.
template <typename T>
CancellationCheck cancellationOf(const QPromise<T> &promise)
{
    return [&promise] { return promise.isCanceled(); };
}

} // namespace tillery
