#pragma once

#include "process/CancellableRun.h"
#include "process/ToolCommand.h"
#include "process/ToolFailure.h"
#include "records/CommandOutput.h"

#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

namespace tillery {

// Runs hg (with "--noninteractive" first) or git (with "--no-pager" first)
// and blocks until it exits; only for background threads. The caller names
// the exit statuses it accepts; any other status is a `command` failure that
// carries the caller's arguments and the tool's error and output text.
// Standard error goes through a temporary file that is removed on every path.
//
// These two are the only doors to the tools for repository work.
CommandOutput runMercurial(const QStringList &arguments, const std::optional<QString> &directory,
                           const QSet<int> &acceptedStatuses);
CommandOutput runGit(const QStringList &arguments, const std::optional<QString> &directory,
                     const QSet<int> &acceptedStatuses);

// What a long tool run obeys and reports while it runs.
struct RunControl {
    // Asked every few milliseconds; when it says so the child is stopped and
    // CancellationFailure is thrown.
    CancellationCheck isCancelled;
    // Given the newest progress phrase ("Receiving objects: 45%") a few times
    // a second, on the thread that runs the tool.
    std::function<void(const QString &)> progress;
};

CommandOutput runMercurial(const ToolCommand &command, const std::optional<QString> &directory,
                           const RunControl &control);
CommandOutput runGit(const ToolCommand &command, const std::optional<QString> &directory, const RunControl &control);

inline CommandOutput runMercurial(const ToolCommand &command, const std::optional<QString> &directory)
{
    return runMercurial(command.arguments, directory, command.acceptedStatuses);
}

inline CommandOutput runGit(const ToolCommand &command, const std::optional<QString> &directory)
{
    return runGit(command.arguments, directory, command.acceptedStatuses);
}

} // namespace tillery
