#pragma once

namespace tillery {

// Which page of the workspace is shown.
enum class WorkspaceTab { changes, history, shelves };

} // namespace tillery
