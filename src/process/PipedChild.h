#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace tillery {

// A child started by hand (not through QProcess, so that any thread may read
// it at its own pace): in `directory`, with exactly `environment`
// (NAME=value), in a process group of its own, at the background niceness.
struct PipedChildLaunch {
    QString executable;
    QStringList arguments;
    QStringList environment;
    QString directory;
};

// The child's end of each standard stream, or nothing for the null device.
struct PipedChild {
    qint64 processId = 0;
    int input = -1; // write end of its standard input
    int output = -1; // read end of its standard output
    int error = -1; // read end of its standard error
};

// How long a child asked to end gets before it is killed.
inline constexpr int childExitGraceMilliseconds = 300;

// Starts the child; nothing when it could not be started. `withInput` and
// `withError` say which streams are pipes (standard output always is).
std::optional<PipedChild> startPipedChild(const PipedChildLaunch &launch, bool withInput, bool withError);

// Waits up to the time for the child to exit; its exit status (a signal
// counts as -1), or nothing while it still runs.
std::optional<int> waitForChildExit(qint64 processId, int milliseconds);

// Stops the child and everything it started: a polite request, then a kill
// if it lingers; reaps it.
void stopPipedChild(qint64 processId);

// Closes a pipe end and marks it closed.
void closePipeEnd(int &end);

} // namespace tillery
