#pragma once

#include "FakeTool.h"

#include "process/Cancellation.h"

#include <functional>

namespace tillery::test {

struct CancellationOutcome {
    bool childStarted = false;
    bool threwCancellation = false;
    bool childGone = false;
};

// Runs `work` in a task of the thread pool, waits until the stand-in tool has
// started, cancels the task's future and reports how the work ended.
CancellationOutcome cancelWhileToolRuns(const FakeTool &tool,
                                        const std::function<void(const CancellationCheck &)> &work);

} // namespace tillery::test
