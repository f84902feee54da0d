#pragma once

#include <QList>
#include <QString>
#include <QStringView>

namespace tillery {

// Splits at a separator, leaving out empty pieces. With maxSplits >= 0, at
// most that many non-empty pieces are cut off before the rest is kept whole;
// empty pieces never count towards the limit, so "=a=b" split once at "="
// gives "a" and "b".
QList<QStringView> splitSkippingEmpty(QStringView text, QChar separator, qsizetype maxSplits = -1);

// Lines separated by "\n", empty lines left out.
inline QList<QStringView> nonEmptyLines(QStringView text)
{
    return splitSkippingEmpty(text, u'\n');
}

// Trims spaces and tabs only (line breaks are kept).
QStringView trimmedSpacesAndTabs(QStringView text);

} // namespace tillery
