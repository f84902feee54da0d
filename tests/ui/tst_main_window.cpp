#include "FakeTool.h"
#include "WindowHarness.h"

#include "ui/ActivityRow.h"
#include "ui/CloneSheet.h"
#include "ui/DesktopServices.h"
#include "ui/WorkspaceToolbar.h"

#include <QMenuBar>
#include <QTextDocument>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::WindowHarness;

class MainWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::prepareUiTest(); }

    void startPageDisablesRepositoryCommands()
    {
        WindowHarness harness;
        MainWindow &window = harness.open();
        QVERIFY(test::child<WelcomeView>(window)->isVisible());
        QVERIFY(!window.workspace()->isVisible());
        for (const QAction *menu : window.menuBar()->actions()) {
            const bool needsRepository = menu->text() == u"Repository" || menu->text() == u"Branch";
            for (const QAction *item : menu->menu()->actions())
                QVERIFY2(item->isSeparator() || item->isEnabled() != needsRepository, qPrintable(item->text()));
        }
        QCOMPARE(test::menuAction(window, u"Quit Tillery"_s)->shortcut(), QKeySequence(QKeySequence::Quit));
    }

    void tickAndCommitWithTheShortcut_data() { test::addKindColumn(); }

    void tickAndCommitWithTheShortcut()
    {
        QFETCH(RepositoryKind, kind);
        const std::unique_ptr<test::RepositoryFixture> repository = test::chartRepository(kind);
        repository->write(u"chart.txt"_s, "harbour\nbuoy\n");
        repository->write(u"tides.txt"_s, "high at six\n");
        WindowHarness harness;
        ChangesView &changes = harness.openOn(repository->path());
        const auto lastSummary = [&harness] { return harness.model().workspace().snapshot().history.first().summary; };
        QListView *list = changes.list();
        QCOMPARE(test::listedPaths(list), QStringList({u"chart.txt"_s, u"tides.txt"_s}));
        TabButton *changesTab = harness.window().workspace()->tabHeader()->changesButton();
        QCOMPARE(changesTab->accessibleName(), u"Changes, 2"_s);

        CommitBox *box = test::child<CommitBox>(changes);
        test::clickCheckBox(list, 1);
        QCOMPARE(box->commitButton()->text(), u"Commit 1 File"_s);
        // Ticking a box leaves the list's own selection alone.
        QVERIFY(list->selectionModel()->selectedIndexes().isEmpty());
        QTest::keyClicks(box->summary(), u"   "_s);
        QVERIFY(!box->commitButton()->isEnabled());
        box->summary()->clear();
        QTest::keyClicks(box->summary(), u"Add the tide table"_s);
        QTest::keyClick(box->summary(), Qt::Key_Return, Qt::ControlModifier);
        QVERIFY(harness.settle());
        QCOMPARE(lastSummary(), u"Add the tide table"_s);
        QCOMPARE(test::listedPaths(list), QStringList({u"chart.txt"_s}));
        QCOMPARE(box->summary()->text(), QString());
        QCOMPARE(changesTab->accessibleName(), u"Changes, 1"_s);

        // The last file, committed from the file list with the same shortcut.
        test::child<QCheckBox>(changes, u"selectAllFiles"_s)->click();
        QTest::keyClicks(box->summary(), u"Note the buoy"_s);
        list->setFocus();
        QTest::keyClick(list, Qt::Key_Return, Qt::ControlModifier);
        QVERIFY(harness.settle());
        QCOMPARE(lastSummary(), u"Note the buoy"_s);
        QVERIFY(!list->isVisible());
        QCOMPARE(changesTab->accessibleName(), u"Changes"_s);
    }

    // Keys that edit text reach a focused text field before any menu item
    // (Ctrl+Backspace is also Remove Repository); elsewhere the item has them.
    void textFieldsKeepTheirEditingKeys()
    {
        const test::GitFixture repository;
        repository.write(u"chart.txt"_s, "harbour\n");
        WindowHarness harness;
        QLineEdit *summary = test::child<CommitBox>(harness.openOn(repository.path()))->summary();
        summary->setFocus();
        QTest::keyClicks(summary, u"Add the tide table"_s);
        QTest::keyClick(summary, Qt::Key_Backspace, Qt::ControlModifier);
        QCOMPARE(summary->text(), u"Add the tide "_s);
        QTest::keyClick(summary, Qt::Key_Left, Qt::ControlModifier);
        QCOMPARE(summary->cursorPosition(), 8);
        QTest::keyClick(summary, Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(summary->selectedText(), u"Add the tide "_s);
        QVERIFY(harness.models.prompts.alerts.isEmpty());

        QTreeView *sidebar = test::child<QTreeView>(harness.window());
        sidebar->setFocus();
        QTest::keyClick(sidebar, Qt::Key_Backspace, Qt::ControlModifier);
        QCOMPARE(harness.models.prompts.alerts.size(), 1);
        QVERIFY(harness.models.prompts.alerts.first().message.startsWith(u"Remove"_s));
    }

    // Return never confirms a destructive action.
    void destructiveConfirmationsDefaultToCancel()
    {
        QWidget parent;
        DialogPrompts prompts(&parent);
        QString defaultButton;
        QTimer::singleShot(0, [&defaultButton] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            defaultButton = box && box->defaultButton() ? box->defaultButton()->text() : u"(none)"_s;
            if (box)
                QTest::keyClick(box, Qt::Key_Return);
        });
        const std::optional<int> answer =
            prompts.alert({u"Discard changes to “a.txt”?"_s, QString(), {u"Discard"_s, u"Cancel"_s}});
        QCOMPARE(defaultButton, u"Cancel"_s);
        QCOMPARE(answer, std::optional<int>(1));
    }

    void branchMenuFollowsTheRepository_data() { test::addKindColumn(); }

    void branchMenuFollowsTheRepository()
    {
        QFETCH(RepositoryKind, kind);
        const std::unique_ptr<test::RepositoryFixture> repository = test::chartRepository(kind);
        WindowHarness harness;
        harness.openOn(repository->path());
        const bool git = kind == RepositoryKind::git;
        for (const QString &label : {git ? u"Update from main"_s : u"Update from default"_s, u"Push"_s, u"Refresh"_s,
                                     u"Remove Repository…"_s, u"Stash All Changes"_s})
            QVERIFY2(test::menuAction(harness.window(), label)->isEnabled(), qPrintable(label));
        // Renaming and deleting need an active bookmark; a Git branch always is one.
        for (const QString &label : {u"Rename…"_s, u"Delete…"_s})
            QCOMPARE(test::menuAction(harness.window(), label)->isEnabled(), git);
        if (!git) {
            static_cast<test::MercurialFixture &>(*repository).bookmark(u"feature"_s);
            harness.model().refresh();
            QVERIFY(harness.settle());
            for (const QString &label : {u"Rename…"_s, u"Delete…"_s})
                QVERIFY(test::menuAction(harness.window(), label)->isEnabled());
        }
    }

    void cloneThroughTheSheet()
    {
        const std::unique_ptr<test::RepositoryFixture> origin = test::chartRepository(RepositoryKind::git);
        QTemporaryDir destination;
        WindowHarness harness;
        MainWindow &window = harness.open();
        test::menuAction(window, u"Clone Repository…"_s)->trigger();
        auto *clone = qobject_cast<CloneSheet *>(window.sheet(Workspace::Sheet::clone));
        QVERIFY(clone);
        clone->source()->setText(origin->path() + u"/"_s);
        clone->parentFolder()->setText(destination.path());
        QCOMPARE(clone->name()->text(), QFileInfo(origin->path()).fileName());
        QCOMPARE(clone->kind()->currentText(), u"Git"_s);
        clone->name()->setText(u"harbour copy"_s);
        clone->cloneButton()->click();
        QVERIFY(harness.settle());
        QTRY_VERIFY(!window.sheet(Workspace::Sheet::clone));
        const QString cloned = destination.filePath(u"harbour copy"_s);
        QCOMPARE(test::readFile(cloned + u"/chart.txt"_s), QByteArray("harbour\n"));
        QCOMPARE(harness.model().workspace().selectedRepository()->path, cloned);
    }

    // Names and tool output that look like markup or carry "&" are shown exactly as they are; a
    // newer error replaces the shown one.
    void namesAndErrorsShowAsTheyAre()
    {
        const test::GitFixture repository;
        const QString hostile = u"<b>bold & brave.txt"_s;
        repository.write(hostile, "text\n");
        WindowHarness harness;
        MainWindow &window = harness.open();
        harness.addThroughMenu(repository.path());
        AppModel &model = harness.model();
        model.selectChangeFiles({model.workspace().snapshot().files.first()});
        QVERIFY(harness.settle());
        const QModelIndex row = harness.changes().list()->model()->index(0, 0);
        QCOMPARE(row.data().toString(), hostile);
        QTextDocument tip;
        tip.setHtml(row.data(Qt::ToolTipRole).toString());
        QCOMPARE(tip.toPlainText(), hostile);

        model.presentError(u"Pushing changes"_s, u"abort: no remote"_s);
        auto *alert = test::child<QMessageBox>(window);
        QTRY_VERIFY(alert->isVisible());
        model.presentError(u"Discarding “"_s + hostile + u'”', u"error: "_s + hostile);
        QCOMPARE(test::child<QMessageBox>(window), alert);
        QCOMPARE(alert->informativeText(), u"error: "_s + hostile);
        // No visible label reads the name as markup.
        for (const QLabel *label : window.findChildren<QLabel *>()) {
            const bool markup = label->textFormat() == Qt::RichText
                                || (label->textFormat() == Qt::AutoText && Qt::mightBeRichText(label->text()));
            QVERIFY2(!label->isVisibleTo(&window) || !markup || !label->text().contains(u"<b>bold"_s),
                     qPrintable(label->text()));
        }
        alert->button(QMessageBox::Ok)->click();
        QCOMPARE(model.activityState().presentedError(), std::nullopt);
        QTRY_VERIFY(!window.findChild<QMessageBox *>());
    }

    void switchingThroughTheBranchPicker_data() { test::addKindColumn(); }

    void switchingThroughTheBranchPicker()
    {
        QFETCH(RepositoryKind, kind);
        const std::unique_ptr<test::RepositoryFixture> repository = test::chartRepository(kind);
        if (auto *hg = dynamic_cast<test::MercurialFixture *>(repository.get())) {
            hg->bookmark(u"R&D"_s);
            hg->bookmark(u"main"_s);
        } else {
            static_cast<test::GitFixture &>(*repository).branch(u"R&D"_s);
        }
        WindowHarness harness;
        WorkspaceToolbar &toolbar = *harness.open().workspace()->toolbar();
        // While the repository loads, neither Push nor Publish is offered.
        bool hiddenWhileLoading = false;
        connect(&harness.model().workspace(), &Workspace::selectedRepositoryChanged, &toolbar,
                [&] { hiddenWhileLoading = toolbar.pushButton()->isHidden(); });
        harness.model().adoptRepository(Repository{repository->path(), kind});
        QVERIFY(hiddenWhileLoading);
        QVERIFY(harness.settle());
        QVERIFY(!toolbar.pushButton()->isHidden());
        QCOMPARE(toolbar.pushButton()->accessibleName(),
                 kind == RepositoryKind::git ? u"Publish this branch"_s : u"Push"_s);
        QCOMPARE(toolbar.title()->text(), QFileInfo(repository->path()).fileName());
        QCOMPARE(test::shownLabel(toolbar.branchPicker()->text()), u"main"_s);
        QVERIFY(test::findAction(toolbar.branchMenu(), u"main"_s)->isChecked());
        QVERIFY(!test::findAction(toolbar.branchMenu(), u"R&D"_s)->isChecked());

        test::findAction(toolbar.branchMenu(), u"R&D"_s)->trigger();
        // The operation holds every button until it is done.
        QCOMPARE(harness.model().activityState().activity(), u"Switching to R&D"_s);
        for (QToolButton *button : {toolbar.branchPicker(), toolbar.fetchButton(), toolbar.pullButton(),
                                    toolbar.pushButton(), toolbar.refreshButton()})
            QVERIFY(!button->isEnabled());
        QVERIFY(harness.settle());
        QCOMPARE(test::shownLabel(toolbar.branchPicker()->text()), u"R&D"_s);
        QVERIFY(test::findAction(toolbar.branchMenu(), u"R&D"_s)->isChecked());
        QVERIFY(!test::findAction(toolbar.branchMenu(), u"main"_s)->isChecked());
        QVERIFY(toolbar.refreshButton()->isEnabled());
    }

    // A remote command can be stopped from the activity row; a branch the remote does not have is
    // published.
    void cancelFetchAndPublishTheBranch()
    {
        const std::unique_ptr<test::GitFixture> origin = test::GitFixture::bare();
        const std::unique_ptr<test::GitFixture> seed = test::GitFixture::cloneOf(origin->path());
        seed->write(u"chart.txt"_s, "harbour\n");
        seed->commitAll(u"Start"_s);
        seed->git({u"push"_s, u"--quiet"_s, u"origin"_s, u"HEAD:main"_s});
        const std::unique_ptr<test::GitFixture> clone = test::GitFixture::cloneOf(origin->path());
        clone->branch(u"lights"_s, true);
        WindowHarness harness;
        harness.openOn(clone->path());
        WorkspaceToolbar &toolbar = *harness.window().workspace()->toolbar();
        QToolButton *cancel = test::child<ActivityRow>(harness.window())->cancelButton();
        QVERIFY(cancel->isHidden());
        {
            test::FakeToolBehaviour behaviour;
            behaviour.customBody = "case \" $* \" in *' fetch '*) exec sleep 60 ;; esac\nexec git \"$@\"";
            const test::FakeTool hangingGit(behaviour);
            const test::ScopedEnvironmentVariable override("GIT", hangingGit.path().toUtf8());
            toolbar.fetchButton()->click();
            QTRY_VERIFY(test::processIsRunning(hangingGit.processId()));
            QVERIFY(!cancel->isHidden());
            cancel->click();
            QVERIFY(harness.settle());
            QVERIFY(!test::processIsRunning(hangingGit.processId()));
            QVERIFY(cancel->isHidden());
            QCOMPARE(harness.model().activityState().presentedError(), std::nullopt);
        }
        QCOMPARE(toolbar.pushButton()->accessibleName(), u"Publish this branch"_s);
        toolbar.pushButton()->click();
        QVERIFY(harness.settle());
        QVERIFY(origin->git({u"branch"_s, u"--list"_s, u"lights"_s}).contains("lights"));
        QCOMPARE(toolbar.pushButton()->accessibleName(), u"Push"_s);
    }
};

QTEST_MAIN(MainWindowTest)
#include "tst_main_window.moc"
