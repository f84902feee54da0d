#pragma once

#include <QString>

namespace tillery {

// A name, revision or address that reaches a command line must never be read
// as an option: one that begins with "-" is refused with the backend's
// malformedOutput failure before anything runs. `what` names it in the
// message, for example "a branch name".
template <typename BackendFailure>
void refuseOptionLike(const QString &value, const QString &what)
{
    if (value.startsWith(u'-'))
        throw BackendFailure::malformedOutput(what + QStringLiteral(" cannot begin with -"));
}

} // namespace tillery
