#pragma once

#include <QString>

class QWidget;

namespace tillery {

// Renders a shown top-level widget to a PNG file; false when it cannot be written.
bool saveScreenshot(QWidget &window, const QString &path);

} // namespace tillery
