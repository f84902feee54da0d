#include "TestEnvironment.h"

#include "integrations/DesktopEntryCommand.h"
#include "integrations/EditorLaunch.h"
#include "integrations/ITermScript.h"
#include "integrations/PropertyList.h"
#include "integrations/TerminalLaunch.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;

namespace {

// Programs "installed" by name, all under /opt/fake.
InstalledApplications installed(const QStringList &programs, const QStringList &desktopIds = {})
{
    InstalledApplications applications;
    applications.findProgram = [programs](const QString &name) {
        return programs.contains(name) ? std::optional(u"/opt/fake/"_s + name) : std::nullopt;
    };
    applications.desktopFileCommand = [desktopIds](const QString &id) {
        return desktopIds.contains(id) ? std::optional(QStringList{u"/opt/desktop/"_s + id, u"%F"_s}) : std::nullopt;
    };
    applications.findBundle = [](const QString &) { return std::optional<QString>(); };
    return applications;
}

// A property list made by Python's plistlib, in its binary form.
QByteArray binaryPropertyList(const QString &pythonDictionary)
{
    QProcess python;
    python.start(u"python3"_s, {u"-c"_s, u"import plistlib, sys; sys.stdout.buffer.write(plistlib.dumps("_s
                                             + pythonDictionary + u", fmt=plistlib.FMT_BINARY))"_s});
    python.waitForFinished(30000);
    return python.readAllStandardOutput();
}

QString describe(const std::variant<LaunchPlan, QString> &plan)
{
    if (const QString *message = std::get_if<QString>(&plan))
        return u"message: "_s + *message;
    const LaunchPlan &launch = std::get<LaunchPlan>(plan);
    return launch.program + u" | "_s + launch.arguments.join(u" | "_s) + u" in "_s + launch.workingDirectory;
}

} // namespace

using OptionalString = std::optional<QString>;

class LaunchPlansTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_folder;

    QString executable(const QString &name)
    {
        const QString path = m_folder.filePath(name);
        QFile file(path);
        file.open(QIODevice::WriteOnly);
        file.write("#!/bin/sh\n");
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return path;
    }

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void editorPlans_data()
    {
        QTest::addColumn<OptionalString>("selection");
        QTest::addColumn<QString>("otherPath"); // "executable", "plain file" or a path
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QStringList>("programs");
        QTest::addColumn<QString>("expected");
        const QString target = u"/r/it's a $(file); -x.txt"_s;
        QTest::newRow("known editor on the path")
            << OptionalString(u"vsCode"_s) << QString() << QString() << QStringList{u"code"_s}
            << u"/opt/fake/code | "_s + target + u" in /r"_s;
        QTest::newRow("known editor by its desktop file")
            << OptionalString(u"kate"_s) << QString() << QString() << QStringList{u"desktop:org.kde.kate"_s}
            << u"/opt/desktop/org.kde.kate | "_s + target + u" in /r"_s;
        QTest::newRow("known editor gone")
            << OptionalString(u"zed"_s) << QString() << QString() << QStringList{u"code"_s}
            << u"message: Zed is no longer installed. Choose another editor in Settings."_s;
        QTest::newRow("nothing chosen: the first installed")
            << OptionalString() << QString() << QString() << QStringList{u"gedit"_s, u"subl"_s}
            << u"/opt/fake/subl | "_s + target + u" in /r"_s;
        QTest::newRow("a macOS editor stored here: the first installed")
            << OptionalString(u"xcode"_s) << QString() << QString() << QStringList{u"gedit"_s}
            << u"/opt/fake/gedit | "_s + target + u" in /r"_s;
        QTest::newRow("other with arguments")
            << OptionalString(u"other"_s) << u"executable"_s << u"--goto '%TARGET_PATH%:1' -n"_s << QStringList{}
            << u"EXE | --goto | "_s + target + u":1 | -n in /r"_s;
        QTest::newRow("other with an empty argument string")
            << OptionalString(u"other"_s) << u"executable"_s << QString() << QStringList{}
            << u"message: Arguments must include %TARGET_PATH%."_s;
        QTest::newRow("other that is not executable")
            << OptionalString(u"other"_s) << u"plain file"_s << u"%TARGET_PATH%"_s << QStringList{}
            << u"message: Choose a valid editor path in Settings > Integrations."_s;
        QTest::newRow("other with a bad argument string")
            << OptionalString(u"other"_s) << u"executable"_s << u"--wait"_s << QStringList{}
            << u"message: Arguments must include %TARGET_PATH%."_s;
        QTest::newRow("nothing installed, nothing chosen")
            << OptionalString() << QString() << QString() << QStringList{}
            << u"message: Choose a valid editor path in Settings > Integrations."_s;
    }

    void editorPlans()
    {
        QFETCH(OptionalString, selection);
        QFETCH(QString, otherPath);
        QFETCH(QString, arguments);
        QFETCH(QStringList, programs);
        QFETCH(QString, expected);
        QString path = otherPath;
        if (otherPath == u"executable")
            path = executable(u"my editor"_s);
        else if (otherPath == u"plain file") {
            path = m_folder.filePath(u"notes.txt"_s);
            QFile(path).open(QIODevice::WriteOnly);
        }
        const EditorChoice choice{selection, path, arguments};
        const QStringList desktopIds = QStringList(programs).replaceInStrings(u"desktop:"_s, QString());
        const auto plan = editorLaunchPlan(choice, u"/r/it's a $(file); -x.txt"_s, u"/r"_s,
                                           installed(programs, programs.filter(u"desktop:"_s).isEmpty() ? QStringList{}
                                                                                                    : desktopIds));
        QCOMPARE(describe(plan), QString(expected).replace(u"EXE"_s, path));
        if (const LaunchPlan *launch = std::get_if<LaunchPlan>(&plan))
            QCOMPARE(launch->start, LaunchPlan::Start::detached);
    }

    void terminalPlans_data()
    {
        QTest::addColumn<OptionalString>("stored");
        QTest::addColumn<QStringList>("programs");
        QTest::addColumn<QString>("expected");
        const QString folder = u"/home/a/it's $(x)"_s;
        QTest::newRow("stored and installed") << OptionalString(u"org.kde.konsole"_s)
                                              << QStringList{u"gnome-terminal"_s, u"konsole"_s}
                                              << u"/opt/fake/konsole | --workdir | "_s + folder + u" in "_s + folder;
        QTest::newRow("stored but removed: the platform's own")
            << OptionalString(u"kitty"_s) << QStringList{u"gnome-terminal"_s, u"foot"_s}
            << u"/opt/fake/gnome-terminal | --working-directory="_s + folder + u" in "_s + folder;
        QTest::newRow("macOS choice: the first installed")
            << OptionalString(u"com.googlecode.iterm2"_s) << QStringList{u"alacritty"_s, u"xterm"_s}
            << u"/opt/fake/alacritty | --working-directory | "_s + folder + u" in "_s + folder;
        QTest::newRow("unknown value") << OptionalString(u"nonsense"_s) << QStringList{u"wezterm"_s}
                                       << u"/opt/fake/wezterm | start | --cwd | "_s + folder + u" in "_s + folder;
        QTest::newRow("kitty") << OptionalString(u"kitty"_s) << QStringList{u"kitty"_s}
                               << u"/opt/fake/kitty | --directory | "_s + folder + u" in "_s + folder;
        QTest::newRow("xterm starts in its working directory")
            << OptionalString(u"xterm"_s) << QStringList{u"xterm"_s} << u"/opt/fake/xterm |  in "_s + folder;
        QTest::newRow("Ghostty") << OptionalString(u"com.mitchellh.ghostty"_s) << QStringList{u"ghostty"_s}
                                 << u"/opt/fake/ghostty | --working-directory="_s + folder + u" in "_s + folder;
        QTest::newRow("none installed") << OptionalString() << QStringList{}
                                        << u"message: No terminal was found. Install one, such as GNOME Terminal, "
                                           "Konsole or xterm."_s;
    }

    void terminalPlans()
    {
        QFETCH(OptionalString, stored);
        QFETCH(QStringList, programs);
        QFETCH(QString, expected);
        QCOMPARE(describe(terminalLaunchPlan(stored, u"/home/a/it's $(x)"_s, installed(programs))), expected);
    }

    void terminalChoiceFallsBack()
    {
        const QList<TerminalApplication> onlyKonsole{TerminalApplication::konsole};
        QCOMPARE(resolveTerminal(u"org.kde.konsole"_s, onlyKonsole), TerminalApplication::konsole);
        QCOMPARE(resolveTerminal(u"xterm"_s, onlyKonsole), TerminalApplication::konsole);
        QCOMPARE(resolveTerminal(std::nullopt, {}), platformDefaultTerminal());
    }

    void iTermScriptCarriesThePathInBase64()
    {
        const QString path = u"/Users/ann/it's \"here\" \\ caf\u00e9"_s;
        const QString script = iTermScript(path);
        const QString base64 = QString::fromLatin1(path.toUtf8().toBase64());
        QCOMPARE(script,
                 u"set repositoryPath to do shell script \"printf %s '"_s + base64
                     + u"' | /usr/bin/base64 -D\"\n"
                       "tell application id \"com.googlecode.iterm2\"\n"
                       "    set newWindow to (create window with default profile)\n"
                       "    tell current session of newWindow to write text (\"cd -- \" & quoted form of repositoryPath)\n"
                       "    activate\n"
                       "end tell"_s);
        QVERIFY(!script.contains(u"it's"_s));
    }

    // Application bundles ship their Info.plist as XML or in the binary form.
    void propertyListStrings_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("key");
        QTest::addColumn<OptionalString>("expected");
        const QString many = u"**{'K%d' % n: 'value %d' % n for n in range(40)}"_s;
        const QByteArray binary = binaryPropertyList(
            u"{'CFBundleIdentifier': 'org.example.editor', 'CFBundleDisplayName': 'Éditeur ☕', "
            "'CFBundleName': 'A name longer than fifteen letters', 'CFBundleVersion': 7, "
            "'Nested': {'CFBundleName': 'inner'}, "_s + many + u'}');
        QVERIFY(binary.startsWith("bplist00"));
        QTest::newRow("binary: ASCII") << binary << u"CFBundleIdentifier"_s << OptionalString(u"org.example.editor"_s);
        QTest::newRow("binary: UTF-16") << binary << u"CFBundleDisplayName"_s << OptionalString(u"Éditeur ☕"_s);
        QTest::newRow("binary: long string, many keys") << binary << u"CFBundleName"_s
                                                        << OptionalString(u"A name longer than fifteen letters"_s);
        QTest::newRow("binary: the fortieth key") << binary << u"K39"_s << OptionalString(u"value 39"_s);
        QTest::newRow("binary: not a string") << binary << u"CFBundleVersion"_s << OptionalString();
        QTest::newRow("binary: missing") << binary << u"CFBundleExecutable"_s << OptionalString();
        QTest::newRow("xml") << QByteArray("<?xml version=\"1.0\"?><plist><dict><key>Nested</key><dict><key>CFBundleName"
                                           "</key><string>inner</string></dict><key>CFBundleName</key><string>Editor"
                                           "</string></dict></plist>")
                             << u"CFBundleName"_s << OptionalString(u"Editor"_s);
        QTest::newRow("neither") << QByteArray("bplist00 but nothing more") << u"CFBundleName"_s << OptionalString();
    }

    void propertyListStrings()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, key);
        QFETCH(OptionalString, expected);
        QCOMPARE(propertyListString(bytes, key), expected);
        // Damaged copies are read without fault, whatever they say.
        for (qsizetype length = 0; length < bytes.size(); ++length)
            propertyListString(bytes.first(length), key);
        for (qsizetype at = 0; at < bytes.size(); ++at) {
            QByteArray damaged = bytes;
            damaged[at] = char(0xFF - damaged[at]);
            propertyListString(damaged, key);
        }
    }

    // The command a desktop file's Exec line gives for opening one file, or
    // "(refused)". Before, only its first word was run, so "env ..." ran the
    // file itself; an interpreter would read the file as a script.
    void desktopEntryCommands_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("command"); // arguments joined by " | "
        const auto entry = [](const QString &exec) { return u"[Desktop Entry]\nName=x\n"_s + exec + u'\n'; };
        QTest::newRow("plain") << entry(u"Exec=kate -b %U"_s) << u"kate | -b | FILE"_s;
        QTest::newRow("quoted program") << entry(u"Exec=\"/opt/My Editor/bin/edit\" %F"_s)
                                        << u"/opt/My Editor/bin/edit | FILE"_s;
        QTest::newRow("escapes") << entry(u"Exec=\"/opt/a\\s\\\"b\\\"/ed\" %f"_s) << u"/opt/a \"b\"/ed | FILE"_s;
        QTest::newRow("env prefix") << entry(u"Exec=env GDK_BACKEND=x11 /usr/bin/code --new-window %F"_s)
                                    << u"env | GDK_BACKEND=x11 | /usr/bin/code | --new-window | FILE"_s;
        QTest::newRow("no field code") << entry(u"Exec = gedit"_s) << u"gedit | FILE"_s;
        QTest::newRow("other codes") << entry(u"Exec=ed %i --name=%c 100%% %k %F"_s) << u"ed | --name= | 100% | FILE"_s;
        QTest::newRow("actions are not the main entry")
            << u"[Desktop Action new]\nExec=other\n[Desktop Entry]\nExec=main %f\n"_s << u"main | FILE"_s;
        QTest::newRow("no Exec line") << entry(u"Type=Application"_s) << u"(refused)"_s;
        QTest::newRow("shell") << entry(u"Exec=sh -c \"code %F\""_s) << u"(refused)"_s;
        QTest::newRow("shell behind env") << entry(u"Exec=env A=1 /bin/bash -c \"x %f\""_s) << u"(refused)"_s;
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
        const QString shown = parsed ? (QStringList{parsed->first()} + desktopEntryArguments(*parsed, file)).join(u" | "_s)
                                     : u"(refused)"_s;
        QCOMPARE(shown, QString(command).replace(u"FILE"_s, file));
    }
};

QTEST_GUILESS_MAIN(LaunchPlansTest)
#include "tst_launch_plans.moc"
