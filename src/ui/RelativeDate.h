#pragma once

#include <QDateTime>
#include <QString>

namespace tillery {

// How long ago a moment was, in the largest whole unit and abbreviated:
// "now", "45 sec. ago", "5 min. ago", "2 hr. ago", "3 days ago",
// "1 wk. ago", "4 mo. ago", "2 yr. ago"; "in 5 min." for a moment ahead.
// Months and years count by the calendar, in local time.
QString relativeDateText(const QDateTime &date, const QDateTime &now);

} // namespace tillery
