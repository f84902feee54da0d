#include "Checks.h"
#include "ModelHarness.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::readFile;

namespace {

// A program of the given name that records its arguments and working
// directory next to itself, standing in for an editor or a terminal.
class StandIn {
public:
    StandIn(const QTemporaryDir &folder, const QString &name)
        : m_record(folder.filePath(name + u".record"_s))
    {
        test::writeFile(folder.filePath(name),
                        "#!/bin/sh\n{ pwd; for argument in \"$@\"; do printf '%s\\0' \"$argument\"; done; } > '"
                            + m_record.toUtf8() + ".part' && mv '" + m_record.toUtf8() + ".part' '" + m_record.toUtf8()
                            + "'\n",
                        true);
    }

    bool ran() const { return QFile::exists(m_record); }
    QString workingDirectory() const { return QString::fromUtf8(readFile(m_record)).section(u'\n', 0, 0); }
    QStringList arguments() const
    {
        const QByteArray recorded = readFile(m_record);
        QStringList arguments;
        for (const QByteArray &argument : recorded.mid(recorded.indexOf('\n') + 1).split('\0'))
            arguments.append(QString::fromUtf8(argument));
        arguments.removeLast();
        return arguments;
    }

private:
    QString m_record;
};

} // namespace

class OpenActionsTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_programs;
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
        // Only the stand-ins and the basic tools can be found.
        m_path.emplace("PATH", (m_programs.path() + u":/usr/bin:/bin"_s).toUtf8());
        m_repository = std::make_unique<test::GitFixture>();
        m_harness = std::make_unique<test::ModelHarness>();
    }

    void opensInTheEditorWithThePathAsOneArgument()
    {
        const StandIn code(m_programs, u"code"_s);
        const QString target = m_repository->filePath(u"it's a \"$(touch x)\"; -rf caf\u00e9.txt"_s);
        AppModel &model = startedWith(u"externalEditor.selection.v2"_s, u"vsCode"_s);
        QCOMPARE(model.editorTitle(), u"Open in VS Code"_s);
        model.openInEditor(target);
        QTRY_VERIFY(code.ran());
        QCOMPARE(code.arguments(), QStringList{target});
        QCOMPARE(code.workingDirectory(), m_repository->path());
        QVERIFY(!QFile::exists(m_repository->filePath(u"x"_s)));
        QCOMPARE(model.activityState().presentedError(), std::nullopt);
    }

    // An editor found through its desktop file gets the file as an argument
    // of the whole command line; before, "env ..." was cut to "env <file>",
    // which ran the file.
    void editorOfADesktopFileNeverRunsTheFile()
    {
        const StandIn editor(m_programs, u"kate-standin"_s);
        const QString applications = QStandardPaths::writableLocation(QStandardPaths::ApplicationsLocation);
        const QString entry = applications + u"/org.kde.kate.desktop"_s;
        test::writeFile(entry, "[Desktop Entry]\nName=Kate\nExec=env KATE_MODE=1 kate-standin -b %U\n");
        const QString runMe = m_repository->filePath(u"run-me"_s);
        m_repository->write(u"run-me"_s, "#!/bin/sh\ntouch '" + m_repository->filePath(u"PWNED"_s).toUtf8() + "'\n");
        QVERIFY(QFile::setPermissions(runMe, QFile::ReadOwner | QFile::ExeOwner));
        startedWith(u"externalEditor.selection.v2"_s, u"kate"_s).openInEditor(runMe);
        QTRY_VERIFY(editor.ran());
        QFile::remove(entry);
        QCOMPARE(editor.arguments(), (QStringList{u"-b"_s, runMe}));
        QVERIFY(!QFile::exists(m_repository->filePath(u"PWNED"_s)));
    }

    void opensTheRepositoryInATerminal()
    {
        const StandIn kitty(m_programs, u"kitty"_s);
        startedWith(u"defaultTerminal.v1"_s, u"kitty"_s).openInTerminal();
        QTRY_VERIFY(kitty.ran());
        QCOMPARE(kitty.arguments(), (QStringList{u"--directory"_s, m_repository->path()}));
        QCOMPARE(kitty.workingDirectory(), m_repository->path());
        QFile::remove(m_programs.filePath(u"kitty"_s));
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
        model.adoptRepository(Repository{repository.path(), RepositoryKind::mercurial});
        QVERIFY(harness.settle());
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
