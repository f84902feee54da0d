#pragma once

#include "records/CommandOutput.h"

#include <QProcessEnvironment>
#include <QPromise>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace tillery {

// Asked every few milliseconds while a cancellable command runs.
using CancellationCheck = std::function<bool()>;

// The cancellation of the task that a promise belongs to: cancelling its
// QFuture stops a command that runs under this check.
template <typename T>
CancellationCheck cancellationOf(const QPromise<T> &promise)
{
    return [&promise] { return promise.isCanceled(); };
}

// Runs a command with both streams captured in temporary files
// ("tillery-command-<UUID>.stdout/.stderr", removed on every path) and looks
// at the cancellation check every 5 ms. When it reports cancellation the
// child is terminated (killed if it will not go) and CancellationFailure is
// thrown. The exit status is not judged; the caller does that. The caller
// supplies the complete argument list; without an environment the child
// inherits the application's.
CommandOutput runCommand(const QString &executable, const QStringList &arguments,
                         const QString &directory,
                         const std::optional<QProcessEnvironment> &environment,
                         const CancellationCheck &isCancelled);

} // namespace tillery
