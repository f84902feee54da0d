#pragma once

#include "process/VersionControl.h"

namespace tillery {

// The backend for a kind; it lives for the life of the process.
const VersionControl &versionControl(RepositoryKind kind);

} // namespace tillery
