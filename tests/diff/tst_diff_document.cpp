#include "TestEnvironment.h"

#include "diff/DiffDocument.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;

namespace {

QString number(const std::optional<qint64> &value)
{
    return value ? QString::number(*value) : u"."_s;
}

// "id kind old new text", with kind h, c, + or - and "." for an absent number.
QStringList describeUnified(const QList<PresentedDiffLine> &lines)
{
    static const char *const kinds[] = {"h", "c", "+", "-"};
    QStringList rows;
    for (const PresentedDiffLine &line : lines) {
        rows.append(u"%1 %2 %3 %4 %5"_s.arg(line.id)
                        .arg(QLatin1StringView(kinds[static_cast<int>(line.kind)]), number(line.oldLine),
                             number(line.newLine), line.text));
    }
    return rows;
}

// "row: left-id | right-id", a trailing "H" for header rows, "." for an absent side.
QStringList describeSplit(const QList<SplitDiffLine> &rows)
{
    QStringList described;
    for (const SplitDiffLine &row : rows) {
        described.append(u"%1: %2 | %3%4"_s.arg(row.id)
                             .arg(row.left ? QString::number(row.left->id) : u"."_s,
                                  row.right ? QString::number(row.right->id) : u"."_s,
                                  row.isHeader ? u" H"_s : QString()));
    }
    return described;
}

} // namespace

class DiffDocumentTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void hunkHeader_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<qint64>("oldStart"); // -1: not a header
        QTest::addColumn<qint64>("newStart");
        QTest::newRow("counts and function") << u"@@ -12,5 +14,7 @@ int main()"_s << 12LL << 14LL;
        QTest::newRow("no counts") << u"@@ -5 +5 @@"_s << 5LL << 5LL;
        QTest::newRow("new file") << u"@@ -0,0 +1,3 @@"_s << 0LL << 1LL;
        QTest::newRow("tabs and no-break space") << u"@@\t-1,2\u00a0+3 @@"_s << 1LL << 3LL;
        QTest::newRow("extra @ after the header") << u"@@ -1,2 +3,4 @@@"_s << 1LL << 3LL;
        QTest::newRow("combined diff") << u"@@@ -1,2 -1,2 +1,3 @@@"_s << -1LL << -1LL;
        QTest::newRow("not closed") << u"@@ -1 +1"_s << -1LL << -1LL;
        QTest::newRow("indented") << u" @@ -1 +1 @@"_s << -1LL << -1LL;
        QTest::newRow("beyond 64 bits") << u"@@ -99999999999999999999 +1 @@"_s << -1LL << -1LL;
        QTest::newRow("other digits") << u"@@ -\u0661 +1 @@"_s << -1LL << -1LL;
    }

    void hunkHeader()
    {
        QFETCH(QString, line);
        QFETCH(qint64, oldStart);
        QFETCH(qint64, newStart);
        const auto parsed = parseHunkHeader(line);
        if (oldStart < 0)
            QCOMPARE(parsed, std::nullopt);
        else
            QCOMPARE(parsed, std::optional(std::pair(oldStart, newStart)));
    }

    void document_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("unified");
        QTest::addColumn<QStringList>("split");

        QTest::newRow("empty") << QString() << QStringList{} << QStringList{};
        // A binary file's headers and encoded patch say nothing to a person.
        QTest::newRow("headers and a binary note only")
            << u"diff --git a/x b/x\nindex 1..2\nBinary files a/x and b/x differ\n"_s << QStringList{}
            << QStringList{};
        QTest::newRow("Mercurial's binary patch")
            << u"diff --git a/x.bin b/x.bin\nindex 1..2\nGIT binary patch\nliteral 9\nQcmZQzU|>Yx\n\n"_s
            << QStringList{} << QStringList{};
        QTest::newRow("ordinary file: first hunk line is 4, its row 0")
            << u"diff --git a/f b/f\nindex 1..2 100644\n--- a/f\n+++ b/f\n@@ -10,4 +10,5 @@ fn\n a\n-b\n+B\n+B2\n c\n"_s
            << QStringList{u"4 h . . @@ -10,4 +10,5 @@ fn"_s, u"5 c 10 10  a"_s, u"6 - 11 . -b"_s,
                           u"7 + . 11 +B"_s, u"8 + . 12 +B2"_s, u"9 c 12 13  c"_s}
            << QStringList{u"0: 4 | 4 H"_s, u"1: 5 | 5"_s, u"2: 6 | 7"_s, u"3: . | 8"_s, u"4: 9 | 9"_s};
        QTest::newRow("new file") << u"@@ -0,0 +1,3 @@\n+a\n+b\n+c"_s
                                  << QStringList{u"0 h . . @@ -0,0 +1,3 @@"_s, u"1 + . 1 +a"_s,
                                                 u"2 + . 2 +b"_s, u"3 + . 3 +c"_s}
                                  << QStringList{u"0: 0 | 0 H"_s, u"1: . | 1"_s, u"2: . | 2"_s, u"3: . | 3"_s};
        QTest::newRow("three deletions, one addition")
            << u"@@ -1,3 +1 @@\n-a\n-b\n-c\n+d"_s
            << QStringList{u"0 h . . @@ -1,3 +1 @@"_s, u"1 - 1 . -a"_s, u"2 - 2 . -b"_s, u"3 - 3 . -c"_s,
                           u"4 + . 1 +d"_s}
            << QStringList{u"0: 0 | 0 H"_s, u"1: 1 | 4"_s, u"2: 2 | ."_s, u"3: 3 | ."_s};
        QTest::newRow("deletions, context, additions are not paired")
            << u"@@ -1,3 +1,3 @@\n-a\n x\n+b"_s
            << QStringList{u"0 h . . @@ -1,3 +1,3 @@"_s, u"1 - 1 . -a"_s, u"2 c 2 1  x"_s, u"3 + . 2 +b"_s}
            << QStringList{u"0: 0 | 0 H"_s, u"1: 1 | ."_s, u"2: 2 | 2"_s, u"3: . | 3"_s};
        QTest::newRow("no-newline note does not break pairing")
            << u"@@ -1 +1 @@\n-x\n\\ No newline at end of file\n+y\n\\ No newline at end of file\n"_s
            << QStringList{u"0 h . . @@ -1 +1 @@"_s, u"1 - 1 . -x"_s, u"3 + . 1 +y"_s}
            << QStringList{u"0: 0 | 0 H"_s, u"1: 1 | 3"_s};
        QTest::newRow("combined header dropped, context before a real hunk dropped")
            << u"@@@ -1,2 -1,2 +1,3 @@@\n  both\n-gone\n@@ -7 +9 @@\n ctx"_s
            << QStringList{u"2 - . . -gone"_s, u"3 h . . @@ -7 +9 @@"_s, u"4 c 7 9  ctx"_s}
            << QStringList{u"0: 2 | ."_s, u"1: 3 | 3 H"_s, u"2: 4 | 4"_s};
        QTest::newRow("deleted '--- x' and added '++ y' are taken for headers")
            << u"@@ -1,3 +1,3 @@\n---- x\n-a\n+++ y\n+b\n c"_s
            << QStringList{u"0 h . . @@ -1,3 +1,3 @@"_s, u"2 - 1 . -a"_s, u"4 + . 1 +b"_s,
                           u"5 c 2 2  c"_s}
            << QStringList{u"0: 0 | 0 H"_s, u"1: 2 | 4"_s, u"2: 5 | 5"_s};
        QTest::newRow("carriage return before line feed joins lines")
            << u"@@ -1,2 +1,2 @@\n-a\r\n+b\n c\r\r\n"_s
            << QStringList{u"0 h . . @@ -1,2 +1,2 @@"_s, u"1 - 1 . -a\r\n+b"_s, u"2 c 2 1  c\r\r\n"_s}
            << QStringList{u"0: 0 | 0 H"_s, u"1: 1 | ."_s, u"2: 2 | 2"_s};
        QTest::newRow("additions before any hunk are unnumbered")
            << u"diff --git a/n b/n\nnew file\n--- /dev/null\n+++ b/n\n+a\n+"_s
            << QStringList{u"4 + . . +a"_s, u"5 + . . +"_s} << QStringList{u"0: . | 4"_s, u"1: . | 5"_s};
        QTest::newRow("second file re-seeds the counters")
            << u"diff --git a/a b/a\n--- a/a\n+++ b/a\n@@ -1 +1 @@\n-x\n+y\ndiff --git a/b b/b\n--- a/b\n+++ b/b\n@@ -20 +30 @@\n z"_s
            << QStringList{u"3 h . . @@ -1 +1 @@"_s, u"4 - 1 . -x"_s, u"5 + . 1 +y"_s,
                           u"9 h . . @@ -20 +30 @@"_s, u"10 c 20 30  z"_s}
            << QStringList{u"0: 3 | 3 H"_s, u"1: 4 | 5"_s, u"2: 9 | 9 H"_s, u"3: 10 | 10"_s};
        QTest::newRow("a header that fails to parse keeps the counters")
            << u"@@ -1 +1 @@\n a\n@@ -99999999999999999999 +5 @@\n b"_s
            << QStringList{u"0 h . . @@ -1 +1 @@"_s, u"1 c 1 1  a"_s, u"3 c 2 2  b"_s}
            << QStringList{u"0: 0 | 0 H"_s, u"1: 1 | 1"_s, u"2: 3 | 3"_s};
        QTest::newRow("placeholder sentence") << u"No textual diff is available for this file."_s
                                              << QStringList{} << QStringList{};
    }

    void document()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, unified);
        QFETCH(QStringList, split);
        const PresentedDiffDocument document = buildDiffDocument(text);
        QCOMPARE(document.text, QTest::currentDataTag() == QByteArray("headers and a binary note only")
                                        || QTest::currentDataTag() == QByteArray("Mercurial's binary patch")
                                    ? u"Binary file"_s
                                    : text);
        QCOMPARE(describeUnified(document.unifiedLines), unified);
        QCOMPARE(describeSplit(document.splitLines), split);
    }

    void splitRowsCarryTheUnifiedLines()
    {
        const PresentedDiffDocument document = buildDiffDocument(u"@@ -3 +3 @@\n-old\n+new"_s);
        QCOMPARE(document.splitLines[1].left, std::optional(document.unifiedLines[1]));
        QCOMPARE(document.splitLines[1].right, std::optional(document.unifiedLines[2]));
    }

    void emptyDocumentIsShared()
    {
        QCOMPARE(&emptyDiffDocument(), &emptyDiffDocument());
        QCOMPARE(emptyDiffDocument(), buildDiffDocument(QString()));
    }

    // A million lines must build in one pass; anything quadratic would never
    // finish within the test's time limit.
    void millionLines()
    {
        constexpr int hunks = 10000;
        QString text = u"diff --git a/big b/big\n--- a/big\n+++ b/big\n"_s;
        for (int hunk = 0; hunk < hunks; ++hunk) {
            const int start = hunk * 100 + 1;
            text += u"@@ -%1,98 +%1,98 @@\n"_s.arg(start);
            for (int line = 0; line < 33; ++line)
                text += u" context line that stays the same\n-removed line\n+added line\n"_s;
        }
        const PresentedDiffDocument document = buildDiffDocument(text);
        QCOMPARE(document.unifiedLines.size(), qsizetype(hunks) * 100);
        QCOMPARE(document.splitLines.size(), qsizetype(hunks) * 67);
        const PresentedDiffLine &last = document.unifiedLines.last();
        QCOMPARE(last.id, 3 + qint64(hunks) * 100 - 1);
        QCOMPARE(last.newLine, std::optional<qint64>((hunks - 1) * 100 + 1 + 65));
        QCOMPARE(document.splitLines.last().id, qint64(hunks) * 67 - 1);
    }
};

QTEST_GUILESS_MAIN(DiffDocumentTest)
#include "tst_diff_document.moc"
