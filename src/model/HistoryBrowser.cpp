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
    connect(&workspace, &Workspace::tabChanged, this, &HistoryBrowser::readAhead);
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
    m_revealing.clear();
    if (filter == m_filter && !filter.isEmpty() && m_failure.isEmpty())
        return;
    m_filter = filter;
    startOver();
    if (!m_filter.isEmpty())
        loadMore();
}

void HistoryBrowser::startOver()
{
    m_task.cancel();
    m_reading = false;
    m_readAhead.reset();
    m_pager.reset();
    m_failure.clear();
    if (m_filter.isEmpty()) {
        m_changesets = m_snapshotHistory;
        m_layout = m_workspace.historyLayout();
        m_hasMore = m_changesets.size() >= pageSize;
    } else {
        m_changesets.clear();
        m_layout = HistoryGraphLayout();
        m_hasMore = true;
    }
    m_shownNodes.clear();
    // Growing a set of a few hundred thousand names rehashes it all at once.
    if (m_filter.isEmpty() && !m_changesets.isEmpty())
        m_shownNodes.reserve(m_changesets.first().revision + 1);
    for (const Changeset &changeset : std::as_const(m_changesets))
        m_shownNodes.insert(changeset.node);
    setLoading(false);
    Q_EMIT reset();
    readAhead();
    continueRevealing();
}

qsizetype HistoryBrowser::rowOf(const QString &node) const
{
    if (!m_shownNodes.contains(node))
        return -1;
    const auto found = std::find_if(m_changesets.cbegin(), m_changesets.cend(),
                                    [&node](const Changeset &changeset) { return changeset.node == node; });
    return found - m_changesets.cbegin();
}

std::optional<WorkingFile> HistoryBrowser::fileOfInterest(const Changeset &changeset,
                                                         const QList<WorkingFile> &files) const
{
    if (m_filter.path.isEmpty())
        return std::nullopt;
    const auto withPath = [&files](const auto &matches) -> std::optional<WorkingFile> {
        const auto found = std::find_if(files.cbegin(), files.cend(), matches);
        return found == files.cend() ? std::nullopt : std::optional(*found);
    };
    const QString folder = m_filter.path + u'/';
    // The file itself, else a folder's first file, else the name the file had then.
    if (auto found = withPath([this](const WorkingFile &file) { return file.path == m_filter.path; }))
        return found;
    if (auto found = withPath([&folder](const WorkingFile &file) { return file.path.startsWith(folder); }))
        return found;
    if (!m_filter.followsRenames)
        return std::nullopt;
    return withPath([&changeset](const WorkingFile &file) { return changeset.files.contains(file.path); });
}

void HistoryBrowser::reveal(const QString &node)
{
    m_revealing = node;
    if (!m_filter.isEmpty()) {
        m_filter = {};
        startOver();
        return;
    }
    continueRevealing();
}

void HistoryBrowser::continueRevealing()
{
    if (m_revealing.isEmpty() || m_isLoading)
        return;
    const bool found = m_shownNodes.contains(m_revealing);
    if (!found && m_hasMore && m_failure.isEmpty()) {
        loadMore();
        return;
    }
    const QString node = std::exchange(m_revealing, QString());
    Q_EMIT revealFinished(node, found);
}

void HistoryBrowser::loadMore()
{
    if (m_isLoading || !m_hasMore || !m_workspace.selectedRepository())
        return;
    m_failure.clear();
    if (m_readAhead) {
        append(*std::exchange(m_readAhead, std::nullopt));
        readAhead();
        continueRevealing();
        return;
    }
    setLoading(true);
    if (!m_reading)
        readPage();
}

// Git sorts the whole history before it gives the first record of a page:
// the next page is read while the rows before it are looked at, so that
// scrolling on finds it ready.
void HistoryBrowser::readAhead()
{
    if (!m_reading && !m_readAhead && m_hasMore && m_workspace.tab() == WorkspaceTab::history
        && m_workspace.selectedRepository())
        readPage();
}

void HistoryBrowser::readPage()
{
    if (!m_pager) {
        const Repository &repository = *m_workspace.selectedRepository();
        const VersionControl &backend = versionControl(repository.kind);
        const std::optional<Changeset> last =
            m_changesets.isEmpty() ? std::nullopt : std::optional(m_changesets.last());
        m_pager = std::shared_ptr<HistoryPager>(
            backend.historyPager(repository.path, m_filter, last, m_filter.isEmpty() ? m_changesets.size() : 0));
    }
    m_reading = true;
    m_task = background::start<Outcome<HistoryPage>>(
        &m_pool, this,
        [pager = m_pager, limit = m_revealing.isEmpty() ? pageSize : revealPageSize](const CancellationCheck &) {
            return pager->next(limit);
        },
        [this, pager = m_pager](const Outcome<HistoryPage> &outcome) {
            if (pager != m_pager)
                return;
            m_reading = false;
            if (!m_isLoading) {
                // Read ahead: kept until asked for; a failure is met again then.
                if (outcome.succeeded())
                    m_readAhead = *outcome.value;
                else
                    m_pager.reset();
                return;
            }
            setLoading(false);
            if (outcome.succeeded()) {
                append(*outcome.value);
                readAhead();
            } else {
                m_failure = outcome.failure;
                m_pager.reset();
                Q_EMIT loadingChanged();
            }
            continueRevealing();
        });
}

void HistoryBrowser::append(const HistoryPage &page)
{
    // A page read after the history moved may repeat what is shown.
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
