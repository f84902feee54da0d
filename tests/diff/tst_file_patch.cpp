#include "diff/FilePatch.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;

namespace {

const QString twelve = u"one\ntwo\nthree\nfour\nfive\nsix\nseven\neight\nnine\nten\neleven\ntwelve\n"_s;
const QString twelveChanged = u"one\nTWO\nthree\nfour\nfive\nsix\nseven\neight\nnine\nten\neleven\ntwelve\nthirteen"_s;
// As git prints them.
const QString twoHunks = u"diff --git a/a b/a\nindex e031777..d1fe5b1 100644\n--- a/a\n+++ b/a\n"
                         "@@ -1,5 +1,5 @@\n one\n-two\n+TWO\n three\n four\n five\n"
                         "@@ -10,3 +10,4 @@ nine\n ten\n eleven\n twelve\n+thirteen\n\\ No newline at end of file\n"_s;
const QString crlfDiff = u"diff --git a/c b/c\n--- a/c\n+++ b/c\n@@ -1,3 +1,4 @@\n a\r\n-b\r\n+B\r\n c\r\n+d\r\n"_s;
const QString newFileDiff = u"diff --git a/n b/n\nnew file mode 100644\n--- /dev/null\n+++ b/n\n@@ -0,0 +1,2 @@\n+x\n+y\n"_s;
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

} // namespace

class FilePatchTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
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
        QTest::newRow("a last line without a feed")
            << twoHunks << twelve << twelveChanged << QList<int>{2} << twelve + u"thirteen"_s
            << QString(twelveChanged).chopped(8);
        QTest::newRow("CR LF, an added line only") << crlfDiff << u"a\r\nb\r\nc\r\n"_s << u"a\r\nB\r\nc\r\nd\r\n"_s
                                                   << QList<int>{2} << u"a\r\nb\r\nc\r\nd\r\n"_s
                                                   << u"a\r\nB\r\nc\r\n"_s;
        QTest::newRow("half of a replaced line") << crlfDiff << u"a\r\nb\r\nc\r\n"_s << u"a\r\nB\r\nc\r\nd\r\n"_s
                                                 << QList<int>{0} << u"a\r\nc\r\n"_s
                                                 << u"a\r\nb\r\nB\r\nc\r\nd\r\n"_s;
        QTest::newRow("new file") << newFileDiff << QString() << u"x\ny\n"_s << QList<int>{1} << u"y\n"_s
                                  << u"x\n"_s;
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
        const std::optional<FilePatch> hunks = parseFilePatch(u"--- a/f\n+++ b/f\n"_s + chosenHunksText(*patch, chosenIds));
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
    void refusals()
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
};

QTEST_GUILESS_MAIN(FilePatchTest)
#include "tst_file_patch.moc"
