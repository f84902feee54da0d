#pragma once

#include "process/Cancellation.h"
#include "process/CommandServer.h"

#include <QList>
#include <QString>
#include <map>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

namespace tillery {

// The command servers of the repositories in use: at most two per
// repository, so that two queries of one refresh can run side by side.
// A server is started on first use and kept while it is used; it is
// replaced once the configuration it read has changed on disk, and stopped
// after some idle minutes, when its repository leaves the list and when the
// application quits.
class CommandServerPool {
public:
    static CommandServerPool &shared();

    CommandServerPool();
    ~CommandServerPool();
    CommandServerPool(const CommandServerPool &) = delete;
    CommandServerPool &operator=(const CommandServerPool &) = delete;

    // Runs the command on a server started as `launch` says, whose
    // configuration had `configuration` as its fingerprint. nullopt when no
    // server can run it now: none could be started (a later command tries
    // again), or the one it ran on died or made no sense; the caller then
    // runs the command as a process of its own. Throws CancellationFailure.
    std::optional<ServedRun> run(const ServerLaunch &launch, const QByteArray &configuration,
                                 const QStringList &arguments, const CancellationCheck &isCancelled);

    // Stops the servers of a repository, or every server.
    void stopServersIn(const QString &directory);
    void stopAll();

    // The processes of the running servers.
    QList<qint64> processIds() const;

private:
    using Clock = std::chrono::steady_clock;
    struct IdleServer {
        std::unique_ptr<CommandServer> server;
        QByteArray configuration;
        Clock::time_point since;
    };
    struct Servers {
        QString directory;
        std::vector<IdleServer> idle;
        int busy = 0;
        std::optional<Clock::time_point> failedAt;
        // Advanced when the servers are stopped: a busy one that comes back
        // from an older generation is stopped instead of kept.
        unsigned generation = 0;
    };

    std::unique_ptr<CommandServer> take(const QString &key, const QByteArray &configuration,
                                        std::vector<std::unique_ptr<CommandServer>> &stale, bool &mayStart,
                                        unsigned &generation);
    void giveBack(const QString &key, std::unique_ptr<CommandServer> server, const QByteArray &configuration,
                  unsigned generation);
    void forget(const QString &key, bool startFailed);
    void reapIdleServers();
    // Takes the idle servers of every repository the predicate accepts, so
    // that they stop outside the lock.
    template <typename Accepts>
    std::vector<std::unique_ptr<CommandServer>> retire(Accepts accepts);

    mutable std::mutex m_mutex;
    std::map<QString, Servers> m_servers;
    std::condition_variable m_wake;
    bool m_stopping = false;
    std::thread m_reaper;
};

// Stops the command servers of a repository that leaves the list.
void stopCommandServers(const QString &repositoryPath);

// Stops every command server; for quitting.
void stopAllCommandServers();

} // namespace tillery
