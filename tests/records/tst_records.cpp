#include "RecordPrinting.h"
#include "TestEnvironment.h"

#include "records/Bookmark.h"
#include "records/FileState.h"
#include "records/LocalizedOrder.h"
#include "records/Repository.h"
#include "records/TextDecoding.h"
#include "records/TextSplitting.h"
#include "records/WorkingFile.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTimeZone>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;

Q_DECLARE_METATYPE(std::optional<tillery::FileState>)
Q_DECLARE_METATYPE(std::optional<tillery::RepositoryKind>)

class RecordsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void fileStateFromLetter_data()
    {
        QTest::addColumn<QString>("letter");
        QTest::addColumn<std::optional<FileState>>("expected");
        const std::pair<const char *, std::optional<FileState>> rows[] = {
            {"M", FileState::modified}, {"A", FileState::added},     {"R", FileState::removed},
            {"!", FileState::missing},  {"?", FileState::untracked}, {"I", FileState::ignored},
            {"C", FileState::clean},    {"U", FileState::unresolved}, {"X", std::nullopt},
            {"m", std::nullopt},        {"", std::nullopt},           {"MM", std::nullopt},
            {"M ", std::nullopt},
        };
        for (const auto &[letter, state] : rows)
            QTest::newRow(letter[0] ? letter : "empty") << QString::fromLatin1(letter) << state;
    }

    void fileStateFromLetter()
    {
        QFETCH(QString, letter);
        QFETCH(std::optional<FileState>, expected);
        QCOMPARE(tillery::fileStateFromLetter(letter), expected);
        if (expected)
            QCOMPARE(fileStateLetter(*expected), letter);
    }

    void decodeRepository_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("gitEntry"); // "", "folder" or "file"
        QTest::addColumn<std::optional<RepositoryKind>>("expectedKind");

        QTest::newRow("mercurial") << QByteArray(R"({"path":"%1","kind":"mercurial"})") << u""_s
                                   << std::optional(RepositoryKind::mercurial);
        QTest::newRow("git kind wins over missing .git")
            << QByteArray(R"({"path":"%1","kind":"git"})") << u""_s << std::optional(RepositoryKind::git);
        QTest::newRow("kind is case-sensitive")
            << QByteArray(R"({"path":"%1","kind":"Mercurial"})") << u""_s
            << std::optional<RepositoryKind>();
        QTest::newRow("unknown kind") << QByteArray(R"({"path":"%1","kind":"svn"})") << u""_s
                                      << std::optional<RepositoryKind>();
        QTest::newRow("kind of wrong type") << QByteArray(R"({"path":"%1","kind":1})") << u""_s
                                            << std::optional<RepositoryKind>();
        QTest::newRow("no kind, .git folder")
            << QByteArray(R"({"path":"%1"})") << u"folder"_s << std::optional(RepositoryKind::git);
        QTest::newRow("no kind, .git file (worktree)")
            << QByteArray(R"({"path":"%1"})") << u"file"_s << std::optional(RepositoryKind::git);
        QTest::newRow("no kind, no .git") << QByteArray(R"({"path":"%1"})") << u""_s
                                          << std::optional(RepositoryKind::mercurial);
        QTest::newRow("no kind, folder missing")
            << QByteArray(R"({"path":"%1/does-not-exist"})") << u""_s
            << std::optional(RepositoryKind::mercurial);
        QTest::newRow("no path") << QByteArray(R"({"kind":"git"})") << u""_s
                                 << std::optional<RepositoryKind>();
        QTest::newRow("path of wrong type") << QByteArray(R"({"path":7,"kind":"git"})") << u""_s
                                            << std::optional<RepositoryKind>();
    }

    void decodeRepository()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, gitEntry);
        QFETCH(std::optional<RepositoryKind>, expectedKind);

        QTemporaryDir folder;
        const QString gitPath = QDir(folder.path()).filePath(u".git"_s);
        if (gitEntry == u"folder")
            QVERIFY(QDir().mkdir(gitPath));
        if (gitEntry == u"file") {
            QFile file(gitPath);
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        const QByteArray text = QByteArray(json).replace("%1", folder.path().toUtf8());
        const std::optional<Repository> repository = tillery::decodeRepository(QJsonDocument::fromJson(text).object());

        QCOMPARE(repository.has_value(), expectedKind.has_value());
        if (!repository)
            return;
        QCOMPARE(repository->kind, *expectedKind);
        // What is written reads back as the same record, with both keys present.
        const QJsonObject encoded = encodeRepository(*repository);
        QCOMPARE(encoded.keys(), (QStringList{u"kind"_s, u"path"_s}));
        QCOMPARE(tillery::decodeRepository(encoded), repository);
    }

    void identityDiffersFromEquality()
    {
        const WorkingFile modified{u"a.txt"_s, FileState::modified};
        const WorkingFile added{u"a.txt"_s, FileState::added};
        QVERIFY(modified != added);
        QCOMPARE(modified.id(), added.id());

        const Repository asGit{u"/r"_s, RepositoryKind::git};
        const Repository asMercurial{u"/r"_s, RepositoryKind::mercurial};
        QVERIFY(asGit != asMercurial);
        QCOMPARE(asGit.id(), asMercurial.id());
        QVERIFY(qHash(asGit) != qHash(asMercurial));
    }

    void bookmarkDateTakesPartInEqualityAndHash()
    {
        Bookmark undated{u"main"_s, 3, u"abc"_s, true, std::nullopt, false};
        Bookmark dated = undated;
        dated.date = QDateTime::fromSecsSinceEpoch(0, Qt::UTC);
        QVERIFY(undated != dated);
        QVERIFY(qHash(undated) != qHash(dated));
        Bookmark sameDate = dated;
        QCOMPARE(sameDate, dated);
        QCOMPARE(qHash(sameDate), qHash(dated));
    }

    void localizedOrder_data()
    {
        QTest::addColumn<QStringList>("input");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("digit runs by value")
            << QStringList{u"file10.txt"_s, u"file9.txt"_s, u"file1.txt"_s}
            << QStringList{u"file1.txt"_s, u"file9.txt"_s, u"file10.txt"_s};
        QTest::newRow("case-insensitive")
            << QStringList{u"beta"_s, u"Alpha"_s, u"alpha2"_s, u"Gamma"_s}
            << QStringList{u"Alpha"_s, u"alpha2"_s, u"beta"_s, u"Gamma"_s};
        QTest::newRow("folders with numbers")
            << QStringList{u"src/v10/a"_s, u"src/v2/a"_s, u"Src/v3/a"_s}
            << QStringList{u"src/v2/a"_s, u"Src/v3/a"_s, u"src/v10/a"_s};
        QTest::newRow("non-ASCII letters")
            << QStringList{u"zebra"_s, u"\u00e9t\u00e9"_s, u"apple"_s}
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
        QTest::newRow("first piece, leading empties skipped")
            << u"\n\nFix crash\nDetails\nMore"_s << QChar(u'\n') << 1
            << QStringList{u"Fix crash"_s, u"Details\nMore"_s};
        QTest::newRow("empty pieces do not count") << u"=a=b"_s << QChar(u'=') << 1
                                                   << QStringList{u"a"_s, u"b"_s};
        QTest::newRow("empty rest is dropped") << u"name ="_s << QChar(u'=') << 1
                                               << QStringList{u"name "_s};
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
        QTest::newRow("ascii") << QByteArray("main\n") << u"main\n"_s;
        QTest::newRow("utf-8") << QByteArray("caf\xc3\xa9") << u"caf\u00e9"_s;
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
