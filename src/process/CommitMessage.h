#pragma once

#include <QString>

namespace tillery {

// The summary, then a blank line and the description when there is one; both
// trimmed of white space and line breaks.
QString composeCommitMessage(const QString &summary, const QString &description);

} // namespace tillery
