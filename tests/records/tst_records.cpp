#include "TestEnvironment.h"

#include "records/FileState.h"
#include "records/LocalizedOrder.h"
#include "records/Repository.h"
#include "records/TextDecoding.h"
#include "records/TextSplitting.h"

#include <QDir>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;

class RecordsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void fileStateLetters()
    {
        for (const FileState state : allFileStates())
            QCOMPARE(fileStateFromLetter(fileStateLetter(state)), std::optional(state));
        for (const QString &letter : {u""_s, u"m"_s, u"X"_s, u"MM"_s, u"M "_s})
            QCOMPARE(fileStateFromLetter(letter), std::nullopt);
    }

    // A stored repository without a kind is a Git one when it has a .git
    // entry; one whose kind or path cannot be read is dropped. (The settings
    // tests write and read the list back.)
    void decodeRepository_data()
    {
        QTest::addColumn<QByteArray>("json"); // FOLDER stands for a new folder
        QTest::addColumn<QString>("gitEntry"); // "", "folder" or "file"
        QTest::addColumn<QString>("expectedKind"); // empty: dropped
        QTest::newRow("git kind wins over missing .git")
            << QByteArray(R"({"path":"FOLDER","kind":"git"})") << u""_s << u"git"_s;
        QTest::newRow("kind is case-sensitive")
            << QByteArray(R"({"path":"FOLDER","kind":"Mercurial"})") << u""_s << QString();
        QTest::newRow("kind of wrong type") << QByteArray(R"({"path":"FOLDER","kind":1})") << u""_s << QString();
        QTest::newRow("no kind, .git folder") << QByteArray(R"({"path":"FOLDER"})") << u"folder"_s << u"git"_s;
        QTest::newRow("no kind, .git file (worktree)") << QByteArray(R"({"path":"FOLDER"})") << u"file"_s << u"git"_s;
        QTest::newRow("no kind, no .git") << QByteArray(R"({"path":"FOLDER"})") << u""_s << u"mercurial"_s;
        QTest::newRow("no path") << QByteArray(R"({"kind":"git"})") << u""_s << QString();
        QTest::newRow("path of wrong type") << QByteArray(R"({"path":7,"kind":"git"})") << u""_s << QString();
    }

    void decodeRepository()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, gitEntry);
        QFETCH(QString, expectedKind);
        QTemporaryDir folder;
        const QString gitPath = QDir(folder.path()).filePath(u".git"_s);
        if (gitEntry == u"folder")
            QVERIFY(QDir().mkdir(gitPath));
        else if (gitEntry == u"file")
            QVERIFY(QFile(gitPath).open(QIODevice::WriteOnly));
        const QJsonObject object = QJsonDocument::fromJson(json.replace("FOLDER", folder.path().toUtf8())).object();
        const std::optional<Repository> repository = tillery::decodeRepository(object);
        QCOMPARE(repository ? rawValue(repository->kind) : QString(), expectedKind);
        QCOMPARE(repository ? repository->path : folder.path(), folder.path());
    }

    // The file browser's order, the same under the C locale and German.
    void localizedOrder_data()
    {
        QTest::addColumn<QStringList>("input");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("digit runs by value") << QStringList{u"file10.txt"_s, u"file9.txt"_s, u"file1.txt"_s}
                                             << QStringList{u"file1.txt"_s, u"file9.txt"_s, u"file10.txt"_s};
        QTest::newRow("case-insensitive") << QStringList{u"beta"_s, u"Alpha"_s, u"alpha2"_s, u"Gamma"_s}
                                          << QStringList{u"Alpha"_s, u"alpha2"_s, u"beta"_s, u"Gamma"_s};
        QTest::newRow("folders with numbers") << QStringList{u"src/v10/a"_s, u"src/v2/a"_s, u"Src/v3/a"_s}
                                              << QStringList{u"src/v2/a"_s, u"Src/v3/a"_s, u"src/v10/a"_s};
        QTest::newRow("non-ASCII letters") << QStringList{u"zebra"_s, u"\u00e9t\u00e9"_s, u"apple"_s}
                                           << QStringList{u"apple"_s, u"\u00e9t\u00e9"_s, u"zebra"_s};
    }

    void localizedOrder()
    {
        QFETCH(QStringList, input);
        QFETCH(QStringList, expected);
        sortLocalized(input, [](const QString &text) { return text; });
        QCOMPARE(input, expected);
    }

    void splitSkippingEmpty_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QChar>("separator");
        QTest::addColumn<int>("maxSplits");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("lines") << u"a\n\nb\n"_s << QChar(u'\n') << -1 << QStringList{u"a"_s, u"b"_s};
        QTest::newRow("only separators") << u"\n\n"_s << QChar(u'\n') << -1 << QStringList{};
        QTest::newRow("first piece, leading empties skipped") << u"\n\nFix crash\nDetails\nMore"_s << QChar(u'\n') << 1
                                                              << QStringList{u"Fix crash"_s, u"Details\nMore"_s};
        QTest::newRow("empty pieces do not count") << u"=a=b"_s << QChar(u'=') << 1 << QStringList{u"a"_s, u"b"_s};
        QTest::newRow("empty rest is dropped") << u"name ="_s << QChar(u'=') << 1 << QStringList{u"name "_s};
        QTest::newRow("no splits") << u"a=b"_s << QChar(u'=') << 0 << QStringList{u"a=b"_s};
    }

    void splitSkippingEmpty()
    {
        QFETCH(QString, text);
        QFETCH(QChar, separator);
        QFETCH(int, maxSplits);
        QFETCH(QStringList, expected);
        QStringList pieces;
        for (const QStringView piece : tillery::splitSkippingEmpty(text, separator, maxSplits))
            pieces.append(piece.toString());
        QCOMPARE(pieces, expected);
    }

    void decodeUtf8OrEmpty_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("expected");
        QTest::newRow("utf-8") << QByteArray("caf\xc3\xa9\n") << u"caf\u00e9\n"_s;
        QTest::newRow("latin-1 is not utf-8") << QByteArray("caf\xe9") << QString();
        QTest::newRow("truncated sequence") << QByteArray("ok\xc3") << QString();
        QTest::newRow("byte-order mark kept") << QByteArray("\xef\xbb\xbfx") << u"\ufeffx"_s;
    }

    void decodeUtf8OrEmpty()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, expected);
        QCOMPARE(tillery::decodeUtf8OrEmpty(bytes), expected);
    }
};

QTEST_GUILESS_MAIN(RecordsTest)
#include "tst_records.moc"
