#include "git/CommitLogCache.h"

#include <QList>
#include <QMutex>

namespace tillery::git {

namespace {

constexpr qsizetype repositoriesKept = 16;

struct Entry {
    QString repositoryPath;
    QByteArray refs;
    CommitLogOutputs outputs;
};

struct Cache {
    QMutex mutex;
    QList<Entry> entries; // the most recently stored last
};

Cache &cache()
{
    static Cache instance;
    return instance;
}

} // namespace

std::optional<CommitLogOutputs> cachedCommitLog(const QString &repositoryPath, const QByteArray &refs)
{
    Cache &shared = cache();
    const QMutexLocker lock(&shared.mutex);
    for (const Entry &entry : std::as_const(shared.entries)) {
        if (entry.repositoryPath == repositoryPath)
            return entry.refs == refs ? std::optional(entry.outputs) : std::nullopt;
    }
    return std::nullopt;
}

void storeCommitLog(const QString &repositoryPath, const QByteArray &refs, const CommitLogOutputs &outputs)
{
    Cache &shared = cache();
    const QMutexLocker lock(&shared.mutex);
    shared.entries.removeIf([&repositoryPath](const Entry &entry) { return entry.repositoryPath == repositoryPath; });
    if (shared.entries.size() >= repositoriesKept)
        shared.entries.removeFirst();
    shared.entries.append(Entry{repositoryPath, refs, outputs});
}

void forgetCommitLogs()
{
    Cache &shared = cache();
    const QMutexLocker lock(&shared.mutex);
    shared.entries.clear();
}

} // namespace tillery::git
