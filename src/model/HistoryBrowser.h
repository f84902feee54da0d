#pragma once

#include "model/Background.h"
#include "model/HistoryGraph.h"
#include "model/Workspace.h"
#include "process/HistoryPager.h"
#include "records/HistoryFilter.h"
#include "records/WorkingFile.h"

#include <QObject>
#include <QSet>

#include <memory>

namespace tillery {

// The History page's rows: the refresh's newest changesets followed by the
// older pages loaded on demand, or the changesets a search found; with
// their lanes. Pages load in the background, one at a time; a refresh that
// brings the same newest changesets keeps the older pages, and a search
// starts its own paging from the newest match.
class HistoryBrowser final : public QObject {
    Q_OBJECT

public:
    static constexpr int pageSize = 250;
    // Looking for one changeset reads larger pages.
    static constexpr int revealPageSize = 2000;

    HistoryBrowser(BackgroundPool &pool, Workspace &workspace, QObject *parent = nullptr);

    const QList<Changeset> &changesets() const { return m_changesets; }
    const HistoryGraph &graph() const { return m_layout.graph(); }
    const HistoryFilter &filter() const { return m_filter; }
    bool isLoading() const { return m_isLoading; }
    // Older changesets may be left to load.
    bool hasMore() const { return m_hasMore; }
    // Why the last page did not load; empty when it did.
    const QString &failure() const { return m_failure; }

    // The row of the changeset; -1 when it is not loaded.
    qsizetype rowOf(const QString &node) const;
    // The file of the changeset a file's history is about, among the
    // changeset's files: the path filtered on, or the name the file had
    // then when the tool followed it through renames.
    std::optional<WorkingFile> fileOfInterest(const Changeset &changeset, const QList<WorkingFile> &files) const;
    // Whether older pages are loading until this changeset shows.
    bool isRevealing(const QString &node) const { return !m_revealing.isEmpty() && m_revealing == node; }

    void loadMore();
    // An empty filter returns to the whole history.
    void setFilter(const HistoryFilter &filter);
    // Returns to the whole history and loads older pages until the
    // changeset is among the rows or the history ends.
    void reveal(const QString &node);

Q_SIGNALS:
    // Every row may differ.
    void reset();
    // Rows from `first` on are new.
    void appended(qsizetype first);
    void loadingChanged();
    void revealFinished(const QString &node, bool found);

private:
    void showSnapshot();
    void startOver();
    void setLoading(bool loading);
    void append(const HistoryPage &page);
    void continueRevealing();
    void readAhead();
    void readPage();

    BackgroundPool &m_pool;
    Workspace &m_workspace;
    HistoryFilter m_filter;
    QList<Changeset> m_changesets;
    HistoryGraphLayout m_layout;
    QList<Changeset> m_snapshotHistory;
    // The nodes of `m_changesets`.
    QSet<QString> m_shownNodes;
    QString m_revealing;
    std::shared_ptr<HistoryPager> m_pager;
    BackgroundTask m_task;
    // A page read in the background: asked for (loading) or ahead of time.
    bool m_reading = false;
    std::optional<HistoryPage> m_readAhead;
    bool m_isLoading = false;
    bool m_hasMore = false;
    QString m_failure;
};

} // namespace tillery
