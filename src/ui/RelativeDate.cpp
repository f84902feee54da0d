#include "ui/RelativeDate.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

// Whole calendar months from `earlier` to `later` (both local).
qint64 wholeMonths(const QDateTime &earlier, const QDateTime &later)
{
    const QDate from = earlier.date();
    const QDate to = later.date();
    qint64 months = (to.year() - from.year()) * 12LL + (to.month() - from.month());
    if (months > 0 && QDateTime(from.addMonths(static_cast<int>(months)), earlier.time()) > later)
        --months;
    return months;
}

QString amount(qint64 count, const QString &unit)
{
    return QString::number(count) + u' ' + unit;
}

} // namespace

QString relativeDateText(const QDateTime &date, const QDateTime &now)
{
    const qint64 seconds = date.secsTo(now);
    const bool past = seconds >= 0;
    const qint64 span = past ? seconds : -seconds;
    if (span < 1)
        return u"now"_s;

    QString text;
    if (span < 60) {
        text = amount(span, u"sec."_s);
    } else if (span < 3600) {
        text = amount(span / 60, u"min."_s);
    } else if (span < 86400) {
        text = amount(span / 3600, u"hr."_s);
    } else {
        const QDateTime earlier = (past ? date : now).toLocalTime();
        const QDateTime later = (past ? now : date).toLocalTime();
        const qint64 months = wholeMonths(earlier, later);
        const qint64 days = span / 86400;
        if (months >= 12)
            text = amount(months / 12, u"yr."_s);
        else if (months >= 1)
            text = amount(months, u"mo."_s);
        else if (days >= 7)
            text = amount(days / 7, u"wk."_s);
        else
            text = QCoreApplication::translate("RelativeDate", "%n day(s)", nullptr, static_cast<int>(days));
    }
    return past ? text + u" ago"_s : u"in "_s + text;
}

} // namespace tillery
