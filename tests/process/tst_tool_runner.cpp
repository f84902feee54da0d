// Running hg and git: what reaches them, how their ends are judged and cancelled, what their error
// streams say, and Mercurial's command servers.
#include "Checks.h"
#include "FakeTool.h"
#include "RecordPrinting.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include "process/CommandServerPool.h"
#include "process/CommandServerProtocol.h"
#include "process/CommitMessage.h"
#include "process/Executables.h"
#include "process/Failure.h"
#include "process/Progress.h"
#include "process/RemoteAddress.h"
#include "process/RepositoryDetection.h"
#include "process/ToolFailure.h"
#include "process/ToolRunner.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <QtConcurrent>

#include <csignal>
#include <sys/resource.h>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::FakeTool;
using test::ScopedEnvironmentVariable;

namespace {

// Runs hg or git, as `tool` says, with HG or GIT naming the stand-in.
CommandOutput runWith(const FakeTool &fake, const QString &tool, const QStringList &arguments,
                      const QSet<int> &accepted = {0}, const std::optional<QString> &directory = std::nullopt,
                      const RunControl &control = {})
{
    const ScopedEnvironmentVariable override(tool == u"hg" ? "HG" : "GIT", fake.path().toUtf8());
    const ToolCommand command{arguments, accepted};
    return tool == u"hg" ? runMercurial(command, directory, control) : runGit(command, directory, control);
}

// A run of a stand-in that prints and exits as told, and the failure it
// ends with (none when empty).
struct Judged {
    QString command;
    QByteArray standardOutput, standardError;
    int status;
    QSet<int> accepted;
    QString failure;
};

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

class ToolRunnerTest : public QObject {
    Q_OBJECT

    // A Mercurial repository with a change and a new file, for the command servers.
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

    // Both streams stay in memory: no run leaves a file behind.
    void cleanup() { QCOMPARE(test::temporaryFilesStartingWith(QString()), QStringList()); }

    // The command servers' tests come first: runs of the tests after them start servers of their own.
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

    // An HG that names a file that is not executable, or a GIT that names a
    // folder, is passed over.
    void unusableVariableIsPassedOver()
    {
        const FakeTool fake({});
        QVERIFY(QFile::setPermissions(fake.path(), QFile::ReadOwner | QFile::WriteOwner));
        const QString folder = QFileInfo(fake.path()).path();
        const ScopedEnvironmentVariable hg("HG", fake.path().toUtf8()), git("GIT", folder.toUtf8());
        QVERIFY(QFileInfo(findMercurialExecutable().value_or(fake.path())).isExecutable());
        QVERIFY(QFileInfo(findGitExecutable().value_or(folder)).isFile());
    }

    // Values reach the tool as they are, after the runner's own first
    // arguments; an inherited environment cannot undo what keeps a run
    // unprompted, untranslated and free of the person's aliases.
    void runsLiterallyInAFixedEnvironment_data()
    {
        QTest::addColumn<QString>("tool");
        QTest::addColumn<QStringList>("leadingArguments");
        QTest::addColumn<QByteArrayList>("expectedVariables"); // name=value; an empty value: unset
        QTest::newRow("hg") << u"hg"_s << QStringList{u"--noninteractive"_s, u"--config=ui.timeout=5"_s}
                            << QByteArrayList{"HGPLAIN=+strictflags", "HGPLAINEXCEPT="};
        QTest::newRow("git") << u"git"_s << QStringList{u"--no-pager"_s}
                             << QByteArrayList{"GIT_TERMINAL_PROMPT=0", "GIT_EDITOR=true", "LC_ALL=C",
                                               "GIT_OPTIONAL_LOCKS=0"};
    }

    void runsLiterallyInAFixedEnvironment()
    {
        QFETCH(QString, tool);
        QFETCH(QStringList, leadingArguments);
        QFETCH(QByteArrayList, expectedVariables);
        // Whatever lies in the shared temporary folder while the tool runs would follow "out".
        const FakeTool fake(test::running("printf out; printf err >&2; find \"$TMPDIR\" -maxdepth 1 -type f"));
        std::vector<std::unique_ptr<ScopedEnvironmentVariable>> inherited;
        for (const QByteArray &variable : expectedVariables)
            inherited.push_back(std::make_unique<ScopedEnvironmentVariable>(variable.split('=')[0].data(), "x"));
        QTemporaryDir directory;
        const QStringList arguments{u"log"_s, u"-r"_s, u"--weird value"_s, u""_s, u"caf\u00e9 $(touch x)"_s};

        QCOMPARE(runWith(fake, tool, arguments, {0}, directory.path()), (CommandOutput{"out", "err", 0}));
        QCOMPARE(fake.receivedArguments(), leadingArguments + arguments);
        QCOMPARE(fake.receivedWorkingDirectory(), directory.path());
        // Children yield the processor to the application's own threads.
        QCOMPARE(fake.receivedNiceness(), std::min(getpriority(PRIO_PROCESS, 0) + 10, 19));
        for (const QByteArray &variable : expectedVariables)
            QCOMPARE(fake.receivedEnvironmentVariable(variable.split('=')[0]), variable.split('=')[1]);
    }

    // (A lock held by another process is judged in tst_hostile_input, with the real tools.)
    void judgesExitStatus_data()
    {
        QTest::addColumn<Judged>("run");
        QTest::newRow("error text after two line feeds, passwords masked")
            << Judged{u"git clone https://ann:s3cret@h/r.git /tmp/r"_s,
                      "",
                      "fatal: no 'https://ann:s3cret@h/r.git/'\n",
                      128,
                      {0},
                      u"git clone https://ann:***@h/r.git /tmp/r exited with status 128.\n\n"
                      "fatal: no 'https://ann:***@h/r.git/'"_s};
        QTest::newRow("error before output, joined by a line feed")
            << Judged{u"git merge"_s, "out\n", "err\n", 1, {0}, u"git merge exited with status 1.\n\nerr\n\nout"_s};
        QTest::newRow("output that is not UTF-8 is left out")
            << Judged{u"git status"_s, "ok", "\xff", 128, {0}, u"git status exited with status 128.\n\nok"_s};
        QTest::newRow("status 1 accepted") << Judged{u"hg resolve --list"_s, "U a\n", "", 1, {0, 1}, QString()};
        QTest::newRow("status 0 not accepted")
            << Judged{u"git odd"_s, "", "", 0, {1}, u"git odd exited with status 0."_s};
    }

    void judgesExitStatus()
    {
        QFETCH(Judged, run);
        const FakeTool fake({run.standardOutput, run.standardError, run.status, 0, {}});
        const QStringList words = run.command.split(u' ');
        try {
            QCOMPARE(runWith(fake, words[0], words.mid(1), run.accepted),
                     (CommandOutput{run.standardOutput, run.standardError, run.status}));
            QVERIFY(run.failure.isEmpty());
        } catch (const ToolFailure &failure) {
            QCOMPARE(failure.description(), run.failure);
            QCOMPARE(words[0] == u"hg", dynamic_cast<const MercurialFailure *>(&failure) != nullptr);
        }
    }

    // Nothing starts for a run cancelled beforehand or for one in a folder that is gone.
    void runsThatCannotStartStartNothing()
    {
        const FakeTool fake({});
        QVERIFY_THROWS_EXCEPTION(PlatformFailure, runWith(fake, u"hg"_s, {u"status"_s}, {0}, u"/nonexistent/x"_s));
        QVERIFY_THROWS_EXCEPTION(CancellationFailure,
                                 runWith(fake, u"git"_s, {u"diff"_s}, {0}, std::nullopt, {[] { return true; }, {}}));
        QCOMPARE(fake.processId(), 0);
    }

    // A child that fills both streams at once must neither block on a full
    // pipe nor lose a byte, however the run is watched.
    void largeOutputs()
    {
        const QByteArray output = QByteArray("abcdefghijklmnopqrstuvw").repeated(130000);
        const QByteArray error = QByteArray("ABCDEFGHIJKLMNOPQRSTUVW").repeated(45000);
        const FakeTool fake({output, error, 0, 0, "cat \"$ERROR_FILE\" >&2 &\ncat \"$OUTPUT_FILE\"\nwait"});
        for (const RunControl &control :
             {RunControl{}, RunControl{[] { return false; }, {}}, RunControl{{}, [](const QString &) {}}}) {
            const CommandOutput run = runWith(fake, u"hg"_s, {u"cat"_s}, {0}, std::nullopt, control);
            QVERIFY(run.standardOutput == output && run.standardError == error);
        }
    }

    // A controlled run asks hg for progress and passes it on while hg runs. The stand-in prints progress
    // only when asked as the real tool must be, and ends once the phrase has arrived (or ten seconds on)
    // with a last line. (The model's tests read Git's progress through a fetch.)
    void controlledRunReportsProgress()
    {
        QTemporaryDir marks;
        const QString reported = marks.filePath(u"reported"_s);
        const FakeTool fake(test::running(
            "[ \"$HGPLAINEXCEPT\" = progress ] && case \" $* \" in *' --config=progress."
            "assume-tty=true '*' --config=progress.format=topic number '*)"
            " printf '\\rfiles 1/4\\r' >&2 ;; esac\ni=0; while [ ! -e '"
            + reported.toUtf8() + "' ] && [ $i -lt 1000 ]; do sleep 0.01; i=$((i+1)); done\nprintf 'done\\n' >&2"));
        QStringList phrases;
        const auto progress = [&](const QString &phrase) {
            phrases.append(phrase);
            QFile(reported).open(QIODevice::WriteOnly);
        };
        const CommandOutput output = runWith(fake, u"hg"_s, {u"pull"_s}, {0}, std::nullopt, {{}, progress});
        QCOMPARE(phrases, QStringList{u"Files: 25%"_s});
        // What was read while the tool ran stays in the error stream.
        QVERIFY2(output.standardError.size() > 5 && output.standardError.endsWith("done\n"), output.standardError);
        QCOMPARE(fake.receivedArguments().last(), u"pull"_s);
    }

    // A megabyte of output makes an alert of a few thousand characters that
    // keeps both ends, cut between letters, and says how much is left out.
    void hugeFailureTextsAreAbridged()
    {
        // The 3,000th byte is the second of an "é".
        const FakeTool fake(test::running("printf 'first words '; head -c 2987 /dev/zero | tr '\\0' x; "
                                          "printf '\\303\\251'; head -c 1000000 /dev/zero | tr '\\0' y; "
                                          "printf ' caf\\303\\251 end'; exit 1"));
        QStringList arguments{u"add"_s};
        for (int index = 0; index < 300; ++index)
            arguments.append(u"file%1.txt"_s.arg(index));
        const QString description = test::failureOf([&] { runWith(fake, u"git"_s, arguments); });
        QVERIFY2(description.size() < 9000, qPrintable(QString::number(description.size())));
        QVERIFY(description.startsWith(u"git add file0.txt file1.txt"_s));
        QVERIFY(description.contains(u"characters left out …]\n"_s));
        QVERIFY(description.contains(u"file299.txt exited with status 1.\n\nfirst words xxx"_s));
        QVERIFY(description.contains(u"xxx\n[… 997,012 bytes left out …]\nyyy"_s));
        QVERIFY(description.endsWith(u"yyy caf\u00e9 end"_s));
    }

    // Cancelling the task's future stops the child, one that shrugs off the
    // polite request too, and so does the thread's cancellation scope, also
    // from under a scope nested inside it.
    void cancellationEndsTheChild_data()
    {
        QTest::addColumn<bool>("throughScope");
        QTest::addColumn<bool>("nested");
        QTest::newRow("a child that ignores the polite request") << false << false;
        QTest::newRow("cancelled through the thread's scope") << true << false;
        QTest::newRow("cancelled through an outer scope") << true << true;
    }

    void cancellationEndsTheChild()
    {
        QFETCH(bool, throughScope);
        QFETCH(bool, nested);
        QTemporaryDir marks;
        const QString ready = marks.filePath(u"ready"_s);
        const QByteArray trap = throughScope ? "" : "trap '' TERM\n";
        const FakeTool fake(test::running(trap + "touch '" + ready.toUtf8() + "'\nwhile :; do sleep 0.01; done"));
        QString failure;
        QFuture<void> future = QtConcurrent::run([&](QPromise<void> &promise) {
            std::optional<RunCancellationScope> scope;
            std::optional<RunCancellationScope> inner;
            if (throughScope)
                scope.emplace(cancellationOf(promise));
            if (nested)
                inner.emplace([] { return false; });
            const CancellationCheck check = throughScope ? CancellationCheck() : cancellationOf(promise);
            failure = test::failureOf([&] { runWith(fake, u"git"_s, {u"diff"_s}, {0}, std::nullopt, {check, {}}); });
        });
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(ready), 10000);
        future.cancel();
        const bool finished = QTest::qWaitFor([&] { return future.isFinished(); }, 10000);
        if (!finished)
            ::kill(pid_t(fake.processId()), SIGKILL);
        QVERIFY2(finished, "the run went on after it was cancelled");
        QCOMPARE(failure, CancellationFailure().description());
        QVERIFY(!test::processIsRunning(fake.processId()));
    }

    // What a tool printed on its error stream: the progress phrase read from it, and the text a
    // terminal would show of it once the tool ended (an alert quotes that).
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

    // What is stored for an entered address, given the stored one: "invalid"
    // and "unrestorable" are the two refusals. (The operations tests of both
    // tools store trimmed addresses, carry an encoded password to a new host
    // and refuse line feeds and masks with nothing to restore.)
    void addressToStore_data()
    {
        QTest::addColumn<QString>("entered");
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("expected");
        const QString invalid = u"invalid"_s;
        const QString unrestorable = u"unrestorable"_s;
        QTest::newRow("empty") << u" \t\n"_s << QString() << invalid;
        QTest::newRow("carriage return inside") << u"https://h/x\rfoo"_s << QString() << invalid;
        QTest::newRow("option-like") << u"--upload-pack=touch x"_s << QString() << invalid;
        QTest::newRow("a real password stays")
            << u"https://b:new@h/x"_s << u"https://a:old@h/x"_s << u"https://b:new@h/x"_s;
        QTest::newRow("masked and encoded")
            << u"https://ann:%2A%2A%2A@h/repo"_s << u"https://ann:pw@h/repo"_s << u"https://ann:pw@h/repo"_s;
        QTest::newRow("stored is masked too")
            << u"https://ann:***@h/repo"_s << u"https://ann:***@h/repo"_s << unrestorable;
        QTest::newRow("scp form cannot carry it") << u"ann:***@h:repo"_s << u"https://ann:pw@h/repo"_s << unrestorable;
    }

    void addressToStore()
    {
        QFETCH(QString, entered);
        QFETCH(QString, stored);
        QFETCH(QString, expected);
        QString result;
        try {
            result = tillery::addressToStore(entered, [&] { return stored; });
        } catch (const RefusedInput &refusal) {
            result = refusal.description() == invalidAddressSentence()         ? u"invalid"_s
                     : refusal.description() == unrestorablePasswordSentence() ? u"unrestorable"_s
                                                                               : refusal.description();
        }
        QCOMPARE(result, expected);
    }

    // A blank description adds nothing; a description is trimmed as a whole, its inner lines kept.
    void commitMessage()
    {
        QCOMPARE(composeCommitMessage(u"Fix\n"_s, u" \n\t"_s), u"Fix"_s);
        QCOMPARE(composeCommitMessage(u"Fix"_s, u"\n  a\n\n  b  \n"_s), u"Fix\n\na\n\n  b"_s);
    }

    // Layouts are built in one folder: repositories of each kind at the given
    // sub-folders ("." is the folder itself), and "link" leading to "linked".
    void detectsInnermostRepository_data()
    {
        QTest::addColumn<QStringList>("repositories"); // "kind folder"
        QTest::addColumn<QString>("asked");
        QTest::addColumn<QString>("expected"); // "kind root"
        QTest::newRow("mercurial sub-folder") << QStringList{u"hg ."_s} << u"a b/c"_s << u"hg ."_s;
        QTest::newRow("both at one root is git") << QStringList{u"git ."_s, u"hg ."_s} << u"."_s << u"git ."_s;
        QTest::newRow("mercurial inside git")
            << QStringList{u"git ."_s, u"hg vendor/lib"_s} << u"vendor/lib/src"_s << u"hg vendor/lib"_s;
        QTest::newRow("git inside mercurial")
            << QStringList{u"git tools/x"_s, u"hg ."_s} << u"tools/x"_s << u"git tools/x"_s;
        QTest::newRow("through a link, the repository it leads into")
            << QStringList{u"git outer"_s, u"hg linked"_s} << u"outer/link/src"_s << u"hg linked"_s;
    }

    void detectsInnermostRepository()
    {
        QFETCH(QStringList, repositories);
        QFETCH(QString, asked);
        QFETCH(QString, expected);
        QTemporaryDir top;
        const QDir folder(top.path());
        std::vector<std::unique_ptr<test::RepositoryFixture>> fixtures;
        for (const QString &repository : repositories) {
            const QString at = QDir::cleanPath(folder.filePath(repository.section(u' ', 1)));
            if (repository.startsWith(u"git"_s))
                fixtures.push_back(std::make_unique<test::GitFixture>(at));
            else
                fixtures.push_back(std::make_unique<test::MercurialFixture>(at));
        }
        if (asked.contains(u"link"_s))
            QVERIFY(QFile::link(folder.filePath(u"linked"_s), folder.filePath(u"outer/link"_s)));
        const QString askedPath = QDir::cleanPath(folder.filePath(asked));
        QVERIFY(QDir().mkpath(askedPath));
        const Repository repository = detectRepository(askedPath);
        QCOMPARE((repository.kind == RepositoryKind::git ? u"git "_s : u"hg "_s)
                     + folder.relativeFilePath(repository.path),
                 expected);
    }
};

QTEST_GUILESS_MAIN(ToolRunnerTest)
#include "tst_tool_runner.moc"
