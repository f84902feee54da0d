#include "git/GitHistoryPager.h"

#include "git/GitParsers.h"
#include "git/GitTool.h"
#include "records/TextDecoding.h"

#include <QRegularExpression>

namespace tillery::git {

namespace {

class GitHistoryPager final : public HistoryPager {
public:
    GitHistoryPager(const QString &repositoryPath, const HistoryFilter &filter, qsizetype skip, qint64 nextRevision)
        : m_repositoryPath(repositoryPath)
        , m_filter(filter)
        , m_skip(skip)
        , m_nextRevision(nextRevision)
    {
    }

    HistoryPage next(int limit) override
    {
        if (!m_stream && !m_ended)
            start();
        // The start of the record after the page tells that something older is left.
        qsizetype end = -1;
        while ((end = historyRecordsEnd(m_buffer, m_skip + limit)) < 0 && !m_ended)
            m_ended = !m_stream->readMore(m_buffer);
        const QByteArrayView page = QByteArrayView(m_buffer).first(end < 0 ? m_buffer.size() : end);
        // Fewer records than the snapshot showed leave nothing after them.
        const qsizetype skipped = historyRecordsEnd(page, m_skip);
        HistoryPage result{parseHistory(page.sliced(skipped < 0 ? page.size() : skipped),
                                        m_filter.isEmpty() ? m_nextRevision + 1 : 0, m_branches, m_tags),
                           end < 0};
        m_buffer.remove(0, page.size());
        m_skip = 0;
        m_nextRevision -= result.changesets.size();
        if (result.isLast)
            m_stream.reset();
        return result;
    }

private:
    void start()
    {
        std::optional<QString> commit;
        if (!m_filter.hashPrefix.isEmpty()) {
            static const QRegularExpression hexadecimal(QStringLiteral("^[0-9a-fA-F]+$"));
            if (hexadecimal.match(m_filter.hashPrefix).hasMatch()) {
                const CommandOutput resolved =
                    runGit(GitTool::resolveChangesetCommand(m_filter.hashPrefix), m_repositoryPath);
                if (resolved.status == 0)
                    commit = decodeUtf8OrEmpty(resolved.standardOutput).trimmed();
            }
            if (!commit) {
                m_ended = true;
                return;
            }
        }
        // The log sorts all history before its first record: the names are read meanwhile.
        m_stream = streamGit(GitTool::historyStreamCommand(m_filter, commit), m_repositoryPath);
        for (const LocalBranchRecord &record :
             parseLocalBranches(runGit(GitTool::localBranchesCommand(), m_repositoryPath).standardOutput))
            m_branches[record.hash].append(record.name);
        m_tags = parseRefTargets(runGit(GitTool::tagTargetsCommand(), m_repositoryPath).standardOutput);
    }

    QString m_repositoryPath;
    HistoryFilter m_filter;
    qsizetype m_skip;
    qint64 m_nextRevision;
    std::unique_ptr<ToolStream> m_stream;
    QByteArray m_buffer;
    QHash<QString, QStringList> m_branches;
    QHash<QString, QStringList> m_tags;
    bool m_ended = false;
};

} // namespace

std::unique_ptr<HistoryPager> makeHistoryPager(const QString &repositoryPath, const HistoryFilter &filter,
                                               qsizetype skip, qint64 nextRevision)
{
    return std::make_unique<GitHistoryPager>(repositoryPath, filter, skip, nextRevision);
}

} // namespace tillery::git
