// The diff text as the views draw it, its changed words, and patches of chosen changes.
#include "diff/DiffDocument.h"
#include "diff/FilePatch.h"
#include "diff/WordDiff.h"

#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace tillery;

namespace {

QString number(qint64 value)
{
    return value == noLineNumber ? u"."_s : QString::number(value);
}

// "id kind old new text" for each line, with kind h, c, + or - and "." for
// an absent number, joined by "|".
QString describeUnified(const PresentedDiffDocument &document)
{
    static const char *const kinds[] = {"h", "c", "+", "-"};
    QStringList described;
    for (const PresentedDiffLine &line : document.unifiedLines) {
        described.append(u"%1 %2 %3 %4 %5"_s.arg(line.id).arg(QLatin1StringView(kinds[static_cast<int>(line.kind)]),
                                                              number(line.oldLine), number(line.newLine),
                                                              document.textOf(line)));
    }
    return described.join(u'|');
}

// "left/right" unified ids for each row, "." for an absent side and a
// trailing "H" for a header row.
QString describeSplit(const PresentedDiffDocument &document)
{
    const auto id = [](const PresentedDiffLine *line) { return line ? QString::number(line->id) : u"."_s; };
    QStringList described;
    for (const SplitDiffLine &row : document.splitLines)
        described.append(id(document.leftOf(row)) + u'/' + id(document.rightOf(row))
                         + (row.isHeader ? u"H"_s : QString()));
    return described.join(u' ');
}

const QString twelve = u"one\ntwo\nthree\nfour\nfive\nsix\nseven\neight\nnine\nten\neleven\ntwelve\n"_s;
const QString twelveChanged = u"one\nTWO\nthree\nfour\nfive\nsix\nseven\neight\nnine\nten\neleven\ntwelve\nthirteen"_s;
// As git prints them.
const QString twoHunks = u"diff --git a/a b/a\nindex e031777..d1fe5b1 100644\n--- a/a\n+++ b/a\n"
                         "@@ -1,5 +1,5 @@\n one\n-two\n+TWO\n three\n four\n five\n"
                         "@@ -10,3 +10,4 @@ nine\n ten\n eleven\n twelve\n+thirteen\n\\ No newline at end of file\n"_s;
const QString crlfDiff = u"diff --git a/c b/c\n--- a/c\n+++ b/c\n@@ -1,3 +1,4 @@\n a\r\n-b\r\n+B\r\n c\r\n+d\r\n"_s;
const QString newFileDiff =
    u"diff --git a/n b/n\nnew file mode 100644\n--- /dev/null\n+++ b/n\n@@ -0,0 +1,2 @@\n+x\n+y\n"_s;
const QString farApart = u"--- a/n\n+++ b/n\n@@ -1,15 +1,15 @@\n 1\n 2\n-3\n+x\n 4\n 5\n 6\n 7\n 8\n-9\n+y\n"
                         " 10\n 11\n 12\n 13\n 14\n-15\n+z\n"_s;
const QString lastLineGainsFeed = u"--- a/l\n+++ b/l\n@@ -1,2 +1,2 @@\n a\n-b\n\\ No newline at end of file\n+b\n"_s;

// The ids of the diff's added and removed lines, in order.
QList<qsizetype> changedIds(const FilePatch &patch)
{
    QList<qsizetype> ids = patch.changedLineIds().values();
    std::sort(ids.begin(), ids.end());
    return ids;
}

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

class DiffTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // The document the diff view draws from a diff text: its unified lines with their numbers, and the
    // split rows that pair them.
    void document_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("unified");
        QTest::addColumn<QString>("split");
        // A binary file's headers and encoded patch say nothing to a person:
        // the document shows a notice instead.
        QTest::newRow("headers and a binary note only")
            << u"diff --git a/x b/x\nindex 1..2\nBinary files a/x and b/x differ\n"_s << QString() << QString();
        QTest::newRow("Mercurial's binary patch")
            << u"diff --git a/x.bin b/x.bin\nindex 1..2\nGIT binary patch\nliteral 9\nQcmZQzU|>Yx\n\n"_s << QString()
            << QString();
        QTest::newRow("placeholder sentence")
            << u"No textual diff is available for this file."_s << QString() << QString();
        QTest::newRow("ordinary file: first hunk line is 4, its row 0")
            << u"diff --git a/f b/f\nindex 1..2 100644\n--- a/f\n+++ b/f\n@@ -10,4 +10,5 @@ fn\n a\n-b\n+B\n+B2\n c\n"_s
            << u"4 h . . @@ -10,4 +10,5 @@ fn|5 c 10 10  a|6 - 11 . -b|7 + . 11 +B|8 + . 12 +B2|9 c 12 13  c"_s
            << u"4/4H 5/5 6/7 ./8 9/9"_s;
        QTest::newRow("new file") << u"@@ -0,0 +1,3 @@\n+a\n+b\n+c"_s
                                  << u"0 h . . @@ -0,0 +1,3 @@|1 + . 1 +a|2 + . 2 +b|3 + . 3 +c"_s
                                  << u"0/0H ./1 ./2 ./3"_s;
        QTest::newRow("three deletions, one addition")
            << u"@@ -1,3 +1 @@\n-a\n-b\n-c\n+d"_s
            << u"0 h . . @@ -1,3 +1 @@|1 - 1 . -a|2 - 2 . -b|3 - 3 . -c|4 + . 1 +d"_s << u"0/0H 1/4 2/. 3/."_s;
        QTest::newRow("deletions, context, additions are not paired")
            << u"@@ -1,3 +1,3 @@\n-a\n x\n+b"_s << u"0 h . . @@ -1,3 +1,3 @@|1 - 1 . -a|2 c 2 1  x|3 + . 2 +b"_s
            << u"0/0H 1/. 2/2 ./3"_s;
        QTest::newRow("no-newline note does not break pairing")
            << u"@@ -1 +1 @@\n-x\n\\ No newline at end of file\n+y\n\\ No newline at end of file\n"_s
            << u"0 h . . @@ -1 +1 @@|1 - 1 . -x|3 + . 1 +y"_s << u"0/0H 1/3"_s;
        QTest::newRow("combined header dropped, context before a real hunk dropped")
            << u"@@@ -1,2 -1,2 +1,3 @@@\n  both\n-gone\n@@ -7 +9 @@\n ctx"_s
            << u"2 - . . -gone|3 h . . @@ -7 +9 @@|4 c 7 9  ctx"_s << u"2/. 3/3H 4/4"_s;
        QTest::newRow("deleted '--- x' and added '++ y' are taken for headers")
            << u"@@ -1,3 +1,3 @@\n---- x\n-a\n+++ y\n+b\n c"_s
            << u"0 h . . @@ -1,3 +1,3 @@|2 - 1 . -a|4 + . 1 +b|5 c 2 2  c"_s << u"0/0H 2/4 5/5"_s;
        QTest::newRow("carriage return before line feed joins lines")
            << u"@@ -1,2 +1,2 @@\n-a\r\n+b\n c\r\r\n"_s
            << u"0 h . . @@ -1,2 +1,2 @@|1 - 1 . -a\r\n+b|2 c 2 1  c\r\r\n"_s << u"0/0H 1/. 2/2"_s;
        QTest::newRow("additions before any hunk are unnumbered")
            << u"diff --git a/n b/n\nnew file\n--- /dev/null\n+++ b/n\n+a\n+"_s << u"4 + . . +a|5 + . . +"_s
            << u"./4 ./5"_s;
        QTest::newRow("second file re-seeds the counters")
            << u"diff --git a/a b/a\n--- a/a\n+++ b/a\n@@ -1 +1 @@\n-x\n+y\n"
               "diff --git a/b b/b\n--- a/b\n+++ b/b\n@@ -20 +30 @@\n z"_s
            << u"3 h . . @@ -1 +1 @@|4 - 1 . -x|5 + . 1 +y|9 h . . @@ -20 +30 @@|10 c 20 30  z"_s
            << u"3/3H 4/5 9/9H 10/10"_s;
        QTest::newRow("header with a tab, a no-break space and an extra @")
            << u"@@\t-1,2\u00a0+3 @@@\n a"_s << u"0 h . . @@\t-1,2\u00a0+3 @@@|1 c 1 3  a"_s << u"0/0H 1/1"_s;
        QTest::newRow("headers not closed, indented or with other digits are not headers")
            << u"@@ -1 +1 @@\n@@ -5 +5\n @@ -5 +5 @@\n@@ -\u0661 +5 @@\n a"_s
            << u"0 h . . @@ -1 +1 @@|2 c 1 1  @@ -5 +5 @@|4 c 2 2  a"_s << u"0/0H 2/2 4/4"_s;
        QTest::newRow("a header that fails to parse keeps the counters")
            << u"@@ -1 +1 @@\n a\n@@ -99999999999999999999 +5 @@\n b"_s
            << u"0 h . . @@ -1 +1 @@|1 c 1 1  a|3 c 2 2  b"_s << u"0/0H 1/1 3/3"_s;
    }

    void document()
    {
        QFETCH(QString, text);
        QFETCH(QString, unified);
        QFETCH(QString, split);
        const PresentedDiffDocument document = buildDiffDocument(text);
        const bool binary = QByteArray(QTest::currentDataTag()).contains("binary");
        QCOMPARE(document.text, binary ? binaryFileNotice() : text);
        QCOMPARE(describeUnified(document), unified);
        QCOMPARE(describeSplit(document), split);
    }

    // A conflicted file's lines take the part of the conflict they are in, across hunks; marker-like
    // lines out of place, and removed lines, take none.
    void conflictParts()
    {
        const QString text = u"@@ -1,4 +1,12 @@\n a\n+<<<<<<< working copy\n b\n+||||||| base\n+B\n+=======\n"
                             "@@ -9,2 +17,3 @@\n+c\n-gone\n+>>>>>>> merge rev\n+=======\n+>>>>>>> stray\n"_s;
        QStringList parts;
        for (const PresentedDiffLine &line : buildDiffDocument(text).unifiedLines)
            parts.append(QString::number(static_cast<int>(line.conflict)));
        // none 0, marker 1, mine 2, base 3, theirs 4.
        QCOMPARE(parts.join(u' '), u"0 0 1 2 1 3 1 0 4 0 1 0 0"_s);
    }

    // Cells a line takes: tabs reach the next stop, wide characters and
    // those beyond the first plane take two.
    void displayColumns_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<qint64>("columns");
        QTest::newRow("tab at the start") << u"\tx"_s << qint64(9);
        QTest::newRow("tab after three cells") << u"abc\tx"_s << qint64(9);
        QTest::newRow("tab right at a stop") << u"12345678\tx"_s << qint64(17);
        QTest::newRow("wide letters and an emoji") << u"\u6f22\u5b57 \U0001F600"_s << qint64(7);
    }

    void displayColumns()
    {
        QFETCH(QString, text);
        QFETCH(qint64, columns);
        QCOMPARE(tillery::displayColumns(text), columns);
    }

    // Choosing some changes: the old text with them made (a partial commit) and the new text with them undone
    // (a partial discard). Choosing all or none must give the other side or the same text, for every row.
    void applyingChosenChanges_data()
    {
        QTest::addColumn<QString>("diff");
        QTest::addColumn<QString>("oldText");
        QTest::addColumn<QString>("newText");
        QTest::addColumn<QList<int>>("chosen");
        QTest::addColumn<QString>("committed");
        QTest::addColumn<QString>("discarded");
        const QString twelveWithTwo = QString(twelveChanged).replace(u"TWO"_s, u"two"_s);
        QTest::newRow("first hunk of two") << twoHunks << twelve << twelveChanged << QList<int>{0, 1}
                                           << QString(twelve).replace(u"two"_s, u"TWO"_s) << twelveWithTwo;
        QTest::newRow("a last line without a feed") << twoHunks << twelve << twelveChanged << QList<int>{2}
                                                    << twelve + u"thirteen"_s << QString(twelveChanged).chopped(8);
        QTest::newRow("CR LF, an added line only")
            << crlfDiff << u"a\r\nb\r\nc\r\n"_s << u"a\r\nB\r\nc\r\nd\r\n"_s << QList<int>{2}
            << u"a\r\nb\r\nc\r\nd\r\n"_s << u"a\r\nB\r\nc\r\n"_s;
        QTest::newRow("half of a replaced line") << crlfDiff << u"a\r\nb\r\nc\r\n"_s << u"a\r\nB\r\nc\r\nd\r\n"_s
                                                 << QList<int>{0} << u"a\r\nc\r\n"_s << u"a\r\nb\r\nB\r\nc\r\nd\r\n"_s;
        QTest::newRow("new file") << newFileDiff << QString() << u"x\ny\n"_s << QList<int>{1} << u"y\n"_s << u"x\n"_s;
        const QString fifteen = u"1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n11\n12\n13\n14\n15\n"_s;
        const QString fifteenChanged = QString(fifteen).replace(u"\n3\n"_s, u"\nx\n"_s).replace(u"\n9"_s, u"\ny"_s);
        QTest::newRow("the ends of a long hunk, its middle left")
            << farApart << fifteen << QString(fifteenChanged).replace(u"15"_s, u"z"_s) << QList<int>{0, 1, 4, 5}
            << QString(fifteen).replace(u"\n3\n"_s, u"\nx\n"_s).replace(u"15"_s, u"z"_s)
            << QString(fifteen).replace(u"\n9"_s, u"\ny"_s);
        QTest::newRow("feed added to the last line, new line only")
            << lastLineGainsFeed << u"a\nb"_s << u"a\nb\n"_s << QList<int>{1} << u"a\nb\nb\n"_s << u"a\n"_s;
    }
    void applyingChosenChanges()
    {
        QFETCH(QString, diff);
        QFETCH(QString, oldText);
        QFETCH(QString, newText);
        QFETCH(QList<int>, chosen);
        const std::optional<FilePatch> patch = parseFilePatch(diff);
        QVERIFY(patch);
        const QList<qsizetype> ids = changedIds(*patch);
        QSet<qsizetype> chosenIds;
        for (const int index : chosen)
            chosenIds.insert(ids.at(index));
        QTEST(applyChosenChanges(oldText, PatchSide::old, *patch, chosenIds).value_or(u"(refused)"_s), "committed");
        // The chosen hunks alone make the same commit.
        const std::optional<FilePatch> hunks =
            parseFilePatch(u"--- a/f\n+++ b/f\n"_s + chosenHunksText(*patch, chosenIds));
        QVERIFY(hunks);
        QTEST(applyChosenChanges(oldText, PatchSide::old, *hunks, hunks->changedLineIds()).value_or(u"(refused)"_s),
              "committed");
        QTEST(applyChosenChanges(newText, PatchSide::changed, *patch, chosenIds).value_or(u"(refused)"_s), "discarded");

        const QSet<qsizetype> all(ids.cbegin(), ids.cend());
        QCOMPARE(applyChosenChanges(oldText, PatchSide::old, *patch, all), newText);
        QCOMPARE(applyChosenChanges(newText, PatchSide::changed, *patch, all), oldText);
        QCOMPARE(applyChosenChanges(oldText, PatchSide::old, *patch, {}), oldText);
        QCOMPARE(applyChosenChanges(newText, PatchSide::changed, *patch, {}), newText);
    }

    // A text that no longer matches the diff is refused, and diffs without usable hunks give nothing.
    void staleTextsAreRefused()
    {
        const std::optional<FilePatch> patch = parseFilePatch(twoHunks);
        QVERIFY(patch);
        const QSet<qsizetype> all = patch->changedLineIds();
        QCOMPARE(applyChosenChanges(QString(twelve).replace(u"four"_s, u"4"_s), PatchSide::old, *patch, all),
                 std::nullopt);
        QCOMPARE(applyChosenChanges(twelve.chopped(1), PatchSide::old, *patch, all), std::nullopt);
        QCOMPARE(applyChosenChanges(twelve.first(20), PatchSide::old, *patch, all), std::nullopt);
        QVERIFY(!parseFilePatch(u"diff --git a/p b/p\nBinary files a/p and b/p differ\n"_s));
        QVERIFY(!parseFilePatch(twoHunks.chopped(40)));
        QVERIFY(!parseFilePatch(QString()));
    }

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

QTEST_GUILESS_MAIN(DiffTest)
#include "tst_diff.moc"
