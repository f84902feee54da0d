#pragma once

#include "model/HistoryGraph.h"
#include "records/Repository.h"
#include "records/RepositorySnapshot.h"
#include "records/WorkspaceTab.h"

#include <QObject>
#include <QString>

#include <optional>

namespace tillery {

// The selected repository with everything its last refresh loaded, the page
// shown, the commit box's texts and the sheets' flags.
class Workspace final : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    const std::optional<Repository> &selectedRepository() const { return m_selectedRepository; }
    // files, history, bookmarks, branch, activeBookmark, paths (the remote
    // paths), defaultBranch and currentBranchIsPublished of the last refresh.
    const RepositorySnapshot &snapshot() const { return m_snapshot; }
    // The lanes beside the snapshot's history, row for row.
    const HistoryGraph &historyGraph() const { return m_historyLayout.graph(); }
    // The layout that drew them, to go on with as older history loads.
    const HistoryGraphLayout &historyLayout() const { return m_historyLayout; }
    bool isSwitchingRepository() const { return m_isSwitchingRepository; }
    WorkspaceTab tab() const { return m_tab; }
    const QString &commitSummary() const { return m_commitSummary; }
    const QString &commitDescription() const { return m_commitDescription; }
    const QString &commitUsername() const { return m_commitUsername; }
    // The next commit replaces the working copy's parent.
    bool amendsLastCommit() const { return m_amendsLastCommit; }

    enum class Sheet { clone, bookmark, remote, about };
    bool isSheetShown(Sheet sheet) const;

    void setSelectedRepository(const std::optional<Repository> &repository);
    void setSnapshot(const RepositorySnapshot &snapshot, const HistoryGraphLayout &historyLayout);
    // What a repository shows before its first refresh.
    void clearSnapshot();
    void setSwitchingRepository(bool switching);
    void setTab(WorkspaceTab tab);
    void setCommitSummary(const QString &summary);
    void setCommitDescription(const QString &description);
    void setCommitUsername(const QString &name);
    void setAmendsLastCommit(bool amends);
    void setSheetShown(Sheet sheet, bool shown);

    static RepositorySnapshot emptySnapshot();

Q_SIGNALS:
    void selectedRepositoryChanged();
    void snapshotChanged();
    void isSwitchingRepositoryChanged(bool switching);
    void tabChanged(tillery::WorkspaceTab tab);
    void commitSummaryChanged(const QString &summary);
    void commitDescriptionChanged(const QString &description);
    void commitUsernameChanged(const QString &name);
    void amendsLastCommitChanged(bool amends);
    void sheetsChanged();

private:
    std::optional<Repository> m_selectedRepository;
    RepositorySnapshot m_snapshot = emptySnapshot();
    HistoryGraphLayout m_historyLayout;
    bool m_isSwitchingRepository = false;
    WorkspaceTab m_tab = WorkspaceTab::changes;
    QString m_commitSummary;
    QString m_commitDescription;
    QString m_commitUsername;
    bool m_amendsLastCommit = false;
    bool m_sheets[4] = {false, false, false, false};
};

} // namespace tillery
