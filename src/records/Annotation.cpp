#include "records/Annotation.h"

namespace tillery {

QStringView withoutLineEnding(QStringView line)
{
    if (line.endsWith(u'\n'))
        line.chop(1);
    if (line.endsWith(u'\r'))
        line.chop(1);
    return line;
}

} // namespace tillery
