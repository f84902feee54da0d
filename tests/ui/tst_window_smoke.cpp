#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;

class WindowSmokeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        test::pinTestEnvironment();
        QStandardPaths::setTestModeEnabled(true);
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }

    // A picture of a folder that is no repository is refused, loudly.
    void screenshotOfARepositoryThatCannotOpen()
    {
        QTemporaryDir parent;
        const QString picture = parent.filePath(u"shot.png"_s);
        QProcess application;
        application.start(QStringLiteral(TILLERY_BINARY),
                          {u"--screenshot"_s, picture, u"--repository"_s, parent.path()});
        QVERIFY(application.waitForFinished(60000));
        QCOMPARE(application.exitCode(), 1);
        QVERIFY2(application.readAllStandardError().contains("Tillery could not open "), "the reason is told");
        QVERIFY(!QFile::exists(picture));
    }

    void opensOnARealDisplayAndClosesCleanly()
    {
        // A real X server on a display number it chooses and tells when it is ready.
        QProcess server;
        server.start(QStandardPaths::findExecutable(u"Xvfb"_s),
                     {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"1280x800x24"_s, u"-nolisten"_s, u"tcp"_s});
        QVERIFY2(server.waitForStarted(5000), "Xvfb is not installed or could not start");
        QTRY_VERIFY_WITH_TIMEOUT(server.canReadLine(), 20000);
        const QString display = u":"_s + QString::fromLatin1(server.readLine().trimmed());

        const test::MercurialFixture repository;
        QProcess application;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DISPLAY"_s, display);
        environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
        environment.remove(u"WAYLAND_DISPLAY"_s);
        application.setProcessEnvironment(environment);
        application.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        application.start(QStringLiteral(TILLERY_BINARY), {u"--repository"_s, repository.path(), u"--report-window"_s});
        QByteArray output;
        QTRY_VERIFY2_WITH_TIMEOUT(
            (output += application.readAllStandardOutput()).contains("Tillery: the main window is on screen"),
            output.constData(), 60000);

        application.terminate();
        QVERIFY(application.waitForFinished(20000));
        QCOMPARE(application.exitStatus(), QProcess::NormalExit);
        QCOMPARE(application.exitCode(), 0);
        server.terminate();
        server.waitForFinished(5000);
    }
};

QTEST_GUILESS_MAIN(WindowSmokeTest)
#include "tst_window_smoke.moc"
