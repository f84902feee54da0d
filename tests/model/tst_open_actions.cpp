#include "Checks.h"
#include "FakeTool.h"
#include "ModelHarness.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include <QFile>
#include <QStandardPaths>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::readFile;

namespace {

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

class OpenActionsTest : public QObject {
    Q_OBJECT

private:
    std::optional<test::ScopedEnvironmentVariable> m_path;
    std::unique_ptr<test::GitFixture> m_repository;
    std::unique_ptr<test::ModelHarness> m_harness;

    // The model restarted with the setting, on the Git repository.
    AppModel &startedWith(const QString &key, const QString &value)
    {
        m_harness->settings().setValue(key, value);
        AppModel &model = m_harness->start();
        model.adoptRepository(Repository{m_repository->path(), RepositoryKind::git});
        m_harness->settle();
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
        QCOMPARE(readFile(repository.filePath(u".hgignore"_s)), QByteArray("syntax: glob\nbuild/**\n"));
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

QTEST_GUILESS_MAIN(OpenActionsTest)
#include "tst_open_actions.moc"
