#include "process/OptionLike.h"

#include "process/Failure.h"

using namespace Qt::StringLiterals;

namespace tillery {

void refuseOptionLike(const QString &value, const QString &what)
{
    if (!value.startsWith(u'-'))
        return;
    QString sentence = what + u" cannot begin with “-”."_s;
    sentence[0] = sentence[0].toUpper();
    throw RefusedInput(sentence);
}

} // namespace tillery
