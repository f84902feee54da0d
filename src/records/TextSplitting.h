#pragma once

#include <QList>
#include <QString>
#include <QStringView>

namespace tillery {

// Trims spaces and tabs only (line breaks are kept).
QStringView trimmedSpacesAndTabs(QStringView text);

} // namespace tillery
