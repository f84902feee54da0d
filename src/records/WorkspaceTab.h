#pragma once

#include <QString>

namespace tillery {

// Which page of the workspace is shown.
enum class WorkspaceTab { changes, history };

inline QString workspaceTabLabel(WorkspaceTab tab)
{
    return tab == WorkspaceTab::changes ? QStringLiteral("Changes") : QStringLiteral("History");
}

} // namespace tillery
