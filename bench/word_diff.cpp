// Times the word changes of one screenful (60 unified lines) of a
// 1,000,000-line diff at the top, the middle and the end and over screens
// spread through it, then the worst screens: every line a long pair just
// under the length limit, with a few changed words and with changes
// scattered until the comparison gives up, the end of a 1,000,000-line run
// of additions, and the last screen of a run of 999,999 deletions and one
// addition, which walks back over the unpaired deletions.
// Prints its figures; asserts nothing.

#include "Measuring.h"

#include "diff/DiffDocument.h"
#include "diff/WordDiff.h"

#include <QCoreApplication>
#include <QRandomGenerator>
#include <QStringList>
#include <QTextStream>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace tillery;
using namespace tillery::bench;

namespace {

constexpr qsizetype screenLines = 60;
constexpr int runs = 101;

const QStringList &vocabulary()
{
    static const QStringList words{u"value"_s,          u"return"_s,   u"index"_s,    u"buffer"_s, u"if"_s,
                                   u"const"_s,          u"auto"_s,     u"result"_s,   u"count"_s,  u"(item)"_s,
                                   u"= 0;"_s,           u"{"_s,        u"}"_s,        u"size()"_s, u"->next"_s,
                                   u"std::max(a, b)"_s, u"\"text\""_s, u"// note"_s,  u"&&"_s,     u"offset + 1"_s,
                                   u"names[i]"_s,       u"nullptr"_s,  u"QString()"_s};
    return words;
}

QString codeLine(QRandomGenerator &random, int length)
{
    QString line = QString(static_cast<qsizetype>(random.bounded(5)) * 4, u' ');
    while (line.size() < length)
        line += vocabulary()[random.bounded(static_cast<int>(vocabulary().size()))] + u' ';
    return line;
}

// The line with `edits` of its words replaced, inserted or dropped.
QString edited(QRandomGenerator &random, const QString &line, int edits)
{
    QStringList words = line.split(u' ');
    for (int edit = 0; edit < edits; ++edit) {
        const auto at = static_cast<qsizetype>(random.bounded(static_cast<int>(words.size())));
        const QString word = u"changed%1"_s.arg(random.bounded(100));
        switch (random.bounded(4)) {
        case 0:
            words.insert(at, word);
            break;
        case 1:
            if (words.size() > 2)
                words.removeAt(at);
            break;
        default:
            words[at] = word;
        }
    }
    return words.join(u' ');
}

// Hunks of context with blocks of changed lines: 1 to 4 deletions, each
// edited into an addition, sometimes a line more or less on one side. One
// block in forty has lines of 600 to 1,100 characters.
QString generatedText(qsizetype lineCount)
{
    QRandomGenerator random(7);
    QString text = u"diff --git a/big.cpp b/big.cpp\n--- a/big.cpp\n+++ b/big.cpp\n"_s;
    qsizetype lines = 3;
    while (lines < lineCount) {
        text += u"@@ -%1,50 +%1,50 @@ void function()\n"_s.arg(lines);
        ++lines;
        for (int block = 0; block < 3 && lines < lineCount; ++block) {
            for (int context = random.bounded(6, 14); context > 0; --context, ++lines)
                text += u' ' + codeLine(random, random.bounded(20, 90)) + u'\n';
            const bool longLines = random.bounded(40) == 0;
            const int pairs = random.bounded(1, 5);
            QStringList removed;
            QStringList added;
            for (int pair = 0; pair < pairs; ++pair) {
                removed.append(codeLine(random, longLines ? random.bounded(600, 1100) : random.bounded(20, 100)));
                added.append(edited(random, removed.last(), random.bounded(1, 4)));
            }
            if (random.bounded(4) == 0)
                added.append(codeLine(random, 40));
            for (const QString &line : std::as_const(removed))
                text += u'-' + line + u'\n';
            for (const QString &line : std::as_const(added))
                text += u'+' + line + u'\n';
            lines += removed.size() + added.size();
        }
    }
    return text;
}

// A hunk of `pairs` deletions and as many additions of `length` characters,
// each addition with `edits` words changed.
QString longPairs(int pairs, int length, int edits)
{
    QRandomGenerator random(11);
    QStringList removed;
    QStringList added;
    for (int pair = 0; pair < pairs; ++pair) {
        const QString line = codeLine(random, length).left(length - 1);
        removed.append(line);
        added.append(edited(random, line, edits).left(length - 1));
    }
    return u"@@ -1,%1 +1,%1 @@\n-"_s.arg(pairs) + removed.join(u"\n-"_s) + u"\n+"_s + added.join(u"\n+"_s) + u'\n';
}

double screenMilliseconds(const PresentedDiffDocument &document, qsizetype first, qsizetype *marked = nullptr)
{
    const double time = medianMilliseconds(runs, [&] {
        const auto changes = wordChangesInRange(document, first, first + screenLines - 1);
        if (marked)
            *marked = changes.size();
    });
    return time;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QTextStream out(stdout);

    const PresentedDiffDocument document = buildDiffDocument(generatedText(1000000));
    const qsizetype count = document.unifiedLines.size();
    qsizetype changed = 0;
    for (const PresentedDiffLine &line : document.unifiedLines)
        changed += line.kind == DiffLineKind::addition || line.kind == DiffLineKind::deletion;
    out << QString::asprintf("document: %lld unified lines, %lld of them changed\n", static_cast<long long>(count),
                             static_cast<long long>(changed));
    out << QString::asprintf("%-44s %10s %8s\n", "screenful of 60 lines", "median ms", "marked");
    const auto report = [&out](const char *what, double milliseconds, qsizetype marked) {
        out << QString::asprintf("%-44s %10.4f %8lld\n", what, milliseconds, static_cast<long long>(marked));
        out.flush();
    };
    qsizetype marked = 0;
    for (const auto &[what, first] :
         {std::pair("top", qsizetype(0)), std::pair("middle", count / 2), std::pair("end", count - screenLines)}) {
        const double time = screenMilliseconds(document, first, &marked);
        report(what, time, marked);
    }

    // Every 1,000th screen position once: the spread a person scrolling would meet.
    QList<double> spread;
    for (qsizetype first = 0; first + screenLines <= count; first += count / 1000) {
        spread.append(medianMilliseconds(1, [&] { wordChangesInRange(document, first, first + screenLines - 1); }));
    }
    std::ranges::sort(spread);
    out << QString::asprintf("%lld screens through the document: median %.4f ms, 99th percentile %.4f ms, "
                             "slowest %.4f ms\n",
                             static_cast<long long>(spread.size()), spread[spread.size() / 2],
                             spread[spread.size() * 99 / 100], spread.last());

    out << "worst screens:\n";
    for (const int edits : {3, 15, 40, 400}) {
        const PresentedDiffDocument pairs =
            buildDiffDocument(longPairs(30, static_cast<int>(wordDiffMaxLineLength), edits));
        const double time = screenMilliseconds(pairs, 0, &marked);
        report(qPrintable(u"30 pairs of 999-unit lines, %1 words edited"_s.arg(edits)), time, marked);
    }
    QString added = u"@@ -0,0 +1,1000000 @@\n"_s;
    for (int line = 0; line < 1000000; ++line)
        added += u"+line of a new file\n"_s;
    const PresentedDiffDocument newFile = buildDiffDocument(added);
    const double time = screenMilliseconds(newFile, newFile.unifiedLines.size() - screenLines, &marked);
    report("end of a 1,000,000-line new file", time, marked);
    // The one walk left: the range reaches the additions of a run whose unpaired deletions lie before it.
    QString deleted = u"@@ -1,1000000 +1 @@\n"_s;
    for (int line = 0; line < 999999; ++line)
        deleted += u"-line of an old file\n"_s;
    deleted += u"+line of a new file\n"_s;
    const PresentedDiffDocument rewritten = buildDiffDocument(deleted);
    const double walked = screenMilliseconds(rewritten, rewritten.unifiedLines.size() - screenLines, &marked);
    report("last screen of 999,999 deletions, 1 addition", walked, marked);
    out << "target: well under 1 ms a screenful of typical lines\n";
    return 0;
}
