// Lays out the history graph of 200,000 generated commits with many lines of
// work, forks and merges: all at once and a page of 250 at a time, with the
// heap the graph holds. Prints its figures; asserts nothing.

#include "Measuring.h"

#include "model/HistoryGraph.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTextStream>

using namespace Qt::StringLiterals;
using namespace tillery;
using namespace tillery::bench;

namespace {

// Newest first. Up to 24 lines of work run side by side; now and then one
// forks from another and later merges back, as long-lived branches do.
QList<Changeset> generatedHistory(qsizetype count)
{
    constexpr int lines = 24;
    QList<QString> tipOfLine(lines);
    QList<Changeset> oldestFirst;
    oldestFirst.reserve(count);
    quint32 seed = 12345;
    const auto next = [&seed] {
        seed = seed * 1664525u + 1013904223u;
        return seed >> 8;
    };
    for (qsizetype index = 0; index < count; ++index) {
        Changeset changeset;
        changeset.node = u"%1"_s.arg(index, 40, 16, QChar(u'0'));
        const int line = static_cast<int>(next() % lines);
        QString &tip = tipOfLine[line];
        if (tip.isEmpty() && index > 0) {
            // A new line forks from another one.
            tip = tipOfLine[next() % lines];
        }
        if (!tip.isEmpty())
            changeset.parents.append(tip);
        const int other = static_cast<int>(next() % lines);
        if (next() % 16 == 0 && other != line && !tipOfLine[other].isEmpty() && tipOfLine[other] != tip)
            changeset.parents.append(tipOfLine[other]);
        tip = changeset.node;
        oldestFirst.append(changeset);
    }
    return QList<Changeset>(oldestFirst.crbegin(), oldestFirst.crend());
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    const QList<Changeset> history = generatedHistory(200000);
    qsizetype merges = 0;
    for (const Changeset &changeset : history)
        merges += changeset.parents.size() > 1;

    const double whole = medianMilliseconds(5, [&] {
        HistoryGraphLayout layout;
        layout.append(history);
    });
    constexpr qsizetype pageSize = 250;
    double slowestPage = 0;
    const size_t before = heapInUse();
    HistoryGraphLayout paged;
    for (qsizetype start = 0; start < history.size(); start += pageSize) {
        const QList<Changeset> page = history.sliced(start, std::min(pageSize, history.size() - start));
        slowestPage = std::max(slowestPage, medianMilliseconds(1, [&] { paged.append(page); }));
    }
    const double held = static_cast<double>(heapInUse() - before);
    qsizetype widest = 0;
    QElapsedTimer reading;
    reading.start();
    for (qsizetype row = 0; row < paged.graph().rowCount(); ++row)
        widest = std::max<qsizetype>(widest, paged.graph().upperHalf(row).size());
    const double perRow = milliseconds(reading.nsecsElapsed()) / static_cast<double>(paged.graph().rowCount());

    out << u"%1 commits, %2 merges, at most %3 lanes side by side\n"_s.arg(history.size()).arg(merges).arg(widest);
    out << QString::asprintf("layout of all commits: %.1f ms (target: at most 1000, off the main thread)\n", whole);
    out << QString::asprintf("slowest page of %lld: %.2f ms\n", static_cast<long long>(pageSize), slowestPage);
    out << QString::asprintf("graph held: %.1f MiB, %.1f bytes a commit\n", held / (1024.0 * 1024.0),
                             held / static_cast<double>(history.size()));
    out << QString::asprintf("reading one row's lines: %.4f ms on average (a viewport of 40 rows: %.2f ms)\n", perRow,
                             perRow * 40);
    return 0;
}
