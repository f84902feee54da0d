#include "Cancellation.h"
#include "FakeTool.h"
#include "RecordPrinting.h"
#include "TestEnvironment.h"

#include "process/Cancellation.h"
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

namespace {

void addToolColumn()
{
    QTest::addColumn<Tool>("tool");
    QTest::newRow("hg") << Tool::mercurial;
    QTest::newRow("git") << Tool::git;
}

} // namespace

class ToolRunnerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    // Both streams stay in memory: no run leaves a file behind.
    void cleanup() { QCOMPARE(test::temporaryFilesStartingWith(QString()), QStringList()); }

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
        QTest::addColumn<QStringList>("leadingArguments");
        QTest::addColumn<QByteArrayList>("expectedVariables"); // name=value
        // Strict flags: hg never takes an option from where a value stands,
        // and no alias of the person's (or HGPLAINEXCEPT) changes a command.
        QTest::newRow("hg") << Tool::mercurial << QStringList{u"--noninteractive"_s, u"--config=ui.timeout=5"_s}
                            << QByteArrayList{"HGENCODING=UTF-8", "HGPLAIN=+strictflags", "HGPLAINEXCEPT=",
                                              "INHERITED=yes"};
        QTest::newRow("git") << Tool::git << QStringList{u"--no-pager"_s}
                             << QByteArrayList{"GIT_TERMINAL_PROMPT=0", "GIT_EDITOR=true", "GIT_MERGE_AUTOEDIT=no",
                                               "LC_ALL=C", "GIT_OPTIONAL_LOCKS=0", "INHERITED=yes"};
    }

    void runsWithFixedFirstArgumentAndEnvironment()
    {
        QFETCH(Tool, tool);
        QFETCH(QStringList, leadingArguments);
        QFETCH(QByteArrayList, expectedVariables);

        const FakeTool fake({"out", "err", 0, 0, {}});
        const ScopedEnvironmentVariable override(variableOf(tool), fake.path().toUtf8());
        const ScopedEnvironmentVariable inherited("INHERITED", "yes");
        const ScopedEnvironmentVariable editor("GIT_EDITOR", "vi");
        const ScopedEnvironmentVariable plainExceptions("HGPLAINEXCEPT", "alias");
        QTemporaryDir directory;
        const QStringList arguments{u"log"_s, u"-r"_s, u"--weird value"_s, u""_s, u"caf\u00e9"_s};

        const CommandOutput output = run(tool, arguments, {0}, directory.path());
        QCOMPARE(output, (CommandOutput{"out", "err", 0}));
        QCOMPARE(fake.receivedArguments(), leadingArguments + arguments);
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
        QTest::newRow("hg waited in vain for a lock")
            << Tool::mercurial << QStringList{u"commit"_s} << QByteArray()
            << QByteArray("abort: working directory of /r: timed out waiting for lock held by 'host:42'\n") << 255
            << QList<int>{0}
            << u"The repository is locked by another process. Try again when it has finished.\n\n"
               "abort: working directory of /r: timed out waiting for lock held by 'host:42'"_s;
        QTest::newRow("git found the index locked")
            << Tool::git << QStringList{u"add"_s} << QByteArray()
            << QByteArray("fatal: Unable to create '/r/.git/index.lock': File exists.\n") << 128 << QList<int>{0}
            << u"The repository is locked by another process. Try again when it has finished.\n\n"
               "fatal: Unable to create '/r/.git/index.lock': File exists."_s;
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
            QCOMPARE(failure.failureCase(), expectedFailure.startsWith(u"The repository is locked"_s)
                                                 ? ToolFailure::Case::locked
                                                 : ToolFailure::Case::command);
            QCOMPARE(failure.arguments(), arguments);
            QCOMPARE(failure.code(), status);
            QCOMPARE(tool == Tool::mercurial, dynamic_cast<const MercurialFailure *>(&failure) != nullptr);
        }
    }

    // While a command runs nothing of it lies in the shared temporary folder,
    // where others could read what it prints.
    void runningCommandLeavesNothingToRead_data() { addToolColumn(); }

    void runningCommandLeavesNothingToRead()
    {
        QFETCH(Tool, tool);
        FakeToolBehaviour behaviour;
        behaviour.customBody = "echo secret >&2; find \"$TMPDIR\" -maxdepth 1 -type f";
        const FakeTool fake(behaviour);
        const ScopedEnvironmentVariable override(variableOf(tool), fake.path().toUtf8());
        QCOMPARE(run(tool, {u"status"_s}, {0}).standardOutput, QByteArray());
    }

    void launchFailureIsPassedUp_data() { addToolColumn(); }

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
        QTest::newRow("plain run") << false;
        QTest::newRow("cancellable run") << true;
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

        const RunControl control{cancellable ? CancellationCheck([] { return false; }) : CancellationCheck(), {}};
        const CommandOutput output = runMercurial(ToolCommand{{u"cat"_s}, {0}}, std::nullopt, control);
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
                            << QStringList{u"--noninteractive"_s, u"--config=ui.timeout=5"_s,
                                           u"--config=progress.assume-tty=true"_s, u"--config=progress.delay=0"_s,
                                           u"--config=progress.refresh=0.2"_s,
                                           u"--config=progress.format=topic number"_s, u"pull"_s}
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
        if (tool == Tool::mercurial)
            QCOMPARE(fake.receivedEnvironmentVariable("HGPLAINEXCEPT"), QByteArray("progress"));
    }

    // 200 MB of output make an alert of a few thousand characters that keeps
    // both ends and says how much is left out.
    void hugeFailureTextsAreAbridged()
    {
        FakeToolBehaviour behaviour;
        behaviour.customBody = "printf 'first words '; head -c 200000000 /dev/zero | tr '\\0' x; "
                               "printf ' caf\\303\\251 last words' ; exit 1";
        const FakeTool fake(behaviour);
        const ScopedEnvironmentVariable override("GIT", fake.path().toUtf8());
        QStringList manyFiles;
        for (int index = 0; index < 10000; ++index)
            manyFiles.append(u"file%1.txt"_s.arg(index));
        const QString description =
            toolFailureDescription([&] { runGit(QStringList{u"add"_s} + manyFiles, std::nullopt, {0}); });
        QVERIFY2(description.size() < 9000, qPrintable(QString::number(description.size())));
        QVERIFY(description.startsWith(u"git add file0.txt file1.txt"_s));
        QVERIFY(description.contains(u"file9999.txt exited with status 1.\n\nfirst words xxx"_s));
        QVERIFY(description.contains(u"characters left out …]"_s));
        QVERIFY(description.contains(u"x\n[… 199,994,029 bytes left out …]\nxxx"_s));
        QVERIFY(description.endsWith(u"xxx caf\u00e9 last words"_s));
    }

    void cancelledBeforeStartRunsNothing()
    {
        const FakeTool fake({});
        const ScopedEnvironmentVariable override("GIT", fake.path().toUtf8());
        QVERIFY_THROWS_EXCEPTION(CancellationFailure,
                                 runGit(ToolCommand{{u"diff"_s}, {0}}, std::nullopt, {[] { return true; }, {}}));
        QCOMPARE(fake.processId(), 0);
    }

    // Cancelling the future of the task that runs the command ends the child.
    void cancellingTheFutureEndsTheChild()
    {
        const FakeTool fake({"partial", {}, 0, 60, {}});
        const ScopedEnvironmentVariable override("HG", fake.path().toUtf8());
        const test::CancellationOutcome outcome = test::cancelWhileToolRuns(fake, [](const CancellationCheck &check) {
            runMercurial(ToolCommand{{u"diff"_s}, {0}}, std::nullopt, {check, {}});
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
        const ScopedEnvironmentVariable override("GIT", fake.path().toUtf8());
        std::atomic<bool> cancel = false;
        std::atomic<bool> wasCancelled = false;
        QFuture<void> future = QtConcurrent::run([&] {
            try {
                runGit(ToolCommand{{u"diff"_s}, {0}}, std::nullopt, {[&] { return cancel.load(); }, {}});
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

    // With no tool in any of the fixed folders the search path is tried;
    // with none there either nothing can run. The fixed folders are hidden in
    // a private mount namespace of a child test process.
    void searchPathComesLast()
    {
        if (qEnvironmentVariableIsSet("TILLERY_TEST_TOOLS_HIDDEN")) {
            const QString onPath = qEnvironmentVariable("TILLERY_TEST_PATH_TOOLS");
            QVERIFY(!findGitExecutable());
            const ScopedEnvironmentVariable path("PATH", onPath.toUtf8());
            QCOMPARE(findMercurialExecutable(), std::optional(onPath + u"/hg"_s));
            QCOMPARE(runMercurial({u"status"_s}, std::nullopt, {0}).standardOutput, QByteArray("found on the path\n"));
            QCOMPARE(toolFailureDescription([] { runGit({u"status"_s}, std::nullopt, {0}); }),
                     GitFailure::notInstalled().description());
            return;
        }

        // A stand-in hg on the search path, with a shell of its own: /usr/bin
        // (and /bin with it) is hidden in the child.
        QTemporaryDir onPath;
        QVERIFY(QFile::copy(QFileInfo(u"/bin/sh"_s).canonicalFilePath(), onPath.filePath(u"sh"_s)));
        QFile hg(onPath.filePath(u"hg"_s));
        QVERIFY(hg.open(QIODevice::WriteOnly));
        hg.write("#!" + onPath.filePath(u"sh"_s).toUtf8() + "\necho found on the path\n");
        hg.close();
        QVERIFY(hg.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        QTemporaryDir empty;
        QByteArray script;
        for (const char *folder : {"/opt/homebrew/bin", "/usr/local/bin", "/usr/bin"}) {
            if (QFileInfo(QString::fromLatin1(folder)).isDir())
                script += "mount --bind '" + empty.path().toUtf8() + "' " + folder + " && ";
        }
        script += "echo tools-hidden && exec \"$0\" searchPathComesLast";
        QProcess child;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"TILLERY_TEST_TOOLS_HIDDEN"_s, u"1"_s);
        environment.insert(u"TILLERY_TEST_PATH_TOOLS"_s, onPath.path());
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
