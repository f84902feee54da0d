#pragma once

#include "process/VersionControl.h"

namespace tillery {

// The Git implementation; it lives for the life of the process.
const VersionControl &gitBackend();

} // namespace tillery
