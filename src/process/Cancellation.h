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

// While it lives, every tool run on this thread also stops when its check
// says so: background work installs one, so that quitting or a superseded
// task ends the tools it started even where no check was handed down.
class RunCancellationScope {
public:
    explicit RunCancellationScope(CancellationCheck check);
    ~RunCancellationScope();
    RunCancellationScope(const RunCancellationScope &) = delete;
    RunCancellationScope &operator=(const RunCancellationScope &) = delete;

    // Whether a scope is installed on this thread, and whether it says stop.
    static bool isActive();
    static bool isCancelled();
    // The scopes in force on this thread as one check, for work this thread
    // hands to another and waits for.
    static CancellationCheck current();

private:
    static bool anySaysStop(const RunCancellationScope *innermost);

    CancellationCheck m_check;
    RunCancellationScope *m_outer;
};

} // namespace tillery
