#include "TestEnvironment.h"

#include "process/Progress.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;

// What a tool printed on its error stream: the progress phrase read from it,
// and the text a terminal would show of it once the tool ended (an alert
// quotes that).
class ProgressTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void errorStream_data()
    {
        QTest::addColumn<bool>("git");
        QTest::addColumn<QByteArray>("standardError");
        QTest::addColumn<QString>("progress"); // empty: none
        QTest::addColumn<QString>("shown");
        QTest::newRow("git: remote") << true << QByteArray("remote: Counting:  70%\r") << u"Counting: 70%"_s
                                     << QString();
        QTest::newRow("git: done line, Windows line end")
            << true << QByteArray("Resolving:  50% (1/2)\rResolving: 100% (2/2), done.\r\nfatal: x\r\n")
            << u"Resolving: 100%"_s << u"Resolving: 100% (2/2), done.\nfatal: x"_s;
        QTest::newRow("git: no progress")
            << true << QByteArray("error: x\n\nmore") << QString() << u"error: x\n\nmore"_s;
        QTest::newRow("git: cut multi-byte letter at the start")
            << true << QByteArray(4096, 'x') + QByteArray("\xc3\rUnpacking:  3% (1/30)\r") << u"Unpacking: 3%"_s
            << QString();
        QTest::newRow("hg: with a total")
            << false << QByteArray("\rupdating 3/12\r") << u"Updating: 25%"_s << QString();
        QTest::newRow("hg: several topics")
            << false << QByteArray("\rchanges 3/4\rfiles 9/10\r") << u"Files: 90%"_s << QString();
        QTest::newRow("hg: without a total")
            << false << QByteArray("\rsearching 12\r") << u"Searching: 12"_s << QString();
        QTest::newRow("hg: cleared line, messages, Windows line ends")
            << false << QByteArray("\rlinking 1/2\r     \rabort: no space\r\nremote: no\r\n") << u"Linking: 50%"_s
            << u"abort: no space\nremote: no"_s;
        QTest::newRow("hg: nothing") << false << QByteArray("adding\n") << QString() << u"adding\n"_s;
    }

    void errorStream()
    {
        QFETCH(bool, git);
        QFETCH(QByteArray, standardError);
        QFETCH(QString, progress);
        QFETCH(QString, shown);
        const std::optional<QString> latest =
            git ? latestGitProgress(standardError) : latestMercurialProgress(standardError);
        QCOMPARE(latest.value_or(QString()), progress);
        QCOMPARE(asTerminalShowsIt(QString::fromUtf8(standardError)), shown);
    }
};

QTEST_GUILESS_MAIN(ProgressTest)
#include "tst_progress.moc"
