#include "DiffText.h"
#include "TestEnvironment.h"

#include "process/Progress.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::bytes;

using OptionalString = std::optional<QString>;

class ProgressTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void git_data()
    {
        QTest::addColumn<QByteArray>("standardError");
        QTest::addColumn<OptionalString>("expected");
        QTest::newRow("newest of rewritten lines")
            << QByteArray("Cloning into 'x'...\nReceiving objects:  10% (1/10)\rReceiving objects:  45% (5/10), 1 MiB | 2 MiB/s\r")
            << OptionalString(u"Receiving objects: 45%"_s);
        QTest::newRow("remote phases") << QByteArray("remote: Counting objects:  70% (7/10)\r")
                                       << OptionalString(u"Counting objects: 70%"_s);
        QTest::newRow("done line still counts")
            << QByteArray("Resolving deltas:  50% (1/2)\rResolving deltas: 100% (2/2), done.\n")
            << OptionalString(u"Resolving deltas: 100%"_s);
        QTest::newRow("no progress") << QByteArray("Cloning into 'x'...\nwarning: something\n") << OptionalString();
        QTest::newRow("cut multi-byte letter at the start")
            << QByteArray(4096, 'x') + QByteArray("\xc3\rUnpacking objects:  3% (1/30)\r")
            << OptionalString(u"Unpacking objects: 3%"_s);
    }

    void git()
    {
        QFETCH(QByteArray, standardError);
        QFETCH(OptionalString, expected);
        QCOMPARE(latestGitProgress(standardError), expected);
    }

    void mercurial_data()
    {
        QTest::addColumn<QByteArray>("standardError");
        QTest::addColumn<OptionalString>("expected");
        QTest::newRow("with a total") << QByteArray("\rupdating  75/300\r") << OptionalString(u"Updating: 25%"_s);
        QTest::newRow("several topics") << QByteArray("\rchangesets 3/4\r\rfiles 9/10\r")
                                        << OptionalString(u"Files: 90%"_s);
        QTest::newRow("without a total") << QByteArray("\rsearching 12\r") << OptionalString(u"Searching: 12"_s);
        QTest::newRow("cleared line and messages")
            << QByteArray("\rlinking 1/2\r" "          \rrequesting all changes\n") << OptionalString(u"Linking: 50%"_s);
        QTest::newRow("nothing") << QByteArray("adding changesets\n") << OptionalString();
    }

    void mercurial()
    {
        QFETCH(QByteArray, standardError);
        QFETCH(OptionalString, expected);
        QCOMPARE(latestMercurialProgress(standardError), expected);
    }

    void terminalView_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("plain text unchanged") << u"error: x\n\nmore"_s << u"error: x\n\nmore"_s;
        QTest::newRow("rewritten lines") << u"Counting: 10%\rCounting: 100%, done.\nfatal: gone\n"_s
                                         << u"Counting: 100%, done.\nfatal: gone"_s;
        QTest::newRow("cleared progress") << u"\rfiles 3/4\r          \rabort: no space\n"_s << u"abort: no space"_s;
        QTest::newRow("Windows line ends") << u"remote: hook said no\r\nabort: x\r\n"_s
                                           << u"remote: hook said no\nabort: x"_s;
    }

    void terminalView()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QCOMPARE(asTerminalShowsIt(text), expected);
    }
};

QTEST_GUILESS_MAIN(ProgressTest)
#include "tst_progress.moc"
