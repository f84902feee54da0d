#pragma once

#include "process/VersionControl.h"

namespace tillery {

// The Mercurial implementation; it lives for the life of the process.
const VersionControl &mercurialBackend();

} // namespace tillery
