#pragma once

#include <QByteArray>

namespace tillery {

// The raw result of one finished tool run.
struct CommandOutput {
    QByteArray standardOutput;
    QByteArray standardError;
    int status = 0;

    friend bool operator==(const CommandOutput &, const CommandOutput &) = default;
};

} // namespace tillery
