#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <utility>

namespace tillery {

// How many of the newest entries the Command Log keeps.
constexpr qsizetype commandLogCapacity = 5000;

// How a logged tool run ended.
enum class CommandOutcome {
    exited,
    // Killed by a signal, or ended without an exit status.
    crashed,
    cancelled,
    // The program was missing or could not be started.
    notStarted,
};

// One tool command that Tillery ran, as the Command Log shows it: enough to
// run it again by hand. Passwords in it are already masked; what the tool was
// given on its standard input is never kept.
struct CommandLogEntry {
    // Counts up over the life of the process; newer entries have larger ones.
    quint64 sequence = 0;
    QDateTime started;
    // The folder it ran in; empty when it ran in no particular folder.
    QString directory;
    // "hg" or "git".
    QString program;
    // The runner's leading arguments, then the command's own.
    QStringList arguments;
    // Set for this run only, on top of the usual environment.
    QList<std::pair<QString, QString>> environment;
    qint64 durationMilliseconds = 0;
    CommandOutcome outcome = CommandOutcome::exited;
    int status = 0;
    // The command allows this status: a search that found nothing, say.
    bool statusAccepted = true;
    // Answered by a Mercurial command server rather than a process of its own.
    bool served = false;

    bool succeeded() const { return outcome == CommandOutcome::exited && statusAccepted; }

    friend bool operator==(const CommandLogEntry &, const CommandLogEntry &) = default;
};

// The word as a POSIX shell reads it back: unchanged when it holds nothing
// the shell treats specially, otherwise in single quotes.
QString shellQuoted(const QString &word);

// The command as a shell line: the per-run environment as a prefix, then
// the program and its arguments, each quoted as needed.
QString commandLineText(const CommandLogEntry &entry);

// The line to paste into a terminal: the command run in its folder.
QString repeatableCommandText(const CommandLogEntry &entry);

} // namespace tillery
