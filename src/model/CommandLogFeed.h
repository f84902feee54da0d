#pragma once

#include "records/CommandLogEntry.h"

#include <QObject>

#include <atomic>

namespace tillery {

// The process's Command Log for the views: new entries arrive on the main
// thread in batches, however many runs end meanwhile on other threads.
class CommandLogFeed final : public QObject {
    Q_OBJECT

public:
    explicit CommandLogFeed(QObject *parent = nullptr);
    ~CommandLogFeed() override;

    // The kept entries, oldest first.
    QList<CommandLogEntry> entries() const;
    // Forgets the entries so far, for every view.
    void clear();

Q_SIGNALS:
    // Entries recorded since the last batch, oldest first.
    void entriesAdded(const QList<CommandLogEntry> &entries);
    void cleared();

private:
    void deliver();

    int m_listener;
    std::atomic<bool> m_deliveryPosted = false;
    quint64 m_delivered = 0;
};

} // namespace tillery
