#pragma once

#include "process/Cancellation.h"
#include "process/CredentialChannel.h"
#include "process/ToolCommand.h"
#include "process/ToolFailure.h"
#include "process/ToolStream.h"
#include "records/CommandOutput.h"

#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

namespace tillery {

// What a tool run obeys and reports while it runs.
struct RunControl {
    // Asked every few milliseconds (as is the thread's RunCancellationScope);
    // when it says so the child is stopped and CancellationFailure is thrown.
    CancellationCheck isCancelled;
    // Given the newest progress phrase ("Receiving objects: 45%") a few times
    // a second, on the thread that runs the tool.
    std::function<void(const QString &)> progress;
    // Runs the command as a process of its own even where a command server
    // could serve it.
    bool ownProcess = false;
    // Set in the tool's environment for this run only (a run with any is a
    // process of its own).
    QList<std::pair<QString, QString>> environment = {};
    // Given to the tool on its standard input (a run with any is a process
    // of its own); without it the tool reads nothing.
    QByteArray input = {};
    // Called once the child has started, for its standard input: the tool
    // starts up while its input is still being worked out.
    std::function<QByteArray()> lateInput = {};
    // For a command that talks to a remote: how the tool asks for
    // credentials (a run with one is a process of its own, without a
    // terminal).
    std::optional<CredentialChannel> credentials = std::nullopt;
};

// Runs hg or git with the runner's fixed leading arguments first and blocks
// until it exits; only for background threads. Both streams are collected
// in memory, so a run leaves nothing behind. The command names the exit
// statuses it accepts; any other status is a `command` failure that carries
// the command's arguments and the tool's error and output text (a lock held
// by another process is a `locked` failure).
//
// Mercurial commands in a repository go to one of its command servers
// (see CommandServerPool), which answer them exactly as a process of their
// own would, without paying Python's start-up each time; commands that
// report progress, and any a server cannot take, run as processes of their
// own.
//
// These two, and streamGit below, are the only doors to the tools.
CommandOutput runMercurial(const ToolCommand &command, const std::optional<QString> &directory,
                           const RunControl &control = {});
CommandOutput runGit(const ToolCommand &command, const std::optional<QString> &directory,
                     const RunControl &control = {});

// Starts git for output read a piece at a time (a long log, for one); the
// stream judges the exit status as runGit does once the output has ended.
std::unique_ptr<ToolStream> streamGit(const ToolCommand &command, const QString &directory);

inline CommandOutput runMercurial(const QStringList &arguments, const std::optional<QString> &directory,
                                  const QSet<int> &acceptedStatuses)
{
    return runMercurial(ToolCommand{arguments, acceptedStatuses}, directory);
}

inline CommandOutput runGit(const QStringList &arguments, const std::optional<QString> &directory,
                            const QSet<int> &acceptedStatuses)
{
    return runGit(ToolCommand{arguments, acceptedStatuses}, directory);
}

} // namespace tillery
