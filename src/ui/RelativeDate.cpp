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
        return QCoreApplication::translate("RelativeDate", "now");

    QString text;
    if (span < 60) {
        text = amount(span, QCoreApplication::translate("RelativeDate", "sec."));
    } else if (span < 3600) {
        text = amount(span / 60, QCoreApplication::translate("RelativeDate", "min."));
    } else if (span < 86400) {
        text = amount(span / 3600, QCoreApplication::translate("RelativeDate", "hr."));
    } else {
        const QDateTime earlier = (past ? date : now).toLocalTime();
        const QDateTime later = (past ? now : date).toLocalTime();
        const qint64 months = wholeMonths(earlier, later);
        const qint64 days = span / 86400;
        if (months >= 12)
            text = amount(months / 12, QCoreApplication::translate("RelativeDate", "yr."));
        else if (months >= 1)
            text = amount(months, QCoreApplication::translate("RelativeDate", "mo."));
        else if (days >= 7)
            text = amount(days / 7, QCoreApplication::translate("RelativeDate", "wk."));
        else
            text = QCoreApplication::translate("RelativeDate", "%n day(s)", nullptr, int(days));
    }
    return past ? QCoreApplication::translate("RelativeDate", "%1 ago").arg(text)
                : QCoreApplication::translate("RelativeDate", "in %1").arg(text);
}

} // namespace tillery
