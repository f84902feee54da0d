#include "GeneratedDiff.h"

#include <QRandomGenerator>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace tillery::bench {

namespace {

// About 50 characters a line: a word soup with a little structure.
QString generatedLine(QRandomGenerator &random)
{
    static const QStringList words{u"value"_s, u"return"_s, u"index"_s,  u"buffer"_s, u"if"_s,
                                   u"const"_s, u"auto"_s,   u"result"_s, u"count"_s,  u"(item)"_s,
                                   u"= 0;"_s,  u"{"_s,      u"}"_s,      u"size()"_s, u"->next"_s};
    QString line = QString(static_cast<qsizetype>(random.bounded(4)) * 4, u' ');
    const int target = 38 + random.bounded(24);
    while (line.size() < target)
        line += words[random.bounded(static_cast<int>(words.size()))] + u' ';
    return line;
}

} // namespace

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

} // namespace tillery::bench
