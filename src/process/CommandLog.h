#pragma once

#include "process/Failure.h"
#include "records/CommandLogEntry.h"

#include <QElapsedTimer>
#include <QMutex>

#include <deque>
#include <functional>
#include <map>
#include <optional>

namespace tillery {

// Every tool run of the process, newest last, for the Command Log. Any thread
// may record and read; only the newest `capacity` entries are kept.
class CommandLog {
public:
    static constexpr qsizetype capacity = commandLogCapacity;

    static CommandLog &shared();

    // Numbers the entry and keeps it, then tells the listeners (on the
    // recording thread, so they must only take note and return).
    void record(CommandLogEntry entry);
    // The kept entries numbered above `sequence`, oldest first.
    QList<CommandLogEntry> entriesAfter(quint64 sequence) const;
    void clear();

    // The listener is called after each new entry until it is removed; once
    // removeListener returns it is never called again.
    int addListener(std::function<void()> listener);
    void removeListener(int id);

private:
    mutable QMutex m_mutex;
    std::deque<CommandLogEntry> m_entries;
    quint64 m_lastSequence = 0;
    std::map<int, std::function<void()>> m_listeners;
    int m_lastListener = 0;
};

// A run being logged: it is recorded when it goes, with what it was last told
// of how it ended; a run told nothing was cancelled.
class LoggedRun {
public:
    LoggedRun(const QString &program, const QStringList &arguments,
              const QList<std::pair<QString, QString>> &environment, const std::optional<QString> &directory);
    ~LoggedRun();
    LoggedRun(const LoggedRun &) = delete;
    LoggedRun &operator=(const LoggedRun &) = delete;

    void exited(int status, bool accepted, bool crashed = false);
    void ended(CommandOutcome outcome) { m_entry.outcome = outcome; }
    void setServed() { m_entry.served = true; }

private:
    CommandLogEntry m_entry;
    QElapsedTimer m_timer;
};

// Runs `work` for the logged run; a run that fails to start is noted as such
// on the way out, a cancelled one needs nothing.
template <typename Work>
auto withLoggedFailures(LoggedRun &log, Work work)
{
    try {
        return work();
    } catch (const CancellationFailure &) {
        throw;
    } catch (...) {
        log.ended(CommandOutcome::notStarted);
        throw;
    }
}

} // namespace tillery
