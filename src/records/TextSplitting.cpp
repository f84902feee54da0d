#include "records/TextSplitting.h"

namespace tillery {

QList<QStringView> splitSkippingEmpty(QStringView text, QChar separator, qsizetype maxSplits)
{
    QList<QStringView> pieces;
    if (maxSplits == 0) {
        if (!text.isEmpty())
            pieces.append(text);
        return pieces;
    }
    qsizetype start = 0;
    for (qsizetype index = 0; index < text.size(); ++index) {
        if (text[index] != separator)
            continue;
        const bool appended = index > start;
        if (appended)
            pieces.append(text.sliced(start, index - start));
        start = index + 1;
        if (appended && pieces.size() == maxSplits)
            break;
    }
    if (start < text.size())
        pieces.append(text.sliced(start));
    return pieces;
}

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
