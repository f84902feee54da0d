#include "process/CommandServerPool.h"

#include "process/Failure.h"

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

constexpr int serversPerRepository = 2;
constexpr auto retryAfterFailedStart = std::chrono::seconds(30);
constexpr auto idleLifetime = std::chrono::minutes(5);
constexpr auto reaperInterval = std::chrono::seconds(30);

QString keyOf(const ServerLaunch &launch)
{
    return launch.directory + u'\n' + launch.executable + u'\n' + launch.arguments.join(u'\n') + u'\n'
           + launch.environment.join(u'\n');
}

} // namespace

CommandServerPool &CommandServerPool::shared()
{
    static CommandServerPool pool;
    return pool;
}

CommandServerPool::CommandServerPool()
    : m_reaper([this] { reapIdleServers(); })
{
}

CommandServerPool::~CommandServerPool()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_wake.notify_all();
    m_reaper.join();
    stopAll();
}

std::optional<ServedRun> CommandServerPool::run(const ServerLaunch &launch, const QByteArray &configuration,
                                                const QStringList &arguments, const CancellationCheck &isCancelled)
{
    const QString key = keyOf(launch);
    std::unique_ptr<CommandServer> server;
    unsigned generation = 0;
    {
        std::vector<std::unique_ptr<CommandServer>> stale;
        bool mayStart = false;
        {
            const std::lock_guard lock(m_mutex);
            m_servers[key].directory = launch.directory;
            server = take(key, configuration, stale, mayStart, generation);
        }
        // Stale servers end here, outside the lock.
        if (!server && !mayStart)
            return std::nullopt;
    }
    if (!server) {
        try {
            server = CommandServer::start(launch, isCancelled);
        } catch (const ServerUnavailable &) {
            forget(key, true);
            return std::nullopt;
        } catch (...) {
            forget(key, false);
            throw;
        }
    }
    try {
        ServedRun run = server->run(arguments, isCancelled);
        giveBack(key, std::move(server), configuration, generation);
        return run;
    } catch (const ServerUnavailable &) {
        server.reset();
        forget(key, false);
        return std::nullopt;
    } catch (...) {
        server.reset();
        forget(key, false);
        throw;
    }
}

std::unique_ptr<CommandServer> CommandServerPool::take(const QString &key, const QByteArray &configuration,
                                                       std::vector<std::unique_ptr<CommandServer>> &stale,
                                                       bool &mayStart, unsigned &generation)
{
    Servers &servers = m_servers[key];
    generation = servers.generation;
    // Servers that read a configuration that has changed since are of no use.
    for (auto idle = servers.idle.begin(); idle != servers.idle.end();) {
        if (idle->configuration == configuration) {
            ++idle;
            continue;
        }
        stale.push_back(std::move(idle->server));
        idle = servers.idle.erase(idle);
    }
    if (!servers.idle.empty()) {
        std::unique_ptr<CommandServer> server = std::move(servers.idle.back().server);
        servers.idle.pop_back();
        ++servers.busy;
        return server;
    }
    const bool recentlyFailed = servers.failedAt && Clock::now() - *servers.failedAt < retryAfterFailedStart;
    mayStart = !recentlyFailed && servers.busy < serversPerRepository;
    if (mayStart)
        ++servers.busy;
    return nullptr;
}

void CommandServerPool::giveBack(const QString &key, std::unique_ptr<CommandServer> server,
                                 const QByteArray &configuration, unsigned generation)
{
    {
        const std::lock_guard lock(m_mutex);
        Servers &servers = m_servers[key];
        --servers.busy;
        servers.failedAt.reset();
        if (servers.generation == generation) {
            servers.idle.push_back({std::move(server), configuration, Clock::now()});
            return;
        }
    }
    // Its repository left the list, or the application is quitting, while it ran.
    server.reset();
}

void CommandServerPool::forget(const QString &key, bool startFailed)
{
    const std::lock_guard lock(m_mutex);
    Servers &servers = m_servers[key];
    --servers.busy;
    if (startFailed)
        servers.failedAt = Clock::now();
}

template <typename Accepts>
std::vector<std::unique_ptr<CommandServer>> CommandServerPool::retire(Accepts accepts)
{
    std::vector<std::unique_ptr<CommandServer>> retired;
    const std::lock_guard lock(m_mutex);
    for (auto &[key, servers] : m_servers) {
        if (!accepts(servers))
            continue;
        ++servers.generation;
        for (IdleServer &idle : servers.idle)
            retired.push_back(std::move(idle.server));
        servers.idle.clear();
    }
    return retired;
}

void CommandServerPool::stopServersIn(const QString &directory)
{
    retire([&directory](const Servers &servers) { return servers.directory == directory; });
}

void CommandServerPool::stopAll()
{
    retire([](const Servers &) { return true; });
}

QList<qint64> CommandServerPool::processIds() const
{
    const std::lock_guard lock(m_mutex);
    QList<qint64> processIds;
    for (const auto &[key, servers] : m_servers) {
        for (const IdleServer &idle : servers.idle)
            processIds.append(idle.server->processId());
    }
    return processIds;
}

void CommandServerPool::reapIdleServers()
{
    std::unique_lock lock(m_mutex);
    while (!m_stopping) {
        m_wake.wait_for(lock, reaperInterval);
        std::vector<std::unique_ptr<CommandServer>> stopping;
        for (auto &[key, servers] : m_servers) {
            for (auto idle = servers.idle.begin(); idle != servers.idle.end();) {
                if (Clock::now() - idle->since < idleLifetime) {
                    ++idle;
                    continue;
                }
                stopping.push_back(std::move(idle->server));
                idle = servers.idle.erase(idle);
            }
        }
        lock.unlock();
        stopping.clear();
        lock.lock();
    }
}

void stopCommandServers(const QString &repositoryPath)
{
    CommandServerPool::shared().stopServersIn(repositoryPath);
}

void stopAllCommandServers()
{
    CommandServerPool::shared().stopAll();
}

} // namespace tillery
