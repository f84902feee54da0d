#pragma once

#include <QSet>
#include <QStringList>

namespace tillery {

// One tool invocation as a backend defines it: the arguments after the
// runner's fixed first one, and the exit statuses that count as success.
struct ToolCommand {
    QStringList arguments;
    QSet<int> acceptedStatuses = {0};

    friend bool operator==(const ToolCommand &, const ToolCommand &) = default;
};

} // namespace tillery
