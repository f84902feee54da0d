#include "diff/WordDiff.h"

#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace tillery;

namespace {

// The text each span covers, in brackets, after checking that it lies past
// the marker and does not cut a surrogate pair.
QString covered(QStringView line, const QList<ChangedSpan> &spans)
{
    QString described;
    for (const ChangedSpan &span : spans) {
        const qsizetype end = span.start + span.length;
        if (span.start < 1 || span.length < 1 || end > line.size() || line[span.start].isLowSurrogate()
            || line[end - 1].isHighSurrogate())
            return u"bad span %1+%2"_s.arg(span.start).arg(span.length);
        described += u'[' + line.sliced(span.start, span.length).toString() + u']';
    }
    return described;
}

} // namespace

class WordDiffTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // The changed words of a removed and an added line as "removed / added", or "none" when nothing is marked.
    void diffWords_data()
    {
        QTest::addColumn<QString>("removed");
        QTest::addColumn<QString>("added");
        QTest::addColumn<QString>("marked");
        QTest::newRow("word in the middle") << u"-int count = 0;"_s << u"+int total = 0;"_s << u"[count] / [total]"_s;
        QTest::newRow("first word, next to the marker") << u"-old rest"_s << u"+new rest"_s << u"[old] / [new]"_s;
        QTest::newRow("several changes") << u"-call(alpha, beta, gamma);"_s << u"+call(alpha, delta, gamma, omega);"_s
                                         << u"[beta] / [delta][, omega]"_s;
        QTest::newRow("one space between changed words is swallowed")
            << u"-value = foo bar;"_s << u"+value = baz qux;"_s << u"[foo bar] / [baz qux]"_s;
        QTest::newRow("insertion only") << u"-f(a)"_s << u"+f(a, b)"_s << u" / [, b]"_s;
        QTest::newRow("identical") << u"-same text"_s << u"+same text"_s << u" / "_s;
        QTest::newRow("whitespace only") << u"-a  = 1"_s << u"+a = 1"_s << u"[  ] / [ ]"_s;
        QTest::newRow("tab to spaces") << u"-\tx"_s << u"+    x"_s << u"[\t] / [    ]"_s;
        QTest::newRow("too different") << u"-return left + right;"_s << u"+throw Error();"_s << u"none"_s;
        QTest::newRow("shared indentation is not enough")
            << u"-        return a;"_s << u"+        throw b();"_s << u"none"_s;
        QTest::newRow("blank line becomes text") << u"-"_s << u"+text"_s << u"none"_s;
        const QString filler = u"w "_s.repeated(498);
        QTest::newRow("longest lines compared")
            << u"-"_s + filler + u"abc"_s << u"+"_s + filler + u"xyz"_s << u"[abc] / [xyz]"_s;
        QTest::newRow("one unit too long") << u"-"_s + filler + u"abcd"_s << u"+"_s + filler + u"xyz"_s << u"none"_s;
        QTest::newRow("too many scattered changes")
            << u"-"_s + u"a b "_s.repeated(120) << u"+"_s + u"a c "_s.repeated(120) << u"none"_s;
        QTest::newRow("accented letters") << u"-int größe = 1;"_s << u"+int größer = 1;"_s << u"[größe] / [größer]"_s;
        QTest::newRow("combining accent stays in its word")
            << u"-cafe\u0301 ok"_s << u"+cafe ok"_s << u"[cafe\u0301] / [cafe]"_s;
        QTest::newRow("emoji sharing a high surrogate")
            << u"-ok \U0001F600 done"_s << u"+ok \U0001F603 done"_s << u"[\U0001F600] / [\U0001F603]"_s;
        QTest::newRow("letters beyond the first plane form words")
            << u"-let \U0001D465\U0001D466 = 1"_s << u"+let \U0001D465\U0001D467 = 1"_s
            << u"[\U0001D465\U0001D466] / [\U0001D465\U0001D467]"_s;
        QTest::newRow("CR LF inside the line")
            << u"-first line\r\nold end"_s << u"+first line\r\nnew end"_s << u"[old] / [new]"_s;
        QTest::newRow("carriage return dropped") << u"-x = 1\r"_s << u"+x = 1"_s << u"[\r] / "_s;
    }

    void diffWords()
    {
        QFETCH(QString, removed);
        QFETCH(QString, added);
        QFETCH(QString, marked);
        const std::optional<WordChanges> changes = tillery::diffWords(removed, added);
        QCOMPARE(changes ? covered(removed, changes->removed) + u" / "_s + covered(added, changes->added) : u"none"_s,
                 marked);
    }

    // The marked lines of a hunk, "index:covered" in line order, for the unified lines first to last.
    void wordChangesInRange_data()
    {
        QTest::addColumn<QString>("lines");
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("last");
        QTest::addColumn<QString>("marked");
        const QString threeForOne = u"-call(one)\n-call(two)\n-call(three)\n+call(four)\n c"_s;
        QTest::newRow("first deletion pairs with the addition") << threeForOne << 0 << 5 << u"1:[one] 4:[four]"_s;
        QTest::newRow("range holds the addition alone") << threeForOne << 4 << 4 << u"1:[one] 4:[four]"_s;
        QTest::newRow("from the last deletion to the addition") << threeForOne << 3 << 4 << u"1:[one] 4:[four]"_s;
        QTest::newRow("range holds the unpaired deletions") << threeForOne << 2 << 3 << QString();
        const QString twoForThree = u"-k(1)\n-k(2)\n+k(3)\n+k(4)\n+k(5)"_s;
        QTest::newRow("edge cuts the deletions") << twoForThree << 2 << 2 << u"2:[2] 4:[4]"_s;
        QTest::newRow("edge cuts the additions") << twoForThree << 4 << 9 << u"2:[2] 4:[4]"_s;
        QTest::newRow("from the second deletion into the additions")
            << twoForThree << 2 << 3 << u"1:[1] 2:[2] 3:[3] 4:[4]"_s;
        QTest::newRow("unpaired addition") << twoForThree << 5 << 5 << QString();
        const QString blocks = u"+n(0)\n-p(1)\n+p(2)\n-q(3)\n-q(4)\n+q(5)\n+q(6)\n c\n-r(7)\n c\n+r(8)"_s;
        QTest::newRow("blocks apart") << blocks << 0 << 11 << u"2:[1] 3:[2] 4:[3] 5:[4] 6:[5] 7:[6]"_s;
        QTest::newRow("second block's second deletion") << blocks << 5 << 6 << u"4:[3] 5:[4] 6:[5] 7:[6]"_s;
        QTest::newRow("context between runs") << blocks << 8 << 11 << QString();
    }

    void wordChangesInRange()
    {
        QFETCH(QString, lines);
        QFETCH(int, first);
        QFETCH(int, last);
        QFETCH(QString, marked);
        const PresentedDiffDocument document = buildDiffDocument(u"@@ -1,9 +1,9 @@\n"_s + lines);
        const QHash<qsizetype, QList<ChangedSpan>> changes = tillery::wordChangesInRange(document, first, last);
        QList<qsizetype> indices = changes.keys();
        std::ranges::sort(indices);
        QStringList described;
        for (const qsizetype index : indices)
            described.append(u"%1:"_s.arg(index)
                             + covered(document.textOf(document.unifiedLines[index]), changes[index]));
        QCOMPARE(described.join(u' '), marked);
    }
};

QTEST_GUILESS_MAIN(WordDiffTest)
#include "tst_word_diff.moc"
