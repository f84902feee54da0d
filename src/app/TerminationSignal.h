#pragma once

namespace tillery {

// Quits the application's event loop when the process is asked to end
// (SIGTERM, SIGINT, SIGHUP), so that it closes as if its window were closed.
void quitOnTerminationSignals();

} // namespace tillery
