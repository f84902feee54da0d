#include "TestEnvironment.h"

#include "records/LocalizedOrder.h"
#include "records/Repository.h"
#include "records/TextDecoding.h"

#include <QDir>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;

// (The status letters and the splitting of texts are read through the
// parser tests; equality of records is left to the compiler.)
class RecordsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    // A stored repository without a kind is a Git one when it has a .git
    // entry; one whose kind or path cannot be read is dropped. (The settings
    // tests write and read the list back.)
    void decodeRepository_data()
    {
        QTest::addColumn<QByteArray>("json"); // FOLDER holds "plain", and "dir" and "file" with a .git of that type
        QTest::addColumn<QString>("expectedKind"); // empty: dropped
        QTest::newRow("git kind wins over missing .git")
            << QByteArray(R"({"path":"FOLDER/plain","kind":"git"})") << u"git"_s;
        QTest::newRow("kind is case-sensitive")
            << QByteArray(R"({"path":"FOLDER/plain","kind":"Mercurial"})") << QString();
        QTest::newRow("no kind, .git folder") << QByteArray(R"({"path":"FOLDER/dir"})") << u"git"_s;
        QTest::newRow("no kind, .git file (worktree)") << QByteArray(R"({"path":"FOLDER/file"})") << u"git"_s;
        QTest::newRow("no kind, no .git") << QByteArray(R"({"path":"FOLDER/plain"})") << u"mercurial"_s;
        QTest::newRow("no path") << QByteArray(R"({"kind":"git"})") << QString();
    }

    void decodeRepository()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, expectedKind);
        QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkpath(u"dir/.git"_s) && QDir(folder.path()).mkpath(u"file"_s));
        QVERIFY(QFile(folder.filePath(u"file/.git"_s)).open(QIODevice::WriteOnly));
        const QJsonObject object = QJsonDocument::fromJson(json.replace("FOLDER", folder.path().toUtf8())).object();
        const std::optional<Repository> repository = tillery::decodeRepository(object);
        QCOMPARE(repository ? rawValue(repository->kind) : QString(), expectedKind);
    }

    // The file browser's order, the same under the C locale and German: digit runs by value, letters
    // without regard to case or accents.
    void localizedOrder()
    {
        QStringList names{u"file10"_s, u"beta"_s,  u"\u00e9t\u00e9"_s, u"file9"_s, u"Alpha"_s,
                          u"zebra"_s,  u"file1"_s, u"alpha2"_s,        u"Gamma"_s};
        sortLocalized(names, [](const QString &text) { return text; });
        QCOMPARE(names, (QStringList{u"Alpha"_s, u"alpha2"_s, u"beta"_s, u"\u00e9t\u00e9"_s, u"file1"_s, u"file9"_s,
                                     u"file10"_s, u"Gamma"_s, u"zebra"_s}));
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
