// Builds diff documents from generated unified diffs of 1,000, 100,000 and
// 1,000,000 lines and compares the build time with a plain split of the same
// text into lines; reports the heap the document holds. Prints its figures;
// asserts nothing.

#include "GeneratedDiff.h"
#include "Measuring.h"

#include "diff/DiffDocument.h"

#include <QCoreApplication>
#include <QStringList>
#include <QTextStream>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace tillery;
using namespace tillery::bench;

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

        out << QString::asprintf("%10lld %12.2f %12.2f %7.2f %14.2f %12.1f %10.2f\n", static_cast<long long>(lineCount),
                                 build, split, build / split, held / (1024.0 * 1024.0),
                                 held / static_cast<double>(lineCount), (held + textBytes) / textBytes);
        out.flush();
        document.reset();
    }
    out << "ratio: build time over a plain split of the same text into lines (target: at most 3)\n";
    out << "x UTF-16: the text plus what the document holds, over the text as UTF-16 (target: at most 2)\n";
    return 0;
}
