#pragma once

#include <QString>

namespace tillery {

// A name, revision or address that reaches a command line must never be read
// as an option: one that begins with "-" is refused with RefusedInput before
// anything runs. `refusal` is the sentence that says so, marked with
// QT_TRANSLATE_NOOP in the "tillery::OptionLike" context, for example
// "A branch name cannot begin with “-”."; it is translated when it is thrown.
void refuseOptionLike(const QString &value, const char *refusal);

} // namespace tillery
