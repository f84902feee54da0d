#include "model/Workspace.h"

using namespace Qt::StringLiterals;

namespace tillery {

RepositorySnapshot Workspace::emptySnapshot()
{
    RepositorySnapshot snapshot;
    snapshot.defaultBranch = u"default"_s;
    snapshot.currentBranchIsPublished = false;
    return snapshot;
}

bool Workspace::isSheetShown(Sheet sheet) const
{
    return m_sheets[static_cast<int>(sheet)];
}

void Workspace::setSelectedRepository(const std::optional<Repository> &repository)
{
    if (m_selectedRepository == repository)
        return;
    m_selectedRepository = repository;
    Q_EMIT selectedRepositoryChanged();
}

void Workspace::setSnapshot(const RepositorySnapshot &snapshot, const HistoryGraphLayout &historyLayout)
{
    m_snapshot = snapshot;
    m_historyLayout = historyLayout;
    Q_EMIT snapshotChanged();
}

void Workspace::clearSnapshot()
{
    setSnapshot(emptySnapshot(), HistoryGraphLayout());
}

void Workspace::setSwitchingRepository(bool switching)
{
    if (m_isSwitchingRepository == switching)
        return;
    m_isSwitchingRepository = switching;
    Q_EMIT isSwitchingRepositoryChanged(switching);
}

void Workspace::setTab(WorkspaceTab tab)
{
    if (m_tab == tab)
        return;
    m_tab = tab;
    Q_EMIT tabChanged(tab);
}

void Workspace::setCommitSummary(const QString &summary)
{
    if (m_commitSummary == summary)
        return;
    m_commitSummary = summary;
    Q_EMIT commitSummaryChanged(summary);
}

void Workspace::setCommitDescription(const QString &description)
{
    if (m_commitDescription == description)
        return;
    m_commitDescription = description;
    Q_EMIT commitDescriptionChanged(description);
}

void Workspace::setCommitUsername(const QString &name)
{
    if (m_commitUsername == name)
        return;
    m_commitUsername = name;
    Q_EMIT commitUsernameChanged(name);
}

void Workspace::setAmendsLastCommit(bool amends)
{
    if (m_amendsLastCommit == amends)
        return;
    m_amendsLastCommit = amends;
    Q_EMIT amendsLastCommitChanged(amends);
}

void Workspace::setSheetShown(Sheet sheet, bool shown)
{
    bool &flag = m_sheets[static_cast<int>(sheet)];
    if (flag == shown)
        return;
    flag = shown;
    Q_EMIT sheetsChanged();
}

} // namespace tillery
