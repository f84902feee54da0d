#pragma once

#include <QString>

namespace tillery {

// A name, revision or address that reaches a command line must never be read
// as an option: one that begins with "-" is refused with RefusedInput before
// anything runs. `what` names it in the sentence, for example "a branch name"
// ("A branch name cannot begin with “-”.").
void refuseOptionLike(const QString &value, const QString &what);

} // namespace tillery
