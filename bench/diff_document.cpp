// Builds diff documents from generated unified diffs of 1,000, 100,000 and
// 1,000,000 lines and compares the build time with a plain split of the same
// text into lines; reports the heap the document holds. Prints its figures;
// asserts nothing.

#include "diff/DiffDocument.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QStringList>
#include <QTextStream>

#include <algorithm>
#include <malloc.h>

using namespace Qt::StringLiterals;
using namespace tillery;

namespace {

// About 50 characters a line: a word soup with a little structure.
QString generatedLine(QRandomGenerator &random)
{
    static const QStringList words{u"value"_s, u"return"_s, u"index"_s, u"buffer"_s, u"if"_s,
                                   u"const"_s, u"auto"_s,   u"result"_s, u"count"_s, u"(item)"_s,
                                   u"= 0;"_s,  u"{"_s,      u"}"_s,      u"size()"_s, u"->next"_s};
    QString line = QString(static_cast<qsizetype>(random.bounded(4)) * 4, u' ');
    const int target = 38 + random.bounded(24);
    while (line.size() < target)
        line += words[random.bounded(static_cast<int>(words.size()))] + u' ';
    return line;
}

QString generatedDiff(qsizetype lineCount)
{
    QRandomGenerator random(42);
    QString text = u"diff --git a/src/module.cpp b/src/module.cpp\nindex 1234567..89abcde 100644\n"
                   "--- a/src/module.cpp\n+++ b/src/module.cpp\n"_s;
    qsizetype lines = 4;
    qint64 oldLine = 1;
    qint64 newLine = 1;
    while (lines < lineCount) {
        text += u"@@ -%1,40 +%2,40 @@ void function()\n"_s.arg(oldLine).arg(newLine);
        ++lines;
        for (int inHunk = 0; inHunk < 60 && lines < lineCount; ++inHunk, ++lines) {
            const int roll = random.bounded(10);
            const QChar prefix = roll < 6 ? u' ' : roll < 8 ? u'-' : u'+';
            text += prefix + generatedLine(random) + u'\n';
            oldLine += prefix != u'+';
            newLine += prefix != u'-';
        }
        oldLine += 100;
        newLine += 100;
    }
    return text;
}

// Small blocks plus the large ones malloc maps on their own.
size_t heapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

double milliseconds(qint64 nanoseconds)
{
    return static_cast<double>(nanoseconds) / 1e6;
}

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
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    out << QString::asprintf("%10s %12s %12s %7s %14s %12s %10s\n", "lines", "build ms", "split ms", "ratio",
                             "document MiB", "bytes/line", "x UTF-16");
    for (const qsizetype lineCount : {qsizetype(1000), qsizetype(100000), qsizetype(1000000)}) {
        const QString text = generatedDiff(lineCount);
        const int runs = lineCount >= 1000000 ? 7 : lineCount >= 100000 ? 21 : 201;

        const double split = medianMilliseconds(runs, [&] {
            const QStringList lines = text.split(u'\n');
            Q_UNUSED(lines);
        });
        const double build = medianMilliseconds(runs, [&] {
            const PresentedDiffDocument document = buildDiffDocument(text);
            Q_UNUSED(document);
        });

        // The heap that one document holds besides the text it shares with its caller.
        const size_t before = heapInUse();
        std::optional<PresentedDiffDocument> document = buildDiffDocument(text);
        const size_t after = heapInUse();
        const double held = static_cast<double>(after - before);
        const double textBytes = static_cast<double>(text.size()) * 2.0;

        out << QString::asprintf("%10lld %12.2f %12.2f %7.2f %14.2f %12.1f %10.2f\n",
                                 static_cast<long long>(lineCount), build, split, build / split,
                                 held / (1024.0 * 1024.0), held / static_cast<double>(lineCount),
                                 (held + textBytes) / textBytes);
        out.flush();
        document.reset();
    }
    out << "ratio: build time over a plain split of the same text into lines (target: at most 3)\n";
    out << "x UTF-16: the text plus what the document holds, over the text as UTF-16 (target: at most 3)\n";
    return 0;
}
