#include "model/CommandLogFeed.h"

#include "process/CommandLog.h"

namespace tillery {

CommandLogFeed::CommandLogFeed(QObject *parent)
    : QObject(parent)
{
    const QList<CommandLogEntry> kept = CommandLog::shared().entriesAfter(0);
    m_delivered = kept.isEmpty() ? 0 : kept.last().sequence;
    m_listener = CommandLog::shared().addListener([this] {
        // One delivery waits at a time; it takes everything recorded until it runs.
        if (!m_deliveryPosted.exchange(true))
            QMetaObject::invokeMethod(this, &CommandLogFeed::deliver, Qt::QueuedConnection);
    });
}

CommandLogFeed::~CommandLogFeed()
{
    CommandLog::shared().removeListener(m_listener);
}

QList<CommandLogEntry> CommandLogFeed::entries() const
{
    return CommandLog::shared().entriesAfter(0);
}

void CommandLogFeed::clear()
{
    CommandLog::shared().clear();
    Q_EMIT cleared();
}

void CommandLogFeed::deliver()
{
    m_deliveryPosted = false;
    const QList<CommandLogEntry> added = CommandLog::shared().entriesAfter(m_delivered);
    if (added.isEmpty())
        return;
    m_delivered = added.last().sequence;
    Q_EMIT entriesAdded(added);
}

} // namespace tillery
