#pragma once

// Small measuring tools the benchmarks share.

#include "records/RepositoryKind.h"

#include <QElapsedTimer>
#include <QList>
#include <QProcessEnvironment>
#include <QStringList>
#include <QTimer>

#include <cstddef>
#include <functional>

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

// Ticks every millisecond on this thread's event loop while it lives: the
// gaps between ticks are the times the loop went without running, the
// longest of them the longest stall a person could feel.
class StallProbe {
public:
    StallProbe();
    double longest() const;
    double percentile(double fraction) const;

private:
    QTimer m_ticker;
    QElapsedTimer m_clock;
    QList<double> m_gaps;
};

// The system's load averages over 1, 5 and 15 minutes, as /proc shows them.
QString loadAverage();

// A tool as the backend starts it.
struct DirectTool {
    QString executable;
    QStringList leadingArguments;
    QProcessEnvironment environment;
};
DirectTool directTool(RepositoryKind kind);

// Runs one of the tool's commands as a process of its own, at the priority
// of the backend's children, and reads its output until it ends or
// `enough` says what came so far is all a caller would wait for (the rest is
// then not waited for); milliseconds.
double runDirectly(const DirectTool &tool, const QStringList &arguments, const QString &directory,
                   const std::function<bool(const QByteArray &)> &enough = {});

// The arguments as one line to print, control characters escaped.
QString commandLine(const QStringList &arguments);

} // namespace tillery::bench
