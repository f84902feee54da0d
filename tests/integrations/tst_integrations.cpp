// What opening a file in an editor, or the repository in a terminal, comes down to, and the model
// starting them; the files these integrations read and write.
#include "Checks.h"
#include "FakeTool.h"
#include "ModelHarness.h"
#include "TestEnvironment.h"

#include "integrations/DesktopEntryCommand.h"
#include "integrations/EditorArguments.h"
#include "integrations/EditorLaunch.h"
#include "integrations/ITermScript.h"
#include "integrations/IgnoreFile.h"
#include "integrations/PropertyList.h"
#include "integrations/TerminalLaunch.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;

using OptionalString = std::optional<QString>;

namespace {

// The programs named, installed under /opt/fake. (The model's tests below start editors found through
// desktop files and run the editors and terminals that are chosen and installed.)
InstalledApplications installed(const QString &programs)
{
    const QStringList names = programs.split(u' ', Qt::SkipEmptyParts);
    InstalledApplications applications;
    applications.findProgram = [names](const QString &name) {
        return names.contains(name) ? std::optional(u"/opt/fake/"_s + name) : std::nullopt;
    };
    applications.desktopFileCommand = [](const QString &) { return std::optional<QStringList>(); };
    applications.findBundle = [](const QString &) { return std::optional<QString>(); };
    return applications;
}

// "program | argument | ... in folder", or "message: ..." when there is nothing to start.
QString describe(const std::variant<LaunchPlan, QString> &plan)
{
    if (const QString *message = std::get_if<QString>(&plan))
        return u"message: "_s + *message;
    const LaunchPlan &launch = std::get<LaunchPlan>(plan);
    return launch.program + u" | "_s + launch.arguments.join(u" | "_s) + u" in "_s + launch.workingDirectory;
}

// For an editor or a terminal: the choice stored in the settings (none when
// empty), the other editor's file (made executable, or plain when it ends in
// .txt) and argument string, what is installed, and the plan: "program |
// argument | ... in folder" or the message shown, with FILE standing for the
// file or folder to open and EXE for the other editor.
struct PlanCase {
    bool terminal;
    QString selection, otherPath, arguments, installed, expected;
};

// A stand-in for an editor or a terminal: the one program of that name on
// the search path, beside the basic tools.
struct StandIn {
    explicit StandIn(const QString &name)
        : tool({}, name)
        , path("PATH", (tool.folder() + u":/usr/bin:/bin"_s).toUtf8())
    {
    }
    bool ran() const { return tool.processId() != 0 && !test::processIsRunning(tool.processId()); }

    test::FakeTool tool;
    test::ScopedEnvironmentVariable path;
};

} // namespace

namespace Arguments = tillery::ExternalEditorArguments;

class IntegrationsTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    std::optional<test::ScopedEnvironmentVariable> m_path;
    std::unique_ptr<test::GitFixture> m_repository;
    std::unique_ptr<test::ModelHarness> m_harness;

    // The model restarted with the setting, on the Git repository.
    AppModel &startedWith(const QString &key, const QString &value)
    {
        m_harness->settings().setValue(key, value);
        AppModel &model = m_harness->start();
        m_harness->adopt(*m_repository);
        return model;
    }

private Q_SLOTS:
    void initTestCase()
    {
        test::pinTestEnvironment();
        // Only the basic tools can be found, and the stand-ins where a test adds them.
        m_path.emplace("PATH", "/usr/bin:/bin");
        m_repository = std::make_unique<test::GitFixture>();
        m_harness = std::make_unique<test::ModelHarness>();
    }

    // What opening a file in the editor, or the repository in a terminal,
    // comes down to.
    void launchPlans_data()
    {
        QTest::addColumn<PlanCase>("plan");
        const QString choose = u"message: Choose a valid editor path in Settings > Integrations."_s;
        const QString none;
        QTest::newRow("editor: nothing chosen, the first installed")
            << PlanCase(false, none, none, none, u"gedit subl"_s, u"/opt/fake/subl | FILE in /r"_s);
        QTest::newRow("editor: one of macOS stored, the first installed")
            << PlanCase(false, u"xcode"_s, none, none, u"gedit"_s, u"/opt/fake/gedit | FILE in /r"_s);
        QTest::newRow("editor: other, with arguments")
            << PlanCase(false, u"other"_s, u"my editor"_s, u"--goto '%TARGET_PATH%:%TARGET_PATH%' -n"_s, none,
                        u"EXE | --goto | FILE:FILE | -n in /r"_s);
        QTest::newRow("editor: other, no arguments") << PlanCase(false, u"other"_s, u"my editor"_s, none, none,
                                                                 u"message: Arguments must include %TARGET_PATH%."_s);
        QTest::newRow("editor: other, not executable")
            << PlanCase(false, u"other"_s, u"notes.txt"_s, u"%TARGET_PATH%"_s, none, choose);
        QTest::newRow("editor: none installed, none chosen") << PlanCase(false, none, none, none, none, choose);
        QTest::newRow("terminal: stored but removed, the platform's own")
            << PlanCase(true, u"kitty"_s, none, none, u"foot gnome-terminal"_s,
                        u"/opt/fake/gnome-terminal | --working-directory=FILE in FILE"_s);
        QTest::newRow("terminal: one of macOS stored, the first installed")
            << PlanCase(true, u"com.googlecode.iterm2"_s, none, none, u"alacritty xterm"_s,
                        u"/opt/fake/alacritty | --working-directory | FILE in FILE"_s);
        QTest::newRow("terminal: none installed")
            << PlanCase(true, none, none, none, none,
                        u"message: No terminal was found. Install one, such as GNOME Terminal, Konsole or xterm."_s);
    }

    void launchPlans()
    {
        QFETCH(PlanCase, plan);
        const QString path = plan.otherPath.isEmpty() ? QString() : m_folder.filePath(plan.otherPath);
        if (!path.isEmpty()) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            if (!path.endsWith(u".txt"_s))
                QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        }
        const QString target = u"/r/it's a $(x); -x %TARGET_PATH%"_s;
        const OptionalString selection = plan.selection.isEmpty() ? OptionalString() : plan.selection;
        const auto made = plan.terminal ? terminalLaunchPlan(selection, target, installed(plan.installed))
                                        : editorLaunchPlan({selection, path, plan.arguments}, target, u"/r"_s,
                                                           installed(plan.installed));
        QCOMPARE(describe(made), plan.expected.replace(u"EXE"_s, path).replace(u"FILE"_s, target));
        if (const LaunchPlan *launch = std::get_if<LaunchPlan>(&made))
            QCOMPARE(launch->start, LaunchPlan::Start::detached);
    }

    // The script never holds the path as text a quote could end.
    void iTermScriptCarriesThePathInBase64()
    {
        const QString path = u"/Users/ann/it's \"here\" \\ caf\u00e9"_s;
        const QString script = iTermScript(path);
        QVERIFY(script.contains(u"printf %s '"_s + QString::fromLatin1(path.toUtf8().toBase64()) + u"' |"_s));
        QVERIFY(!script.contains(u"it's"_s) && !script.contains(u"here"_s));
    }

    // Application bundles ship their Info.plist as XML or in the binary form, here made by Python's
    // plistlib; damaged copies are read without fault, whatever they say.
    void propertyListStrings_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("key");
        QTest::addColumn<OptionalString>("expected");
        QProcess python;
        python.start(u"python3"_s, {u"-c"_s, u"import plistlib, sys; sys.stdout.buffer.write(plistlib.dumps({"
                                             "'CFBundleDisplayName': 'Éditeur ☕', "
                                             "'CFBundleVersion': 7, 'Nested': {'CFBundleName': 'inner'}, "
                                             "**{'K%d' % n: 'value %d' % n for n in range(40)}}, "
                                             "fmt=plistlib.FMT_BINARY))"_s});
        QVERIFY(python.waitForFinished(30000));
        const QByteArray binary = python.readAllStandardOutput();
        QTest::newRow("binary: UTF-16") << binary << u"CFBundleDisplayName"_s << OptionalString(u"Éditeur ☕"_s);
        QTest::newRow("binary: the fortieth key") << binary << u"K39"_s << OptionalString(u"value 39"_s);
        QTest::newRow("binary: not a string") << binary << u"CFBundleVersion"_s << OptionalString();
        QTest::newRow("binary: only in an inner dictionary") << binary << u"CFBundleName"_s << OptionalString();
        QTest::newRow("xml") << QByteArray("<?xml version=\"1.0\"?><plist><dict><key>Nested</key><dict><key>"
                                           "CFBundleName</key><string>inner</string></dict><key>CFBundleName</key>"
                                           "<string>Editor</string></dict></plist>")
                             << u"CFBundleName"_s << OptionalString(u"Editor"_s);
        QTest::newRow("neither") << QByteArray("bplist00 but nothing more") << u"CFBundleName"_s << OptionalString();
    }

    void propertyListStrings()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, key);
        QFETCH(OptionalString, expected);
        QCOMPARE(propertyListString(bytes, key), expected);
        for (qsizetype at = 0; at < bytes.size(); ++at) {
            QByteArray damaged = bytes;
            damaged[at] = char(0xFF - damaged[at]);
            propertyListString(damaged, key);
            propertyListString(bytes.first(at), key);
        }
    }

    // The command a desktop file's Exec line gives for opening one file, or
    // "(refused)": a command that could run the file as a script or through
    // a shell is not started at all.
    void desktopEntryCommands_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("command"); // arguments joined by " | "
        const auto entry = [](const QString &exec) { return u"[Desktop Entry]\nName=x\n"_s + exec + u'\n'; };
        QTest::newRow("plain") << entry(u"Exec=kate -b %U"_s) << u"kate | -b | FILE"_s;
        QTest::newRow("quoted program") << entry(u"Exec=\"/opt/My Editor/bin/edit\" %F"_s)
                                        << u"/opt/My Editor/bin/edit | FILE"_s;
        QTest::newRow("no field code") << entry(u"Exec = gedit"_s) << u"gedit | FILE"_s;
        QTest::newRow("other codes") << entry(u"Exec=ed %i --name=%c 100%% %k %F"_s) << u"ed | --name= | 100% | FILE"_s;
        QTest::newRow("actions are not the main entry")
            << u"[Desktop Action new]\nExec=other\n[Desktop Entry]\nExec=main %f\n"_s << u"main | FILE"_s;
        QTest::newRow("no Exec line") << entry(u"Type=Application"_s) << u"(refused)"_s;
        QTest::newRow("shell behind a launcher") << entry(u"Exec=nice -n 5 dash -c \"x %f\""_s) << u"(refused)"_s;
        QTest::newRow("env splitting a string") << entry(u"Exec=env -S \"code %F\""_s) << u"(refused)"_s;
        QTest::newRow("script interpreter") << entry(u"Exec=python3.11 /opt/ed.py %f"_s) << u"(refused)"_s;
        QTest::newRow("shell syntax") << entry(u"Exec=code %F; touch x"_s) << u"(refused)"_s;
        QTest::newRow("open quote") << entry(u"Exec=\"code %F"_s) << u"(refused)"_s;
        QTest::newRow("unknown field code") << entry(u"Exec=code %z"_s) << u"(refused)"_s;
    }

    void desktopEntryCommands()
    {
        QFETCH(QString, text);
        QFETCH(QString, command);
        const QString file = u"/r/it's a; file.txt"_s;
        const std::optional<QStringList> parsed = desktopEntryCommand(text);
        const QStringList shown =
            parsed ? QStringList{parsed->first()} + desktopEntryArguments(*parsed, file) : QStringList{u"(refused)"_s};
        QCOMPARE(shown.join(u" | "_s), QString(command).replace(u"FILE"_s, file));
    }

    // How a custom editor's argument string is split, and whether it can be
    // used: only when it parses and one argument holds the placeholder.
    // (launchPlans puts a path in place of the placeholders.)
    void argumentString_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("arguments"); // {"!quote"} or {"!escape"} for a failure
        QTest::addColumn<bool>("valid");
        QTest::newRow("word and quoted word with suffix")
            << u"--wait \"%TARGET_PATH%:1\""_s << QStringList{u"--wait"_s, u"%TARGET_PATH%:1"_s} << true;
        QTest::newRow("escaped blank") << u"a\\ b"_s << QStringList{u"a b"_s} << false;
        QTest::newRow("backslash kept in single quotes")
            << u"'%TARGET_PATH%\\b'"_s << QStringList{u"%TARGET_PATH%\\b"_s} << true;
        QTest::newRow("escape in double quotes") << u"\"a\\\"b\""_s << QStringList{u"a\"b"_s} << false;
        QTest::newRow("adjacent quotes give an empty argument") << u"''"_s << QStringList{QString()} << false;
        QTest::newRow("quotes join a word")
            << u"pre'mid dle'post x"_s << QStringList{u"premid dlepost"_s, u"x"_s} << false;
        QTest::newRow("tabs and runs of blanks")
            << u"  a\t\t%TARGET_PATH%  "_s << QStringList{u"a"_s, u"%TARGET_PATH%"_s} << true;
        QTest::newRow("only blanks") << u"   "_s << QStringList{} << false;
        QTest::newRow("unclosed double quote") << u"\"%TARGET_PATH%"_s << QStringList{u"!quote"_s} << false;
        QTest::newRow("lone backslash at the end") << u"%TARGET_PATH%\\"_s << QStringList{u"!escape"_s} << false;
        QTest::newRow("escape checked before the open quote") << u"\"a\\"_s << QStringList{u"!escape"_s} << false;
    }

    void argumentString()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, arguments);
        QFETCH(bool, valid);
        const auto parsed = Arguments::parse(text);
        const auto *error = std::get_if<Arguments::ParseError>(&parsed);
        if (error)
            QCOMPARE(*error == Arguments::ParseError::trailingEscape ? u"!escape"_s : u"!quote"_s, arguments.value(0));
        else
            QCOMPARE(std::get<QStringList>(parsed), arguments);
        // A string that does not parse is refused for that reason first.
        const std::optional<QString> problem = Arguments::validate(text);
        QCOMPARE(!problem, valid);
        if (error)
            QCOMPARE(problem, Arguments::errorText(*error));
    }

    // A cloned repository may bring an ignore file that is a link into its own metadata, where an
    // appended line becomes configuration that runs a program: nothing is written through it.
    void addsEntries_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<QByteArray>("before"); // "(missing)": no file; "(link)": a link to .git/config
        QTest::addColumn<QStringList>("patterns");
        QTest::addColumn<QString>("after"); // or "refused: " and the start of the failure, the file unchanged
        const auto hg = RepositoryKind::mercurial;
        const auto git = RepositoryKind::git;
        const QString oneLine = u"refused: An ignore entry must be one line of text."_s;
        QTest::newRow("git: no final line feed")
            << git << QByteArray("node_modules") << QStringList{u"dist/"_s} << u"node_modules\ndist/\n"_s;
        QTest::newRow("git: twice") << git << QByteArray("(missing)") << QStringList{u"*.log"_s, u"*.log"_s}
                                    << u"*.log\n"_s;
        QTest::newRow("hg: compares the normalised entry")
            << hg << QByteArray("syntax: glob\nbuild/**\n") << QStringList{u"/build/"_s}
            << u"syntax: glob\nbuild/**\n"_s;
        QTest::newRow("hg: header before every entry")
            << hg << QByteArray("syntax: regexp\n^out$\n") << QStringList{u"a.o"_s, u"docs/"_s}
            << u"syntax: regexp\n^out$\nsyntax: glob\na.o\nsyntax: glob\ndocs/**\n"_s;
        QTest::newRow("git: no trimming in the duplicate test")
            << git << QByteArray(" x\n") << QStringList{u"x"_s} << u" x\nx\n"_s;
        QTest::newRow("line feed in the entry")
            << hg << QByteArray("a\n") << QStringList{u"x\n!important"_s} << oneLine;
        QTest::newRow("carriage return in the entry")
            << git << QByteArray("a\n") << QStringList{u"x\rsyntax: regexp"_s} << oneLine;
        QTest::newRow("file that is not UTF-8")
            << hg << QByteArray("caf\xe9\n") << QStringList{u"x"_s} << u"refused: .hgignore is not UTF-8 text"_s;
        QTest::newRow("git: a link into .git/config")
            << git << QByteArray("(link)") << QStringList{u"[core] fsmonitor = x #/"_s}
            << u"refused: .gitignore is a symbolic link"_s;
    }

    // What an edit leaves, and the failure it ends with; the file keeps its permissions.
    void addsEntries()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(QByteArray, before);
        QFETCH(QStringList, patterns);
        QFETCH(QString, after);
        QTemporaryDir repository;
        QVERIFY(QDir().mkpath(repository.filePath(u".git"_s)));
        const QString name = repository.filePath(ignoreFileName(kind));
        const bool linked = before == "(link)";
        const QString file = linked ? repository.filePath(u".git/config"_s) : name;
        if (linked)
            QVERIFY(QFile::link(u".git/config"_s, name));
        const QByteArray original = linked ? "[core]\n" : before;
        if (before != "(missing)") {
            QFile written(file);
            QVERIFY(written.open(QIODevice::WriteOnly) && written.write(original) == original.size());
            QVERIFY(written.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther));
        }
        const QFile::Permissions permissions = QFile::permissions(file);
        QString failure;
        for (const QString &pattern : patterns)
            failure = test::failureOf([&] { addIgnoreEntry(pattern, repository.path(), kind); });
        const bool refused = after.startsWith(u"refused: "_s);
        QVERIFY2(failure.startsWith(refused ? after.sliced(9) : u"(no failure)"_s), qPrintable(failure));
        QCOMPARE(test::readFile(file), refused ? original : after.toUtf8());
        if (before != "(missing)")
            QCOMPARE(QFile::permissions(file), permissions);
        QCOMPARE(QFileInfo(name).isSymLink(), linked);
    }

    void opensInTheEditorWithThePathAsOneArgument()
    {
        const StandIn code(u"code"_s);
        const QString target = m_repository->filePath(u"it's a \"$(touch x)\"; -rf caf\u00e9.txt"_s);
        AppModel &model = startedWith(u"externalEditor.selection.v2"_s, u"vsCode"_s);
        QCOMPARE(model.editorTitle(), u"Open in VS Code"_s);
        model.openInEditor(target);
        QTRY_VERIFY(code.ran());
        QCOMPARE(code.tool.receivedArguments(), QStringList{target});
        QCOMPARE(code.tool.receivedWorkingDirectory(), m_repository->path());
        QVERIFY(!QFile::exists(m_repository->filePath(u"x"_s)));
        QCOMPARE(model.activityState().presentedError(), std::nullopt);
    }

    // An editor found through its desktop file gets the file as an argument
    // of the whole command line; before, "env ..." was cut to "env <file>",
    // which ran the file.
    void editorOfADesktopFileNeverRunsTheFile()
    {
        const StandIn editor(u"kate-standin"_s);
        const QString applications = QStandardPaths::writableLocation(QStandardPaths::ApplicationsLocation);
        const QString entry = applications + u"/org.kde.kate.desktop"_s;
        test::writeFile(entry, "[Desktop Entry]\nName=Kate\nExec=env KATE_MODE=1 kate-standin -b %U\n");
        const QString runMe = m_repository->filePath(u"run-me"_s);
        m_repository->write(u"run-me"_s, "#!/bin/sh\ntouch '" + m_repository->filePath(u"PWNED"_s).toUtf8() + "'\n");
        QVERIFY(QFile::setPermissions(runMe, QFile::ReadOwner | QFile::ExeOwner));
        startedWith(u"externalEditor.selection.v2"_s, u"kate"_s).openInEditor(runMe);
        QTRY_VERIFY(editor.ran());
        QFile::remove(entry);
        QCOMPARE(editor.tool.receivedArguments(), (QStringList{u"-b"_s, runMe}));
        QVERIFY(!QFile::exists(m_repository->filePath(u"PWNED"_s)));
    }

    void opensTheRepositoryInATerminal()
    {
        const StandIn kitty(u"kitty"_s);
        startedWith(u"defaultTerminal.v1"_s, u"kitty"_s).openInTerminal();
        QTRY_VERIFY(kitty.ran());
        QCOMPARE(kitty.tool.receivedArguments(), (QStringList{u"--directory"_s, m_repository->path()}));
        QCOMPARE(kitty.tool.receivedWorkingDirectory(), m_repository->path());
    }

    void failuresAreTitledWithTheAction()
    {
        AppModel &model = startedWith(u"externalEditor.selection.v2"_s, u"zed"_s);
        model.openInEditor(m_repository->path());
        QCOMPARE(model.activityState().presentedError()->title, u"Open in Zed"_s);
        QCOMPARE(model.activityState().presentedError()->message,
                 u"Zed is no longer installed. Choose another editor in Settings."_s);
        model.openInTerminal();
        QCOMPARE(model.activityState().presentedError()->title, u"Open in Terminal"_s);
    }

    void ignoresFilesAndUsesTheDesktop()
    {
        const test::MercurialFixture repository;
        repository.write(u"build/out.o"_s, "x");
        test::ModelHarness harness;
        AppModel &model = harness.start();
        QVERIFY(harness.adopt(repository));
        model.addIgnoreEntry(u"/build/"_s);
        QCOMPARE(model.activityState().activity(), u"Updating .hgignore"_s);
        QVERIFY(harness.settle());
        QCOMPARE(repository.read(u".hgignore"_s), "syntax: glob\nbuild/**\n"_ba);
        QCOMPARE(model.workspace().snapshot().files, (QList<WorkingFile>{{u".hgignore"_s, FileState::untracked}}));

        model.reveal(repository.filePath(u".hgignore"_s));
        model.openWithDefaultApplication(repository.filePath(u".hgignore"_s));
        model.copyPaths({u"a.txt"_s, u"b c.txt"_s});
        QVERIFY(harness.settle());
        QCOMPARE(harness.desktop.revealed, QStringList{repository.filePath(u".hgignore"_s)});
        // Asking the file manager may take seconds: never on the main thread.
        QVERIFY(!harness.desktop.revealedOnMainThread);
        QCOMPARE(harness.desktop.opened, QStringList{repository.filePath(u".hgignore"_s)});
        QCOMPARE(harness.desktop.clipboard, QStringList{u"a.txt\nb c.txt"_s});
    }
};

QTEST_GUILESS_MAIN(IntegrationsTest)
#include "tst_integrations.moc"
