#pragma once

class QProcess;

namespace tillery {

// Tool children run at a lower scheduling priority than the application:
// a tool that keeps every core busy (git status on a large working copy
// does) must not keep the window from drawing for longer than a frame.
// Only their share under contention changes; on an idle machine they run
// as fast as ever. Command servers, started by hand, take the same niceness.
inline constexpr int backgroundNiceness = 10;
void runAtBackgroundPriority(QProcess &process);

// Asks a running child to stop, and kills it if it will not go at once.
void stopChild(QProcess &process);

} // namespace tillery
