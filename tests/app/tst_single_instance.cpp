// The built binary on a real X server: it opens and closes cleanly, refuses what it cannot open, and
// keeps one window per settings file.
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <memory>

using namespace Qt::StringLiterals;
using namespace tillery;

namespace {

constexpr int patience = 30000;

// The built binary run on the test's X server, with the settings folder it is given.
struct Start {
    QProcess process;
    QByteArray output;

    Start(const QString &display, const QString &settings, const QStringList &arguments, const QString &folder)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DISPLAY"_s, display);
        environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
        environment.insert(u"XDG_CONFIG_HOME"_s, settings);
        environment.remove(u"WAYLAND_DISPLAY"_s);
        environment.remove(u"XDG_RUNTIME_DIR"_s);
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(folder);
        process.start(QStringLiteral(TILLERY_BINARY), arguments + QStringList{u"--report-window"_s});
    }
    ~Start()
    {
        ::kill(pid_t(process.processId()), SIGCONT);
        process.kill();
        process.waitForFinished();
    }
    bool says(const QString &line)
    {
        output += process.readAllStandardOutput();
        return output.contains("Tillery: " + line.toUtf8() + '\n');
    }
    qsizetype handOvers() const { return output.count("Tillery: another start handed over"); }
};

} // namespace

class SingleInstanceTest : public QObject {
    Q_OBJECT

    QProcess m_server;
    QString m_display;
    QTemporaryDir m_folder;

private Q_SLOTS:
    void initTestCase()
    {
        test::pinTestEnvironment();
        m_server.start(QStandardPaths::findExecutable(u"Xvfb"_s),
                       {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"1280x800x24"_s, u"-nolisten"_s, u"tcp"_s});
        QVERIFY2(m_server.waitForStarted(5000), "Xvfb is not installed or could not start");
        QTRY_VERIFY_WITH_TIMEOUT(m_server.canReadLine(), 20000);
        m_display = u":"_s + QString::fromLatin1(m_server.readLine().trimmed());
        for (const char *name : {"hg", "git", "plain", "settings"})
            QDir(m_folder.path()).mkdir(QString::fromLatin1(name));
        QFile notes(m_folder.filePath(u"plain/notes.txt"_s));
        QVERIFY(notes.open(QIODevice::WriteOnly));
        test::MercurialFixture hg(m_folder.filePath(u"hg"_s));
        test::GitFixture git(m_folder.filePath(u"git"_s));
    }

    void cleanupTestCase()
    {
        m_server.terminate();
        m_server.waitForFinished(5000);
    }

    void opensAndClosesCleanly()
    {
        const QTemporaryDir settings(m_folder.filePath(u"settings/XXXXXX"_s));
        Start application(m_display, settings.path(), {u"--repository"_s, u"hg"_s}, m_folder.path());
        QTRY_VERIFY2_WITH_TIMEOUT(application.says(u"the main window is on screen"_s), application.output.constData(),
                                  patience);
        application.process.terminate();
        QVERIFY(application.process.waitForFinished(20000));
        QCOMPARE(application.process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(application.process.exitCode(), 0);
    }

    // A picture of a folder that is no repository is refused, loudly.
    void screenshotOfAFolderThatCannotOpen()
    {
        const QTemporaryDir settings(m_folder.filePath(u"settings/XXXXXX"_s));
        const QString picture = m_folder.filePath(u"refused.png"_s);
        Start application(m_display, settings.path(), {u"--screenshot"_s, picture, u"--repository"_s, u"plain"_s},
                          m_folder.path());
        QVERIFY(application.process.waitForFinished(patience));
        QCOMPARE(application.process.exitCode(), 1);
        QVERIFY(application.process.readAllStandardError().contains("Tillery could not open "));
        QVERIFY(!QFile::exists(picture));
    }

    void laterStart_data()
    {
        QTest::addColumn<QString>("first");
        QTest::addColumn<QStringList>("arguments");
        // -1: the later start opens a window of its own.
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("said");
        // Who takes the folders of the start after that: "first" or "second".
        QTest::addColumn<QString>("thirdReaches");

        const QString selectedHg = u"the selected repository is {}/hg"_s;
        QTest::newRow("a repository goes to the running window")
            << u"running"_s << QStringList{u"hg"_s} << 0 << selectedHg << u"first"_s;
        QTest::newRow("several folders, the last selected")
            << u"running"_s << QStringList{u"git"_s, u"--repository"_s, u"./hg/"_s} << 0 << selectedHg << u"first"_s;
        QTest::newRow("no folders raise the window")
            << u"running"_s << QStringList{} << 0 << u"another start handed over 0 folder(s)"_s << u"first"_s;
        QTest::newRow("a file, and a folder that is no repository, are refused in the window")
            << u"running"_s << QStringList{u"plain/notes.txt"_s, u"plain"_s} << 0
            << u"error: Opening repositories: {}/plain/notes.txt is not a Mercurial or Git repository.\n"
               "{}/plain is not a Mercurial or Git repository."_s
            << u"first"_s;
        QTest::newRow("a missing folder ends the later start")
            << u"running"_s << QStringList{u"hg"_s, u"absent"_s} << 1 << QString() << u"first"_s;
        QTest::newRow("a screenshot is taken, not handed over")
            << u"running"_s << QStringList{u"--screenshot"_s, u"shot.png"_s, u"hg"_s} << 0 << QString() << u"first"_s;
        QTest::newRow("a demonstration neither hands over nor listens")
            << u"running"_s << QStringList{u"--demo"_s} << -1 << QString() << u"first"_s;
        QTest::newRow("a hung window is passed by")
            << u"hung"_s << QStringList{u"hg"_s} << -1 << selectedHg << u"second"_s;
        QTest::newRow("a crashed window's socket is taken over")
            << u"crashed"_s << QStringList{u"hg"_s} << -1 << selectedHg << u"second"_s;
        QTest::newRow("other settings, another window")
            << u"other settings"_s << QStringList{u"hg"_s} << -1 << selectedHg << u"second"_s;
    }

    void laterStart()
    {
        QFETCH(QString, first);
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        QFETCH(QString, said);
        QFETCH(QString, thirdReaches);
        said.replace(u"{}"_s, m_folder.path());
        const QTemporaryDir settings(m_folder.filePath(u"settings/XXXXXX"_s));
        const QTemporaryDir otherSettings(m_folder.filePath(u"settings/XXXXXX"_s));

        Start running(m_display, settings.path(), {}, m_folder.path());
        QTRY_VERIFY2_WITH_TIMEOUT(running.says(u"the window is idle"_s), running.output.constData(), patience);
        if (first == u"hung"_s)
            ::kill(pid_t(running.process.processId()), SIGSTOP);
        if (first == u"crashed"_s)
            running.process.kill();
        QFile::remove(m_folder.filePath(u"shot.png"_s));

        const bool sameSettings = first != u"other settings"_s;
        Start second(m_display, sameSettings ? settings.path() : otherSettings.path(), arguments, m_folder.path());
        Start &window = exitCode == -1 ? second : running;
        if (exitCode == -1) {
            QTRY_VERIFY2_WITH_TIMEOUT(second.says(u"the main window is on screen"_s), second.output.constData(),
                                      patience);
        } else {
            QVERIFY(second.process.waitForFinished(patience));
            QCOMPARE(second.process.exitCode(), exitCode);
        }
        if (!said.isEmpty())
            QTRY_VERIFY2_WITH_TIMEOUT(window.says(said), window.output.constData(), patience);
        if (exitCode == 1)
            QVERIFY(second.process.readAllStandardError().contains(
                "Tillery could not open absent: there is no such folder."));
        QCOMPARE(QFile::exists(m_folder.filePath(u"shot.png"_s)), arguments.contains(u"--screenshot"_s));

        Start third(m_display, sameSettings ? settings.path() : otherSettings.path(), {u"git"_s}, m_folder.path());
        QVERIFY(third.process.waitForFinished(patience));
        QCOMPARE(third.process.exitCode(), 0);
        Start &reached = thirdReaches == u"first"_s ? running : second;
        QTRY_VERIFY2_WITH_TIMEOUT(reached.says(u"the selected repository is "_s + m_folder.filePath(u"git"_s)),
                                  reached.output.constData(), patience);
        // Only the starts meant to reach the first window did.
        if (&reached == &running)
            QCOMPARE(running.handOvers(), exitCode == 0 && !arguments.contains(u"--screenshot"_s) ? 2 : 1);
    }
};

QTEST_GUILESS_MAIN(SingleInstanceTest)
#include "tst_single_instance.moc"
