#pragma once

#include <QString>
#include <QStringList>

namespace tillery {

// What opening something in another application comes down to, before it is
// started: a program with its arguments and working directory. Paths travel
// only as whole arguments, never through a shell.
struct LaunchPlan {
    enum class Start {
        // Started and left to run (editors and terminals on Linux).
        detached,
        // Run to its end; a failure status is reported with its error text
        // (macOS's "open" and "osascript").
        awaited,
        // macOS only: the "New Ghostty Window Here" service on the folder.
        ghosttyService,
    };

    QString program;
    QStringList arguments;
    QString workingDirectory;
    Start start = Start::detached;
    // Named in failure messages: "<name> could not open the repository."
    QString applicationName;

    friend bool operator==(const LaunchPlan &, const LaunchPlan &) = default;
};

} // namespace tillery
