#include "records/TextSplitting.h"

namespace tillery {

QStringView trimmedSpacesAndTabs(QStringView text)
{
    auto isBlank = [](QChar c) { return c == u' ' || c == u'\t'; };
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && isBlank(text[begin]))
        ++begin;
    while (end > begin && isBlank(text[end - 1]))
        --end;
    return text.sliced(begin, end - begin);
}

} // namespace tillery
