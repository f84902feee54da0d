#pragma once

#include "integrations/LaunchPlan.h"

#include <QString>

#include <optional>

namespace tillery {

// Starts a plan; the message to show when that did not work. An awaited
// plan blocks until its program ends, so call it off the main thread.
std::optional<QString> launch(const LaunchPlan &plan);

} // namespace tillery
