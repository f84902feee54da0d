#pragma once

#include <QString>

class QLabel;

namespace tillery {

// The pieces every sheet is built from.
QLabel *sheetTitle(const QString &text);
// A wrapped line in the quiet secondary colour.
QLabel *secondaryLabel(const QString &text);
// A wrapped line that says why the sheet cannot go on; empty while it can.
QLabel *problemLabel();

} // namespace tillery
