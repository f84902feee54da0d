#include "FakeTool.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include "process/CommandServerPool.h"
#include "process/CommandServerProtocol.h"
#include "process/Failure.h"
#include "process/ToolRunner.h"

#include <QFile>
#include <QTest>
#include <QtConcurrent>

using namespace Qt::StringLiterals;
using namespace tillery;

namespace {

// What a run ended with: its output, or the failure's description.
QString outcome(const test::MercurialFixture &repository, const QStringList &arguments, bool ownProcess)
{
    RunControl control;
    control.ownProcess = ownProcess;
    try {
        const CommandOutput output = runMercurial({arguments, {0}}, repository.path(), control);
        return QString::fromUtf8(output.standardOutput) + u"|"_s + QString::fromUtf8(output.standardError);
    } catch (const Failure &failure) {
        return u"failure: "_s + failure.description();
    }
}

QList<qint64> runningServers()
{
    QList<qint64> running;
    for (const qint64 processId : CommandServerPool::shared().processIds()) {
        if (test::processIsRunning(processId))
            running.append(processId);
    }
    return running;
}

QByteArray frame(char channel, const QByteArray &data)
{
    QByteArray length(4, '\0');
    qToBigEndian(quint32(data.size()), length.data());
    return channel + length + data;
}

} // namespace

class CommandServerTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<test::MercurialFixture> m_repository;

private Q_SLOTS:
    void initTestCase()
    {
        test::pinTestEnvironment();
        m_repository = std::make_unique<test::MercurialFixture>();
        m_repository->write(u"a.txt"_s, "a\n");
        m_repository->commitAll(u"first"_s);
        m_repository->write(u"a.txt"_s, "changed\n");
        m_repository->write(u"caf\u00e9 -n.txt"_s, "new\n");
    }

    void framesAndMessages()
    {
        ServerFrameReader reader;
        const QByteArray bytes = frame('o', "capabilities: getencoding runcommand\nencoding: UTF-8\npid: 42")
                                 + QByteArray("I\0\0\x10\0", 5) + frame('r', QByteArray("\0\0\0\x01", 4));
        // Bytes arrive in pieces; frames come out whole.
        for (const char byte : bytes.first(7))
            reader.append(QByteArrayView(&byte, 1));
        QCOMPARE(reader.next(), std::nullopt);
        reader.append(bytes.sliced(7));
        const std::optional<ServerFrame> hello = reader.next();
        QVERIFY(hello);
        QCOMPARE(parseServerHello(*hello)->processId, 42);
        QCOMPARE(reader.next(), (ServerFrame{'I', 4096, {}}));
        QCOMPARE(parseResult(*reader.next()), std::optional(1));
        QCOMPARE(reader.next(), std::nullopt);

        QCOMPARE(parseServerHello({'o', 0, "capabilities: getencoding\npid: 42"}), std::nullopt);
        QCOMPARE(parseServerHello({'e', 0, "capabilities: runcommand\npid: 42"}), std::nullopt);
        QCOMPARE(parseResult({'r', 3, "\0\0\1"}), std::nullopt);
        QCOMPARE(runCommandRequest({u"log"_s, u"-r"_s, u"caf\u00e9"_s}),
                 std::optional(QByteArray("runcommand\n\0\0\0\x0c"
                                          "log\0-r\0caf\xc3\xa9",
                                          27)));
        QCOMPARE(runCommandRequest({u"a\0b"_s}), std::nullopt);
    }

    // A command on a server says, prints and fails exactly as the same command run on its own.
    void servedAsARunOfItsOwn_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("status") << QStringList{u"status"_s, u"--print0"_s};
        QTest::newRow("diff of a name like an option")
            << QStringList{u"diff"_s, u"--git"_s, u"--"_s, u"caf\u00e9 -n.txt"_s};
        QTest::newRow("log template") << QStringList{u"log"_s, u"-T"_s, u"{node} {desc}\\n"_s};
        QTest::newRow("a missing file") << QStringList{u"cat"_s, u"-r"_s, u"."_s, u"--"_s, u"missing.txt"_s};
        QTest::newRow("an unknown command") << QStringList{u"no-such-command"_s};
        QTest::newRow("an unknown revision") << QStringList{u"log"_s, u"-r"_s, u"deadbeef"_s};
    }

    void servedAsARunOfItsOwn()
    {
        QFETCH(QStringList, arguments);
        const QString own = outcome(*m_repository, arguments, true);
        QCOMPARE(outcome(*m_repository, arguments, false), own);
        QCOMPARE(outcome(*m_repository, arguments, false), own);
        QCOMPARE(runningServers().size(), 1);
    }

    // A changed hgrc is seen by the next command, and a new server reads it.
    void configurationChangesAreSeen()
    {
        const QStringList showName{u"config"_s, u"ui.username"_s};
        const QString before = outcome(*m_repository, showName, false);
        const QList<qint64> servers = runningServers();
        m_repository->write(u".hg/hgrc"_s, "[ui]\nusername = Someone Else <else@example.com>\n");
        QCOMPARE(outcome(*m_repository, showName, false), u"Someone Else <else@example.com>\n|"_s);
        QVERIFY(runningServers() != servers);
        QVERIFY(!test::processIsRunning(servers.first()));
        QFile::remove(m_repository->filePath(u".hg/hgrc"_s));
        QCOMPARE(outcome(*m_repository, showName, false), before);
    }

    // Cancelling ends the server and what it started; a server that dies
    // mid-command leaves the command to a run of its own. Either way the next
    // command gets a fresh server.
    void cancelledOrKilledServers_data()
    {
        QTest::addColumn<bool>("cancel");
        QTest::newRow("cancelled") << true;
        QTest::newRow("killed") << false;
    }

    void cancelledOrKilledServers()
    {
        QFETCH(bool, cancel);
        QTemporaryDir marks;
        const QString started = marks.filePath(u"started"_s);
        const QString ended = marks.filePath(u"ended"_s);
        // The hook's shell is a child of the hg process that runs the command.
        const QString hook = cancel ? u"touch '%1'; sleep 30; touch '%2'"_s.arg(started, ended)
                                    : u"[ -e '%1' ] || { touch '%1'; kill -9 $PPID; }"_s.arg(started);
        const QStringList status{u"--config"_s, u"hooks.pre-status="_s + hook, u"status"_s};
        outcome(*m_repository, {u"root"_s}, false);
        const QList<qint64> servers = runningServers();
        std::atomic_bool cancelled = false;
        QFuture<QString> run = QtConcurrent::run([&] {
            RunCancellationScope scope([&cancelled] { return cancelled.load(); });
            return outcome(*m_repository, status, false);
        });
        QTRY_VERIFY(QFile::exists(started));
        cancelled = cancel;
        const QString result = run.result();
        if (cancel) {
            QCOMPARE(result, u"failure: "_s + CancellationFailure().description());
            QVERIFY(!QFile::exists(ended));
        } else {
            QCOMPARE(result, outcome(*m_repository, {u"status"_s}, true));
        }
        QVERIFY(!test::processIsRunning(servers.first()));
        QVERIFY(outcome(*m_repository, {u"root"_s}, false).startsWith(m_repository->path()));
        QCOMPARE(runningServers().size(), 1);
    }

    // Servers end with their repository and at quitting; none outlives them.
    void serversEnd()
    {
        const test::MercurialFixture other;
        outcome(other, {u"root"_s}, false);
        outcome(*m_repository, {u"root"_s}, false);
        const QList<qint64> servers = runningServers();
        QCOMPARE(servers.size(), 2);
        stopCommandServers(other.path());
        QCOMPARE(runningServers().size(), 1);
        stopAllCommandServers();
        for (const qint64 server : servers)
            QVERIFY(!test::processIsRunning(server));
        QVERIFY(CommandServerPool::shared().processIds().isEmpty());
    }
};

QTEST_GUILESS_MAIN(CommandServerTest)
#include "tst_command_server.moc"
