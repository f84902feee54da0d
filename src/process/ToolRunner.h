#pragma once

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

inline CommandOutput runMercurial(const ToolCommand &command, const std::optional<QString> &directory)
{
    return runMercurial(command.arguments, directory, command.acceptedStatuses);
}

inline CommandOutput runGit(const ToolCommand &command, const std::optional<QString> &directory)
{
    return runGit(command.arguments, directory, command.acceptedStatuses);
}

} // namespace tillery
