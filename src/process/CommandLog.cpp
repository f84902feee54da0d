#include "process/CommandLog.h"

#include "process/RemoteAddress.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

QString masked(const QString &text)
{
    // Only a URL can carry a password; most arguments are spared the pattern.
    return text.contains(u"://"_s) ? withPasswordsMasked(text) : text;
}

} // namespace

CommandLog &CommandLog::shared()
{
    static CommandLog log;
    return log;
}

void CommandLog::record(CommandLogEntry entry)
{
    const QMutexLocker locker(&m_mutex);
    entry.sequence = ++m_lastSequence;
    m_entries.push_back(std::move(entry));
    if (qsizetype(m_entries.size()) > capacity)
        m_entries.pop_front();
    for (const auto &[id, listener] : m_listeners)
        listener();
}

QList<CommandLogEntry> CommandLog::entriesAfter(quint64 sequence) const
{
    const QMutexLocker locker(&m_mutex);
    auto first = std::partition_point(m_entries.begin(), m_entries.end(),
                                      [sequence](const CommandLogEntry &entry) { return entry.sequence <= sequence; });
    return QList<CommandLogEntry>(first, m_entries.end());
}

void CommandLog::clear()
{
    const QMutexLocker locker(&m_mutex);
    m_entries.clear();
}

int CommandLog::addListener(std::function<void()> listener)
{
    const QMutexLocker locker(&m_mutex);
    m_listeners.emplace(++m_lastListener, std::move(listener));
    return m_lastListener;
}

void CommandLog::removeListener(int id)
{
    const QMutexLocker locker(&m_mutex);
    m_listeners.erase(id);
}

LoggedRun::LoggedRun(const QString &program, const QStringList &arguments,
                     const QList<std::pair<QString, QString>> &environment, const std::optional<QString> &directory)
{
    m_timer.start();
    m_entry.started = QDateTime::currentDateTimeUtc();
    m_entry.directory = directory.value_or(QString());
    m_entry.program = program;
    m_entry.arguments.reserve(arguments.size());
    for (const QString &argument : arguments)
        m_entry.arguments.append(masked(argument));
    for (const auto &[name, value] : environment)
        m_entry.environment.append({name, masked(value)});
    m_entry.outcome = CommandOutcome::cancelled;
}

LoggedRun::~LoggedRun()
{
    if (m_entry.outcome != CommandOutcome::exited && m_entry.outcome != CommandOutcome::crashed)
        m_entry.durationMilliseconds = m_timer.elapsed();
    CommandLog::shared().record(std::move(m_entry));
}

void LoggedRun::exited(int status, bool accepted, bool crashed)
{
    m_entry.durationMilliseconds = m_timer.elapsed();
    m_entry.status = status;
    m_entry.statusAccepted = accepted && !crashed;
    m_entry.outcome = crashed ? CommandOutcome::crashed : CommandOutcome::exited;
}

} // namespace tillery
