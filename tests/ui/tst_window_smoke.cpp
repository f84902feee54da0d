#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;

namespace {

// A real X server on a display number nobody uses, stopped with the object.
class VirtualDisplay {
public:
    VirtualDisplay()
    {
        const QString server = QStandardPaths::findExecutable(u"Xvfb"_s);
        if (server.isEmpty())
            return;
        for (int number = 91; number < 140; ++number) {
            if (QFile::exists(u"/tmp/.X%1-lock"_s.arg(number)) || QFile::exists(u"/tmp/.X11-unix/X%1"_s.arg(number)))
                continue;
            m_server.start(server, {u":%1"_s.arg(number), u"-screen"_s, u"0"_s, u"1280x800x24"_s, u"-nolisten"_s,
                                    u"tcp"_s});
            if (!m_server.waitForStarted(5000))
                return;
            const QDeadlineTimer deadline(10000);
            while (!deadline.hasExpired() && m_server.state() == QProcess::Running) {
                if (QFile::exists(u"/tmp/.X11-unix/X%1"_s.arg(number))) {
                    m_display = u":%1"_s.arg(number);
                    return;
                }
                QTest::qWait(50);
            }
            m_server.kill();
            m_server.waitForFinished(5000);
        }
    }

    ~VirtualDisplay()
    {
        if (m_server.state() == QProcess::NotRunning)
            return;
        m_server.terminate();
        if (!m_server.waitForFinished(5000))
            m_server.kill();
        m_server.waitForFinished(5000);
    }

    // Empty when no server could be started.
    QString display() const { return m_display; }

private:
    QProcess m_server;
    QString m_display;
};

} // namespace

class WindowSmokeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    // A picture of a repository that cannot be opened is refused, loudly.
    void screenshotOfARepositoryThatCannotOpen_data()
    {
        QTest::addColumn<QString>("folder"); // inside a temporary folder
        QTest::newRow("missing folder") << u"missing"_s;
        QTest::newRow("not a repository") << u"."_s;
    }

    void screenshotOfARepositoryThatCannotOpen()
    {
        QFETCH(QString, folder);
        QTemporaryDir parent;
        const QString picture = parent.filePath(u"shot.png"_s);
        QProcess application;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        application.setProcessEnvironment(environment);
        application.start(QStringLiteral(TILLERY_BINARY),
                          {u"--screenshot"_s, picture, u"--repository"_s, parent.filePath(folder)});
        QVERIFY(application.waitForFinished(60000));
        QCOMPARE(application.exitCode(), 1);
        QVERIFY2(application.readAllStandardError().contains("Tillery could not open "), "the reason is told");
        QVERIFY(!QFile::exists(picture));
    }

    void opensOnARealDisplayAndClosesCleanly()
    {
        const VirtualDisplay display;
        QVERIFY2(!display.display().isEmpty(), "Xvfb is not installed or could not start");
        const test::MercurialFixture repository;
        repository.write(u"chart.txt"_s, "harbour\n");
        repository.commitAll(u"Start"_s);
        repository.write(u"chart.txt"_s, "harbour\nbuoy\n");

        QProcess application;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DISPLAY"_s, display.display());
        environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
        environment.remove(u"WAYLAND_DISPLAY"_s);
        application.setProcessEnvironment(environment);
        application.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        application.start(QStringLiteral(TILLERY_BINARY),
                          {u"--repository"_s, repository.path(), u"--report-window"_s});
        QVERIFY(application.waitForStarted(10000));

        QByteArray output;
        const QDeadlineTimer deadline(60000);
        while (!deadline.hasExpired() && application.state() == QProcess::Running
               && !output.contains("the main window is on screen")) {
            application.waitForReadyRead(100);
            output += application.readAllStandardOutput();
        }
        QVERIFY2(output.contains("Tillery: the main window is on screen"), output.constData());

        application.terminate();
        QVERIFY(application.waitForFinished(20000));
        QCOMPARE(application.exitStatus(), QProcess::NormalExit);
        QCOMPARE(application.exitCode(), 0);
    }
};

QTEST_GUILESS_MAIN(WindowSmokeTest)
#include "tst_window_smoke.moc"
