#pragma once

// Small measuring tools the benchmarks share.

#include <QElapsedTimer>
#include <QList>

#include <cstddef>

namespace tillery::bench {

double median(QList<double> values);
double milliseconds(qint64 nanoseconds);

// The heap in use: small blocks plus the large ones malloc maps on their own.
size_t heapInUse();

// This process's peak and current resident memory in MiB (from /proc).
double peakResidentMiB();
double residentMiB();
// The largest resident size of any finished child (and its children) in MiB.
double largestChildMiB();

template <typename Work>
double medianMilliseconds(int runs, Work work)
{
    QList<double> times;
    for (int run = 0; run < runs; ++run) {
        QElapsedTimer timer;
        timer.start();
        work();
        times.append(milliseconds(timer.nsecsElapsed()));
    }
    return median(times);
}

} // namespace tillery::bench
