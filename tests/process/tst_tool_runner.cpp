#include "Cancellation.h"
#include "FakeTool.h"
#include "RecordPrinting.h"
#include "TestEnvironment.h"

#include "process/CancellableRun.h"
#include "process/Executables.h"
#include "process/ToolRunner.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QtConcurrent>

#include <atomic>
#include <sys/resource.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::FakeTool;
using test::FakeToolBehaviour;
using test::ScopedEnvironmentVariable;

namespace {

enum class Tool { mercurial, git };

const char *variableOf(Tool tool)
{
    return tool == Tool::mercurial ? "HG" : "GIT";
}

std::optional<QString> find(Tool tool)
{
    return tool == Tool::mercurial ? findMercurialExecutable() : findGitExecutable();
}

QString firstInstalled(const QString &name)
{
    for (const QString &folder : {u"/opt/homebrew/bin"_s, u"/usr/local/bin"_s, u"/usr/bin"_s}) {
        const QFileInfo info(folder + u'/' + name);
        if (info.isFile() && info.isExecutable())
            return info.filePath();
    }
    return QString();
}

CommandOutput run(Tool tool, const QStringList &arguments, const QSet<int> &accepted,
                  const std::optional<QString> &directory = std::nullopt)
{
    return tool == Tool::mercurial ? runMercurial(arguments, directory, accepted)
                                   : runGit(arguments, directory, accepted);
}

// Runs the body and returns the description of the ToolFailure it throws.
template <typename Body>
QString toolFailureDescription(Body body)
{
    try {
        body();
    } catch (const ToolFailure &failure) {
        return failure.description();
    }
    return u"(no failure)"_s;
}

QByteArray pattern(char first, qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (qsizetype index = 0; index < size; ++index)
        bytes[index] = static_cast<char>(first + index % 23);
    return bytes;
}

} // namespace

Q_DECLARE_METATYPE(Tool)

class ToolRunnerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void cleanup()
    {
        // Every run, successful or not, removes its capture files.
        QCOMPARE(test::temporaryFilesStartingWith(u"dockside-"_s), QStringList());
        QCOMPARE(test::temporaryFilesStartingWith(u"tillery-command-"_s), QStringList());
    }

    void locatesExecutable_data()
    {
        QTest::addColumn<Tool>("tool");
        QTest::addColumn<QString>("variable"); // "unset", "fake", "not executable", "missing", "folder", "empty"
        QTest::addColumn<bool>("expectFake");
        for (const Tool tool : {Tool::mercurial, Tool::git}) {
            const char *name = tool == Tool::mercurial ? "hg" : "git";
            QTest::addRow("%s: variable unset", name) << tool << u"unset"_s << false;
            QTest::addRow("%s: variable names an executable", name) << tool << u"fake"_s << true;
            QTest::addRow("%s: not executable falls back", name) << tool << u"not executable"_s << false;
            QTest::addRow("%s: missing file falls back", name) << tool << u"missing"_s << false;
            QTest::addRow("%s: folder falls back", name) << tool << u"folder"_s << false;
            QTest::addRow("%s: empty value falls back", name) << tool << u"empty"_s << false;
        }
    }

    void locatesExecutable()
    {
        QFETCH(Tool, tool);
        QFETCH(QString, variable);
        QFETCH(bool, expectFake);

        const FakeTool fake({});
        QTemporaryDir folder;
        std::optional<QByteArray> value;
        if (variable == u"fake")
            value = fake.path().toUtf8();
        else if (variable == u"not executable") {
            QFile::setPermissions(fake.path(), QFile::ReadOwner | QFile::WriteOwner);
            value = fake.path().toUtf8();
        } else if (variable == u"missing")
            value = (folder.path() + u"/nothing-here"_s).toUtf8();
        else if (variable == u"folder")
            value = folder.path().toUtf8();
        else if (variable == u"empty")
            value = QByteArray();

        const ScopedEnvironmentVariable override(variableOf(tool), value);
        const QString installed = firstInstalled(tool == Tool::mercurial ? u"hg"_s : u"git"_s);
        QVERIFY2(!installed.isEmpty(), "these tests need hg and git in one of the fixed folders");
        QCOMPARE(find(tool), std::optional(expectFake ? fake.path() : installed));
    }

    void runsWithFixedFirstArgumentAndEnvironment_data()
    {
        QTest::addColumn<Tool>("tool");
        QTest::addColumn<QString>("firstArgument");
        QTest::addColumn<QByteArrayList>("expectedVariables"); // name=value
        QTest::newRow("hg") << Tool::mercurial << u"--noninteractive"_s
                            << QByteArrayList{"HGENCODING=UTF-8", "INHERITED=yes"};
        QTest::newRow("git") << Tool::git << u"--no-pager"_s
                             << QByteArrayList{"GIT_TERMINAL_PROMPT=0", "GIT_EDITOR=true",
                                               "GIT_MERGE_AUTOEDIT=no", "LC_ALL=C", "INHERITED=yes"};
    }

    void runsWithFixedFirstArgumentAndEnvironment()
    {
        QFETCH(Tool, tool);
        QFETCH(QString, firstArgument);
        QFETCH(QByteArrayList, expectedVariables);

        const FakeTool fake({"out", "err", 0, 0, {}});
        const ScopedEnvironmentVariable override(variableOf(tool), fake.path().toUtf8());
        const ScopedEnvironmentVariable inherited("INHERITED", "yes");
        const ScopedEnvironmentVariable editor("GIT_EDITOR", "vi");
        QTemporaryDir directory;
        const QStringList arguments{u"log"_s, u"-r"_s, u"--weird value"_s, u""_s, u"caf\u00e9"_s};

        const CommandOutput output = run(tool, arguments, {0}, directory.path());
        QCOMPARE(output, (CommandOutput{"out", "err", 0}));
        QCOMPARE(fake.receivedArguments(), QStringList{firstArgument} + arguments);
        QCOMPARE(fake.receivedWorkingDirectory(), directory.path());
        // Children yield the processor to the application's own threads.
        QCOMPARE(fake.receivedNiceness(), std::min(getpriority(PRIO_PROCESS, 0) + 10, 19));
        for (const QByteArray &variable : expectedVariables) {
            const QList<QByteArray> parts = variable.split('=');
            QCOMPARE(fake.receivedEnvironmentVariable(parts[0]), parts[1]);
        }
    }

    void judgesExitStatus_data()
    {
        QTest::addColumn<Tool>("tool");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("standardOutput");
        QTest::addColumn<QByteArray>("standardError");
        QTest::addColumn<int>("status");
        QTest::addColumn<QList<int>>("accepted");
        QTest::addColumn<QString>("expectedFailure"); // empty: the run succeeds

        QTest::newRow("error text after two line feeds")
            << Tool::mercurial << QStringList{u"push"_s} << QByteArray() << QByteArray("abort: x\n") << 1
            << QList<int>{0} << u"hg push exited with status 1.\n\nabort: x"_s;
        QTest::newRow("no output ends after the full stop")
            << Tool::mercurial << QStringList{u"push"_s} << QByteArray() << QByteArray() << 1
            << QList<int>{0} << u"hg push exited with status 1."_s;
        QTest::newRow("white-space output counts as none")
            << Tool::mercurial << QStringList{u"pull"_s, u"-u"_s} << QByteArray(" \n") << QByteArray("\t\n")
            << 255 << QList<int>{0} << u"hg pull -u exited with status 255."_s;
        QTest::newRow("error before output, joined by a line feed")
            << Tool::git << QStringList{u"merge"_s, u"topic"_s} << QByteArray("CONFLICT (content)\n")
            << QByteArray("error: x\n") << 1 << QList<int>{0}
            << u"git merge topic exited with status 1.\n\nerror: x\n\nCONFLICT (content)"_s;
        QTest::newRow("output that is not UTF-8 is left out")
            << Tool::git << QStringList{u"status"_s} << QByteArray("ok") << QByteArray("\xff\xfe bad")
            << 128 << QList<int>{0} << u"git status exited with status 128.\n\nok"_s;
        QTest::newRow("status 1 accepted")
            << Tool::mercurial << QStringList{u"resolve"_s, u"--list"_s} << QByteArray("U a\n")
            << QByteArray() << 1 << QList<int>{0, 1} << QString();
        QTest::newRow("status 128 accepted")
            << Tool::git << QStringList{u"rev-parse"_s} << QByteArray() << QByteArray("fatal\n") << 128
            << QList<int>{0, 128} << QString();
        QTest::newRow("status 0 not accepted")
            << Tool::git << QStringList{u"odd"_s} << QByteArray() << QByteArray() << 0
            << QList<int>{1} << u"git odd exited with status 0."_s;
    }

    void judgesExitStatus()
    {
        QFETCH(Tool, tool);
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, standardOutput);
        QFETCH(QByteArray, standardError);
        QFETCH(int, status);
        QFETCH(QList<int>, accepted);
        QFETCH(QString, expectedFailure);

        const FakeTool fake({standardOutput, standardError, status, 0, {}});
        const ScopedEnvironmentVariable override(variableOf(tool), fake.path().toUtf8());
        const QSet<int> acceptedSet(accepted.cbegin(), accepted.cend());
        if (expectedFailure.isEmpty()) {
            QCOMPARE(run(tool, arguments, acceptedSet),
                     (CommandOutput{standardOutput, standardError, status}));
            return;
        }
        try {
            run(tool, arguments, acceptedSet);
            QFAIL("the run should have failed");
        } catch (const ToolFailure &failure) {
            QCOMPARE(failure.description(), expectedFailure);
            QCOMPARE(failure.failureCase(), ToolFailure::Case::command);
            QCOMPARE(failure.arguments(), arguments);
            QCOMPARE(failure.code(), status);
            QCOMPARE(tool == Tool::mercurial, dynamic_cast<const MercurialFailure *>(&failure) != nullptr);
        }
    }

    void launchFailureIsPassedUp_data()
    {
        QTest::addColumn<Tool>("tool");
        QTest::newRow("hg") << Tool::mercurial;
        QTest::newRow("git") << Tool::git;
    }

    void launchFailureIsPassedUp()
    {
        QFETCH(Tool, tool);
        const FakeTool fake({});
        const ScopedEnvironmentVariable override(variableOf(tool), fake.path().toUtf8());
        QVERIFY_THROWS_EXCEPTION(PlatformFailure, run(tool, {u"status"_s}, {0}, u"/nonexistent/folder"_s));
        QCOMPARE(fake.processId(), 0);
    }

    // A child that fills both streams at once must neither block on a full
    // pipe nor lose a byte.
    void largeOutputs_data()
    {
        QTest::addColumn<bool>("cancellable");
        QTest::newRow("blocking runner") << false;
        QTest::newRow("cancellable runner") << true;
    }

    void largeOutputs()
    {
        QFETCH(bool, cancellable);
        constexpr qsizetype outputSize = 200 * 1000 * 1000;
        constexpr qsizetype errorSize = 50 * 1000 * 1000;
        FakeToolBehaviour behaviour;
        behaviour.standardOutput = pattern('a', outputSize);
        behaviour.standardError = pattern('A', errorSize);
        behaviour.customBody = "cat \"$ERROR_FILE\" >&2 &\ncat \"$OUTPUT_FILE\"\nwait";
        const FakeTool fake(behaviour);
        const ScopedEnvironmentVariable override("HG", fake.path().toUtf8());

        const CommandOutput output =
            cancellable ? runCommand(fake.path(), {}, QDir::tempPath(), std::nullopt, [] { return false; })
                        : runMercurial({u"cat"_s}, std::nullopt, {0});
        QCOMPARE(output.status, 0);
        QCOMPARE(output.standardOutput.size(), outputSize);
        QCOMPARE(output.standardError.size(), errorSize);
        QVERIFY(output.standardOutput == behaviour.standardOutput);
        QVERIFY(output.standardError == behaviour.standardError);
    }

    // A controlled run asks the tool for progress and passes it on while it runs.
    void controlledRunReportsProgress_data()
    {
        QTest::addColumn<Tool>("tool");
        QTest::addColumn<QByteArray>("progressLines");
        QTest::addColumn<QStringList>("expectedArguments");
        QTest::addColumn<QString>("expectedPhrase");
        QTest::newRow("hg") << Tool::mercurial << QByteArray("\\rfiles 1/4\\r")
                            << QStringList{u"--noninteractive"_s, u"--config"_s, u"progress.assume-tty=true"_s,
                                           u"--config"_s, u"progress.delay=0"_s, u"--config"_s,
                                           u"progress.refresh=0.2"_s, u"--config"_s,
                                           u"progress.format=topic number"_s, u"pull"_s}
                            << u"Files: 25%"_s;
        QTest::newRow("git") << Tool::git << QByteArray("Receiving objects:  40%% (4/10)\\r")
                             << QStringList{u"--no-pager"_s, u"pull"_s} << u"Receiving objects: 40%"_s;
    }

    void controlledRunReportsProgress()
    {
        QFETCH(Tool, tool);
        QFETCH(QByteArray, progressLines);
        QFETCH(QStringList, expectedArguments);
        QFETCH(QString, expectedPhrase);
        FakeToolBehaviour behaviour;
        behaviour.customBody = "printf '" + progressLines + "' >&2; sleep 1";
        const FakeTool fake(behaviour);
        const ScopedEnvironmentVariable override(variableOf(tool), fake.path().toUtf8());
        QStringList phrases;
        RunControl control;
        control.progress = [&phrases](const QString &phrase) { phrases.append(phrase); };
        const ToolCommand pull{{u"pull"_s}, {0}};
        if (tool == Tool::mercurial)
            runMercurial(pull, std::nullopt, control);
        else
            runGit(pull, std::nullopt, control);
        QCOMPARE(fake.receivedArguments(), expectedArguments);
        QCOMPARE(phrases, QStringList{expectedPhrase});
    }

    void runCommandReturnsAnyStatusWithGivenEnvironment()
    {
        const FakeTool fake({"diff text", "warning", 3, 0, {}});
        QProcessEnvironment environment;
        environment.insert(u"ONLY_THIS"_s, u"1"_s);
        QTemporaryDir directory;
        const CommandOutput output = runCommand(fake.path(), {u"--no-pager"_s, u"diff"_s}, directory.path(),
                                                environment, [] { return false; });
        QCOMPARE(output, (CommandOutput{"diff text", "warning", 3}));
        QCOMPARE(fake.receivedArguments(), (QStringList{u"--no-pager"_s, u"diff"_s}));
        QCOMPARE(fake.receivedWorkingDirectory(), directory.path());
        QCOMPARE(fake.receivedEnvironmentVariable("ONLY_THIS"), QByteArray("1"));
        QCOMPARE(fake.receivedEnvironmentVariable("HOME"), QByteArray());
    }

    void runCommandCancelledBeforeStartRunsNothing()
    {
        const FakeTool fake({});
        QVERIFY_THROWS_EXCEPTION(CancellationFailure, runCommand(fake.path(), {}, QDir::tempPath(),
                                                                 std::nullopt, [] { return true; }));
        QCOMPARE(fake.processId(), 0);
    }

    // Cancelling the future of the task that runs the command ends the child.
    void cancellingTheFutureEndsTheChild()
    {
        const FakeTool fake({"partial", {}, 0, 60, {}});
        const test::CancellationOutcome outcome = test::cancelWhileToolRuns(fake, [&fake](const CancellationCheck &check) {
            runCommand(fake.path(), {}, QDir::tempPath(), std::nullopt, check);
        });
        QVERIFY(outcome.childStarted);
        QVERIFY(outcome.threwCancellation);
        QVERIFY(outcome.childGone);
        QVERIFY2(outcome.millisecondsToEnd >= 0 && outcome.millisecondsToEnd < 100,
                 qPrintable(u"the child ended %1 ms after cancellation"_s.arg(outcome.millisecondsToEnd)));
    }

    // A child that ignores the polite request is killed.
    void cancellingKillsAStubbornChild()
    {
        FakeToolBehaviour behaviour;
        behaviour.customBody = "trap '' TERM\nwhile :; do sleep 0.01; done";
        const FakeTool fake(behaviour);
        std::atomic<bool> cancel = false;
        std::atomic<bool> wasCancelled = false;
        QFuture<void> future = QtConcurrent::run([&] {
            try {
                runCommand(fake.path(), {}, QDir::tempPath(), std::nullopt, [&] { return cancel.load(); });
            } catch (const CancellationFailure &) {
                wasCancelled = true;
            }
        });
        QTRY_VERIFY(fake.processId() != 0);
        cancel = true;
        future.waitForFinished();
        QVERIFY(wasCancelled);
        QVERIFY(!test::processIsRunning(fake.processId()));
    }

    // With no tool in any of the fixed folders nothing can run. The fixed
    // folders are hidden in a private mount namespace of a child test process.
    void notInstalledWhenNoFolderHasTheTool()
    {
        if (qEnvironmentVariableIsSet("TILLERY_TEST_TOOLS_HIDDEN")) {
            QVERIFY(!findMercurialExecutable());
            QVERIFY(!findGitExecutable());
            const FakeTool onPath({});
            const ScopedEnvironmentVariable path("PATH", QFileInfo(onPath.path()).absolutePath().toUtf8());
            QCOMPARE(toolFailureDescription([] { runMercurial({u"status"_s}, std::nullopt, {0}); }),
                     MercurialFailure::notInstalled().description());
            QCOMPARE(toolFailureDescription([] { runGit({u"status"_s}, std::nullopt, {0}); }),
                     GitFailure::notInstalled().description());
            QCOMPARE(onPath.processId(), 0);
            return;
        }

        QTemporaryDir empty;
        QByteArray script;
        for (const char *folder : {"/opt/homebrew/bin", "/usr/local/bin", "/usr/bin"}) {
            if (QFileInfo(QString::fromLatin1(folder)).isDir())
                script += "mount --bind '" + empty.path().toUtf8() + "' " + folder + " && ";
        }
        script += "echo tools-hidden && exec \"$0\" notInstalledWhenNoFolderHasTheTool";
        QProcess child;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"TILLERY_TEST_TOOLS_HIDDEN"_s, u"1"_s);
        child.setProcessEnvironment(environment);
        const QStringList namespaceOptions = geteuid() == 0 ? QStringList{u"--mount"_s}
                                                            : QStringList{u"--mount"_s, u"--map-root-user"_s};
        child.start(u"unshare"_s, namespaceOptions + QStringList{u"sh"_s, u"-c"_s, QString::fromUtf8(script),
                                                                 QCoreApplication::applicationFilePath()});
        QVERIFY(child.waitForFinished(60000));
        const QByteArray output = child.readAllStandardOutput();
        if (!output.contains("tools-hidden"))
            QSKIP(qPrintable(u"cannot hide the tool folders here: "_s
                             + QString::fromUtf8(child.readAllStandardError())));
        QVERIFY2(child.exitCode() == 0, output.constData());
    }
};

QTEST_GUILESS_MAIN(ToolRunnerTest)
#include "tst_tool_runner.moc"
