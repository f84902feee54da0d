// The main window and its settings window, sheets and dialogs, driven as a person does.
#include "FakeTool.h"
#include "WindowHarness.h"

#include "model/SecretStore.h"

#include "ui/ActivityRow.h"
#include "ui/AppearanceSettings.h"
#include "ui/CloneSheet.h"
#include "ui/CredentialDialog.h"
#include "ui/DesktopServices.h"
#include "ui/GeneralSettings.h"
#include "ui/IntegrationsSettings.h"
#include "ui/Palettes.h"
#include "ui/ReadableIndicatorStyle.h"
#include "ui/SettingsWindow.h"
#include "ui/WorkspaceToolbar.h"

#include <QDialogButtonBox>
#include <QRadioButton>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::WindowHarness;

Q_DECLARE_METATYPE(CredentialRequest::Kind)
Q_DECLARE_METATYPE(std::optional<CredentialAnswer>)

namespace {

// A program that does nothing, under the name a real one is looked up by.
void addProgram(const QString &folder, const QString &name)
{
    QFile program(QDir(folder).filePath(name));
    program.open(QIODevice::WriteOnly);
    program.write("#!/bin/sh\nexit 0\n");
    program.setPermissions(program.permissions() | QFileDevice::ExeOwner);
}

// Moves a combo box's choice the way a person does with the keyboard.
void chooseWithKeyboard(QComboBox *combo, const QString &item)
{
    combo->setFocus();
    const int target = combo->findText(item);
    QVERIFY2(target >= 0, qPrintable(item));
    while (combo->currentIndex() != target)
        QTest::keyClick(combo, combo->currentIndex() < target ? Qt::Key_Down : Qt::Key_Up);
}

} // namespace

class MainWindowTest : public QObject {
    Q_OBJECT

    // Programs found on the search path: an editor and two terminals.
    QTemporaryDir m_programs;
    std::unique_ptr<test::ScopedEnvironmentVariable> m_path;
    // A window that starts without repositories, and its settings window.
    std::unique_ptr<WindowHarness> m_harness;

    QString stored(const QString &key) { return m_harness->models.settings().value(key).toString(); }

private Q_SLOTS:
    void initTestCase()
    {
        test::pinTestEnvironment();
        // No session bus, so no secret store.
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        for (const QString &name : {u"code"_s, u"konsole"_s, u"xterm"_s})
            addProgram(m_programs.path(), name);
        QFile(m_programs.filePath(u"notes.txt"_s)).open(QIODevice::WriteOnly);
        m_path = std::make_unique<test::ScopedEnvironmentVariable>(
            "PATH", (m_programs.path() + u':' + qEnvironmentVariable("PATH")).toUtf8());
        m_harness = std::make_unique<WindowHarness>();
        m_harness->open();
    }

    void startPageDisablesRepositoryCommands()
    {
        MainWindow &window = m_harness->window();
        QVERIFY(test::child<WelcomeView>(window)->isVisible());
        for (const QAction *menu : window.menuBar()->actions()) {
            const bool needsRepository = menu->text() == u"Repository" || menu->text() == u"Branch";
            for (const QAction *item : menu->menu()->actions())
                QVERIFY2(item->isSeparator() || item->isEnabled() != needsRepository, qPrintable(item->text()));
        }
        QCOMPARE(test::accessibilityFaults(window), QStringList());
        test::menuAction(window, u"About Tillery"_s)->trigger();
        QCOMPARE(test::accessibilityFaults(*window.sheet(Workspace::Sheet::about)), QStringList());
        m_harness->model().setSheetShown(Workspace::Sheet::about, false);
    }

    void settingsWriteTheirKeys()
    {
        m_harness->window().openSettings();
        SettingsWindow &settings = *m_harness->window().settingsWindow();
        for (int tab = 0; tab < settings.tabs()->count(); ++tab) {
            settings.tabs()->setCurrentIndex(tab);
            QCOMPARE(test::accessibilityFaults(settings), QStringList());
        }
        GeneralSettings &general = *settings.general();
        QTest::keyClicks(general.userName(), u"Ann Harbour"_s);
        QVERIFY(!general.gitNote()->isHidden());
        QTest::keyClicks(general.userName(), u" <ann@example.com>"_s);
        QCOMPARE(stored(u"commitUsername.v1"_s), u"Ann Harbour <ann@example.com>"_s);
        QVERIFY(general.gitNote()->isHidden());

        // The Commit button and the buttons of the start page follow the button appearance.
        AppearanceSettings &appearance = *settings.appearance();
        const QList<QPushButton *> buttons =
            test::child<WelcomeView>(m_harness->window())->findChildren<QPushButton *>();
        QVERIFY(!buttons.isEmpty());
        chooseWithKeyboard(appearance.buttonAppearance(), u"Mac OS 10.7"_s);
        QCOMPARE(stored(u"buttonAppearance.v1"_s), u"Mac OS 10.7"_s);
        for (const QPushButton *button : buttons)
            QVERIFY(button->styleSheet().contains(u"qlineargradient"_s));
        chooseWithKeyboard(appearance.diffLayout(), u"Split"_s);
        QCOMPARE(stored(u"diffLayout.v1"_s), u"Split"_s);

        IntegrationsSettings &integrations = *settings.integrations();
        chooseWithKeyboard(integrations.terminal(), u"xterm"_s);
        QCOMPARE(stored(u"defaultTerminal.v1"_s), u"xterm"_s);
        QVERIFY(!integrations.takeEditorPath(m_programs.filePath(u"notes.txt"_s)));
        QVERIFY(!integrations.editorProblem()->isHidden());
        QVERIFY(stored(u"externalEditor.path.v2"_s).isEmpty());
        addProgram(m_programs.path(), u"chart-editor"_s);
        QVERIFY(integrations.takeEditorPath(m_programs.filePath(u"chart-editor"_s)));
        QCOMPARE(stored(u"externalEditor.path.v2"_s), m_programs.filePath(u"chart-editor"_s));
        integrations.editorArguments()->clear();
        QTest::keyClicks(integrations.editorArguments(), u"--wait \"%TARGET_PATH%"_s);
        QVERIFY(!integrations.editorProblem()->isHidden());
        QTest::keyClick(integrations.editorArguments(), Qt::Key_QuoteDbl);
        QVERIFY(integrations.editorProblem()->isHidden());
        QCOMPARE(stored(u"externalEditor.arguments.v2"_s), u"--wait \"%TARGET_PATH%\""_s);
        chooseWithKeyboard(integrations.editor(), u"VS Code"_s);
        QCOMPARE(stored(u"externalEditor.selection.v2"_s), u"vsCode"_s);
        QVERIFY(test::menuAction(m_harness->window(), u"Open in VS Code"_s));
    }

    // On a dark palette the outlines of check boxes and radio buttons stand out from the window.
    void darkIndicatorsKeepAVisibleOutline()
    {
        ReadableIndicatorStyle style(u"Fusion"_s);
        QCheckBox box;
        QRadioButton radio;
        for (QAbstractButton *button : std::initializer_list<QAbstractButton *>{&box, &radio}) {
            button->setStyle(&style);
            button->setPalette(darkPalette());
            button->resize(button->sizeHint());
            // Without a label the button is its indicator.
            const QImage picture = button->grab().toImage();
            int lightest = 0;
            for (int y = 0; y < picture.height(); ++y) {
                for (int x = 0; x < picture.width(); ++x)
                    lightest = std::max(lightest, picture.pixelColor(x, y).lightness());
            }
            QVERIFY2(lightest - darkPalette().color(QPalette::Window).lightness() >= 40,
                     button->metaObject()->className());
        }
    }

    // The title names the host; a secret is masked and may be remembered
    // unless no store runs; a host key is a yes-or-no question; only OK (or
    // Yes) gives an answer.
    void answers_data()
    {
        QTest::addColumn<CredentialRequest::Kind>("kind");
        QTest::addColumn<QString>("rememberUnavailable");
        QTest::addColumn<bool>("tickRemember");
        QTest::addColumn<QDialogButtonBox::StandardButton>("button");
        QTest::addColumn<QString>("title");
        QTest::addColumn<std::optional<CredentialAnswer>>("answer");
        const auto secret = CredentialRequest::Kind::secret;
        QTest::newRow("password remembered")
            << secret << QString() << true << QDialogButtonBox::Ok << u"Sign In to hg.example.org"_s
            << std::optional(CredentialAnswer{u"typed"_s, true});
        QTest::newRow("password, no secret store")
            << secret << u"No store."_s << true << QDialogButtonBox::Ok << u"Sign In to hg.example.org"_s
            << std::optional(CredentialAnswer{u"typed"_s, false});
        QTest::newRow("password cancelled") << secret << QString() << true << QDialogButtonBox::Cancel
                                            << u"Sign In to hg.example.org"_s << std::optional<CredentialAnswer>();
        QTest::newRow("user name") << CredentialRequest::Kind::userName << QString() << false << QDialogButtonBox::Ok
                                   << u"Sign In to hg.example.org"_s
                                   << std::optional(CredentialAnswer{u"typed"_s, false});
        QTest::newRow("host key trusted")
            << CredentialRequest::Kind::hostKey << QString() << false << QDialogButtonBox::Yes
            << u"Unknown Host hg.example.org"_s << std::optional(CredentialAnswer{});
        QTest::newRow("host key refused")
            << CredentialRequest::Kind::hostKey << QString() << false << QDialogButtonBox::No
            << u"Unknown Host hg.example.org"_s << std::optional<CredentialAnswer>();
    }
    void answers()
    {
        QFETCH(CredentialRequest::Kind, kind);
        QFETCH(QString, rememberUnavailable);
        QFETCH(bool, tickRemember);
        QFETCH(QDialogButtonBox::StandardButton, button);
        QFETCH(QString, title);
        QFETCH(std::optional<CredentialAnswer>, answer);
        const QString prompt = u"Password for 'https://alice@hg.example.org/<b>tides</b>':"_s;
        CredentialDialog dialog(nullptr, {kind, u"hg.example.org"_s, prompt, rememberUnavailable});
        dialog.show();
        QCOMPARE(dialog.windowTitle(), title);
        // The tool's words are shown as they are, never as markup.
        const QLabel &shown = *test::child<QLabel>(dialog, u"credentialPrompt"_s);
        QVERIFY(shown.text() == prompt && shown.textFormat() == Qt::PlainText);
        auto *field = dialog.findChild<QLineEdit *>(u"credentialField"_s);
        auto *remember = dialog.findChild<QCheckBox *>(u"rememberCheckBox"_s);
        QCOMPARE(field != nullptr, kind != CredentialRequest::Kind::hostKey);
        QCOMPARE(remember != nullptr, kind == CredentialRequest::Kind::secret);
        if (field) {
            QCOMPARE(field->echoMode() == QLineEdit::Password, kind == CredentialRequest::Kind::secret);
            QTest::keyClicks(field, u"typed"_s);
        }
        if (remember) {
            QCOMPARE(remember->isEnabled(), rememberUnavailable.isEmpty());
            QCOMPARE(remember->toolTip(), rememberUnavailable);
            if (tickRemember && remember->isEnabled())
                remember->click();
        }
        dialog.findChild<QDialogButtonBox *>()->button(button)->click();
        const std::optional<CredentialAnswer> given = dialog.answer();
        QCOMPARE(given.has_value(), answer.has_value());
        if (given) {
            QCOMPARE(given->text, answer->text);
            QCOMPARE(given->remember, answer->remember);
        }
    }

    // A withdrawn question closes its dialog, unanswered, typed text and all.
    void withdrawnQuestionCloses()
    {
        DialogPrompts prompts;
        QTimer::singleShot(0, [&] {
            QTRY_VERIFY(QApplication::activeModalWidget());
            QTest::keyClicks(QApplication::activeModalWidget()->findChild<QLineEdit *>(), u"typed"_s);
            prompts.withdrawCredentialQuestion();
        });
        // Should it stay, it is answered.
        QTimer::singleShot(5000, [] {
            if (QWidget *dialog = QApplication::activeModalWidget())
                dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->click();
        });
        QVERIFY(!prompts.askCredential({CredentialRequest::Kind::secret, u"h"_s, u"Password:"_s, QString()}));
        prompts.withdrawCredentialQuestion();
    }

    // Without a secret service on the session bus nothing can be kept, and
    // the reason says so.
    void noSecretStore()
    {
        DesktopSecretStore store;
        QVERIFY(store.unavailableReason().has_value());
        QVERIFY(!store.read(u"Password for 'https://alice@hg.example.org':"_s));
    }

    // Return never confirms a destructive action.
    void destructiveConfirmationsDefaultToCancel()
    {
        DialogPrompts prompts(&m_harness->window());
        QTimer::singleShot(0, [] {
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget()))
                QTest::keyClick(box, Qt::Key_Return);
        });
        QCOMPARE(prompts.alert({u"Discard changes to “a.txt”?"_s, QString(), {u"Discard"_s, u"Cancel"_s}}),
                 std::optional<int>(1));
    }

    // Last of the tests on the window without repositories: it clones one, then the window goes, so that
    // its shortcuts do not compete with those of the windows after it.
    void cloneThroughTheSheet()
    {
        const test::GitFixture origin;
        origin.commitAll(u"Start"_s);
        QTemporaryDir destination;
        test::menuAction(m_harness->window(), u"Clone Repository…"_s)->trigger();
        auto *clone = qobject_cast<CloneSheet *>(m_harness->window().sheet(Workspace::Sheet::clone));
        QVERIFY(clone);
        QCOMPARE(test::accessibilityFaults(*clone), QStringList());
        clone->source()->setText(origin.path() + u"/"_s);
        clone->parentFolder()->setText(destination.path());
        QCOMPARE(clone->name()->text(), QFileInfo(origin.path()).fileName());
        QCOMPARE(clone->kind()->currentText(), u"Git"_s);
        clone->name()->setText(u"harbour copy"_s);
        clone->cloneButton()->click();
        QVERIFY(m_harness->settle());
        QCOMPARE(m_harness->model().workspace().selectedRepository()->path, destination.filePath(u"harbour copy"_s));
        m_harness.reset();
    }

    // Per kind, on one repository: Push or Publish shows only once the snapshot says which; the row
    // whose diff shows stays current after a restart; Space and the boxes tick rows without changing
    // the selection; the commit shortcut works from the file list; Push publishes a branch the remote
    // does not have; the activity row stops a remote command; an operation holds every button.
    void workflow_data() { test::addKindColumn(); }

    void workflow()
    {
        QFETCH(RepositoryKind, kind);
        const bool git = kind == RepositoryKind::git;
        const std::unique_ptr<test::RepositoryFixture> repository = test::makeFixture(kind);
        repository->write(u"chart.txt"_s, "harbour\n");
        repository->commitAll(u"Chart the harbour"_s);
        const std::unique_ptr<test::GitFixture> origin = test::GitFixture::bare();
        if (git) {
            repository->tool({u"remote"_s, u"add"_s, u"origin"_s, origin->path()});
            static_cast<test::GitFixture &>(*repository).branch(u"R&D"_s);
        }
        repository->write(u"chart.txt"_s, "harbour\nbuoy\n");
        repository->write(u"notes.txt"_s, "fog\n");
        repository->write(u"tides.txt"_s, "high at six\n");
        WindowHarness harness;
        WorkspaceToolbar *toolbar = harness.open().workspace()->toolbar();
        bool hiddenWhileLoading = false;
        connect(&harness.model().workspace(), &Workspace::selectedRepositoryChanged, toolbar,
                [&] { hiddenWhileLoading = toolbar->pushButton()->isHidden(); });
        harness.model().adoptRepository(Repository{repository->path(), kind});
        QVERIFY(hiddenWhileLoading);
        QVERIFY(harness.settle());
        QVERIFY(!toolbar->pushButton()->isHidden());
        QCOMPARE(toolbar->pushButton()->accessibleName(), git ? u"Publish this branch"_s : u"Push"_s);
        // Renaming and deleting need an active bookmark; a Git branch always is one.
        for (const QString &label : {u"Rename…"_s, u"Delete…"_s})
            QCOMPARE(test::menuAction(harness.window(), label)->isEnabled(), git);

        QListView *list = harness.changes().list();
        test::clickRow(list, list->model()->index(1, 0));
        QVERIFY(harness.settle());
        QCOMPARE(test::accessibilityFaults(harness.window()), QStringList());
        harness.close();
        toolbar = harness.open().workspace()->toolbar();
        list = harness.changes().list();
        QTRY_VERIFY(harness.model().diffSelection().diff().text.contains(u"notes.txt"_s));
        QCOMPARE(list->currentIndex().row(), 1);
        CommitBox *box = test::child<CommitBox>(harness.changes());
        auto *selectAll = test::child<QCheckBox>(harness.changes(), u"selectAllFiles"_s);
        QVERIFY(!box->commitButton()->isEnabled());
        list->setFocus();
        QTest::keyClick(list, Qt::Key_Space);
        const QRect thirdBox = ChangedFileDelegate::checkBoxRect(list->visualRect(list->model()->index(2, 0)));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, thirdBox.center());
        const auto ticks = [list] { return test::rowValues<Qt::CheckState>(list, Qt::CheckStateRole); };
        QCOMPARE(ticks(), (QList<Qt::CheckState>{Qt::Unchecked, Qt::Checked, Qt::Checked}));
        QCOMPARE(list->selectionModel()->selectedRows(), QModelIndexList({list->model()->index(1, 0)}));
        QVERIFY(!selectAll->isChecked());
        // A ticked file that leaves the working copy no longer counts.
        repository->removeFromDisk(u"tides.txt"_s);
        harness.model().refresh();
        QVERIFY(harness.settle());
        QCOMPARE(box->commitButton()->text(), u"Commit 1 File"_s);
        TabButton *changesTab = harness.window().workspace()->tabHeader()->changesButton();
        QCOMPARE(changesTab->accessibleName(), u"Changes, 2"_s);
        // Ctrl+Backspace edits the summary, though it is also Remove Repository.
        box->summary()->setFocus();
        QTest::keyClicks(box->summary(), u"Note the x"_s);
        QTest::keyClick(box->summary(), Qt::Key_Backspace, Qt::ControlModifier);
        QTest::keyClicks(box->summary(), u"fog"_s);
        selectAll->click();
        QCOMPARE(ticks(), QList<Qt::CheckState>(2, Qt::Checked));
        QVERIFY(box->commitButton()->isEnabled());
        list->setFocus();
        QTest::keyClick(list, Qt::Key_Return, Qt::ControlModifier);
        QVERIFY(harness.settle());
        QCOMPARE(harness.model().workspace().snapshot().history.first().summary, u"Note the fog"_s);
        QCOMPARE(box->summary()->text(), QString());
        QVERIFY(!list->isVisible());
        QCOMPARE(changesTab->accessibleName(), u"Changes"_s);
        QTreeView *sidebar = test::child<QTreeView>(harness.window());
        sidebar->setFocus();
        QTest::keyClick(sidebar, Qt::Key_Backspace, Qt::ControlModifier);
        QCOMPARE(harness.models.prompts.alerts.size(), 1);

        if (git) {
            QToolButton *cancel = test::child<ActivityRow>(harness.window())->cancelButton();
            const test::FakeTool hangingGit(
                test::running("case \" $* \" in *' fetch '*) exec sleep 60 ;; esac\nexec git \"$@\""));
            const test::ScopedEnvironmentVariable override("GIT", hangingGit.path().toUtf8());
            toolbar->fetchButton()->click();
            QTRY_VERIFY(test::processIsRunning(hangingGit.processId()));
            QVERIFY(!cancel->isHidden());
            cancel->click();
            QVERIFY(harness.settle());
            QVERIFY(cancel->isHidden());
            toolbar->pushButton()->click();
            QVERIFY(harness.settle());
            QCOMPARE(toolbar->pushButton()->accessibleName(), u"Push"_s);
        } else {
            static_cast<test::MercurialFixture &>(*repository).bookmark(u"R&D"_s);
            static_cast<test::MercurialFixture &>(*repository).bookmark(u"main"_s);
            harness.model().refresh();
            QVERIFY(harness.settle());
        }
        QCOMPARE(test::shownLabel(toolbar->branchPicker()->text()), u"main"_s);
        QVERIFY(test::findAction(toolbar->branchMenu(), u"main"_s)->isChecked());
        QVERIFY(!test::findAction(toolbar->branchMenu(), u"R&D"_s)->isChecked());
        test::findAction(toolbar->branchMenu(), u"R&D"_s)->trigger();
        for (QToolButton *button : {toolbar->branchPicker(), toolbar->fetchButton(), toolbar->pullButton(),
                                    toolbar->pushButton(), toolbar->refreshButton()})
            QVERIFY(!button->isEnabled());
        QVERIFY(harness.settle());
        QCOMPARE(test::shownLabel(toolbar->branchPicker()->text()), u"R&D"_s);
        QVERIFY(test::findAction(toolbar->branchMenu(), u"R&D"_s)->isChecked());
        QVERIFY(toolbar->refreshButton()->isEnabled());
    }
};

QTEST_MAIN(MainWindowTest)
#include "tst_main_window.moc"
