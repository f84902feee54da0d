#include "process/OptionLike.h"

#include "process/Failure.h"

#include <QCoreApplication>

namespace tillery {

void refuseOptionLike(const QString &value, const char *refusal)
{
    if (value.startsWith(u'-'))
        throw RefusedInput(QCoreApplication::translate("tillery::OptionLike", refusal));
}

} // namespace tillery
