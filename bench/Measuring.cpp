#include "Measuring.h"

#include <QFile>

#include <algorithm>
#include <malloc.h>
#include <sys/resource.h>

namespace tillery::bench {

namespace {

double statusFieldMiB(const QByteArray &field)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(field + ':'))
            return line.mid(field.size() + 1).trimmed().split(' ').first().toDouble() / 1024.0;
    }
    return 0;
}

} // namespace

double median(QList<double> values)
{
    if (values.isEmpty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double milliseconds(qint64 nanoseconds)
{
    return static_cast<double>(nanoseconds) / 1e6;
}

size_t heapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

double peakResidentMiB()
{
    return statusFieldMiB("VmHWM");
}

double residentMiB()
{
    return statusFieldMiB("VmRSS");
}

double largestChildMiB()
{
    struct rusage children { };
    getrusage(RUSAGE_CHILDREN, &children);
    return static_cast<double>(children.ru_maxrss) / 1024.0;
}

} // namespace tillery::bench
