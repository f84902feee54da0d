#include "model/HistoryBrowser.h"

#include "model/VersionControl.h"


namespace tillery {

HistoryBrowser::HistoryBrowser(BackgroundPool &pool, Workspace &workspace, QObject *parent)
    : QObject(parent)
    , m_pool(pool)
    , m_workspace(workspace)
{
    connect(&workspace, &Workspace::snapshotChanged, this, &HistoryBrowser::showSnapshot);
    connect(&workspace, &Workspace::selectedRepositoryChanged, this, [this] { setFilter({}); });
    showSnapshot();
}

void HistoryBrowser::showSnapshot()
{
    const QList<Changeset> &history = m_workspace.snapshot().history;
    const bool sameNewest = history == m_snapshotHistory;
    m_snapshotHistory = history;
    // A search's matches, and older pages below unchanged newest ones, stay.
    if (!m_filter.isEmpty() || sameNewest)
        return;
    startOver();
}

void HistoryBrowser::setFilter(const HistoryFilter &filter)
{
    if (filter == m_filter && !filter.isEmpty())
        return;
    m_filter = filter;
    startOver();
    if (!m_filter.isEmpty())
        loadMore();
}

void HistoryBrowser::startOver()
{
    m_task.cancel();
    m_pager.reset();
    m_failure.clear();
    m_shownNodes.clear();
    if (m_filter.isEmpty()) {
        m_changesets = m_snapshotHistory;
        m_layout = m_workspace.historyLayout();
        m_hasMore = m_changesets.size() >= pageSize;
    } else {
        m_changesets.clear();
        m_layout = HistoryGraphLayout();
        m_hasMore = true;
    }
    setLoading(false);
    Q_EMIT reset();
}

void HistoryBrowser::loadMore()
{
    const std::optional<Repository> &repository = m_workspace.selectedRepository();
    if (m_isLoading || !m_hasMore || !repository)
        return;
    if (!m_pager) {
        const VersionControl &backend = versionControl(repository->kind);
        const std::optional<Changeset> last =
            m_changesets.isEmpty() ? std::nullopt : std::optional(m_changesets.last());
        m_pager = std::shared_ptr<HistoryPager>(
            backend.historyPager(repository->path, m_filter, last, m_filter.isEmpty() ? m_changesets.size() : 0));
    }
    m_failure.clear();
    setLoading(true);
    m_task = background::start<Outcome<HistoryPage>>(
        &m_pool, this, [pager = m_pager](const CancellationCheck &) { return pager->next(pageSize); },
        [this, pager = m_pager](const Outcome<HistoryPage> &outcome) {
            if (pager != m_pager)
                return;
            setLoading(false);
            if (outcome.succeeded()) {
                append(*outcome.value);
            } else {
                m_failure = outcome.failure;
                m_pager.reset();
                Q_EMIT loadingChanged();
            }
        });
}

void HistoryBrowser::append(const HistoryPage &page)
{
    // A page read after the history moved may repeat what is shown.
    if (m_shownNodes.isEmpty()) {
        for (const Changeset &changeset : std::as_const(m_changesets))
            m_shownNodes.insert(changeset.node);
    }
    QList<Changeset> fresh;
    for (const Changeset &changeset : page.changesets) {
        if (!m_shownNodes.contains(changeset.node)) {
            m_shownNodes.insert(changeset.node);
            fresh.append(changeset);
        }
    }
    m_hasMore = !page.isLast;
    const qsizetype first = m_changesets.size();
    m_changesets += fresh;
    m_layout.append(fresh);
    if (!fresh.isEmpty())
        Q_EMIT appended(first);
    Q_EMIT loadingChanged();
}

void HistoryBrowser::setLoading(bool loading)
{
    if (m_isLoading == loading)
        return;
    m_isLoading = loading;
    Q_EMIT loadingChanged();
}

} // namespace tillery
