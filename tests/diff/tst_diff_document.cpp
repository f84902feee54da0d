#include "diff/DiffDocument.h"

#include <QTest>

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

} // namespace

class DiffDocumentTest : public QObject {
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
};

QTEST_GUILESS_MAIN(DiffDocumentTest)
#include "tst_diff_document.moc"
