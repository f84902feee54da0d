#include "RepositoryFixtures.h"
#include "TestEnvironment.h"
#include "FakeTool.h"
#include "WindowHarness.h"

#include "ui/ActivityRow.h"
#include "ui/RepositoryWorkspace.h"
#include "ui/SidebarView.h"
#include "ui/WorkspaceToolbar.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QTest>
#include <QToolButton>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::GitFixture;
using test::MercurialFixture;
using test::WindowHarness;

namespace {

QAction *menuItem(QMenu *menu, const QString &label)
{
    for (QAction *action : menu->actions()) {
        if (test::shownLabel(action->text()) == label)
            return action;
    }
    return nullptr;
}

QStringList checkedItems(QMenu *menu)
{
    QStringList checked;
    for (const QAction *action : menu->actions()) {
        if (action->isChecked())
            checked.append(test::shownLabel(action->text()));
    }
    return checked;
}

} // namespace

class WorkspaceToolbarTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void switchingThroughTheBranchPicker_data() { test::addKindColumn(); }

    void switchingThroughTheBranchPicker()
    {
        QFETCH(RepositoryKind, kind);
        const std::unique_ptr<test::RepositoryFixture> repository = test::makeFixture(kind);
        repository->write(u"chart.txt"_s, "harbour\n");
        repository->commitAll(u"Start"_s);
        if (kind == RepositoryKind::mercurial) {
            auto &hg = static_cast<MercurialFixture &>(*repository);
            hg.bookmark(u"R&D"_s);
            hg.bookmark(u"main"_s);
        } else {
            static_cast<GitFixture &>(*repository).branch(u"R&D"_s);
        }

        WindowHarness harness;
        harness.open();
        WorkspaceToolbar &toolbar = *harness.window().workspace()->toolbar();
        // While the repository loads, neither Push nor Publish is offered.
        harness.model().adoptRepository(Repository{repository->path(), kind});
        QVERIFY(toolbar.pushButton()->isHidden());
        QVERIFY(harness.settle());
        QVERIFY(!toolbar.pushButton()->isHidden());
        QCOMPARE(toolbar.pushButton()->accessibleName(),
                 kind == RepositoryKind::mercurial ? u"Push"_s : u"Publish this branch"_s);
        QCOMPARE(toolbar.title()->text(), QFileInfo(repository->path()).fileName());
        QCOMPARE(test::shownLabel(toolbar.branchPicker()->text()), u"main"_s);
        QMenu *menu = toolbar.branchMenu();
        QCOMPARE(checkedItems(menu), QStringList({u"main"_s}));

        QAction *other = menuItem(menu, u"R&D"_s);
        QVERIFY(other);
        other->trigger();
        // The operation holds every button until it is done.
        QVERIFY(harness.model().activityState().isBusy());
        QCOMPARE(harness.model().activityState().activity(), u"Switching to R&D"_s);
        for (QToolButton *button : {toolbar.branchPicker(), toolbar.fetchButton(), toolbar.pullButton(),
                                    toolbar.pushButton(), toolbar.refreshButton()})
            QVERIFY(!button->isEnabled());
        QVERIFY(harness.settle());
        QCOMPARE(harness.model().activityState().presentedError(), std::nullopt);
        QCOMPARE(test::shownLabel(toolbar.branchPicker()->text()), u"R&D"_s);
        QCOMPARE(checkedItems(toolbar.branchMenu()), QStringList({u"R&D"_s}));
        QVERIFY(toolbar.refreshButton()->isEnabled());
    }

    // Every command that talks to a remote can be stopped from the activity row.
    void remoteCommandsCanBeCancelled()
    {
        const GitFixture repository;
        repository.write(u"chart.txt"_s, "harbour\n");
        repository.commitAll(u"Start"_s);
        WindowHarness harness;
        harness.openOn(repository.path());
        ActivityRow &row = *harness.window().sidebar()->activityRow();
        QVERIFY(row.cancelButton()->isHidden());

        test::FakeToolBehaviour behaviour;
        behaviour.customBody = "case \" $* \" in *' fetch '*) exec sleep 60 ;; esac\nexec git \"$@\"";
        const test::FakeTool hangingGit(behaviour);
        const test::ScopedEnvironmentVariable override("GIT", hangingGit.path().toUtf8());
        harness.window().workspace()->toolbar()->fetchButton()->click();
        QTRY_VERIFY(!row.cancelButton()->isHidden());
        QTRY_VERIFY(test::processIsRunning(hangingGit.processId()));
        row.cancelButton()->click();
        QVERIFY(harness.settle());
        QVERIFY(!test::processIsRunning(hangingGit.processId()));
        QVERIFY(row.cancelButton()->isHidden());
        QCOMPARE(harness.model().activityState().presentedError(), std::nullopt);
    }

    void publishingANewBranch()
    {
        const std::unique_ptr<GitFixture> origin = GitFixture::bare();
        const std::unique_ptr<GitFixture> seed = GitFixture::cloneOf(origin->path());
        seed->write(u"chart.txt"_s, "harbour\n");
        seed->commitAll(u"Start"_s);
        seed->git({u"push"_s, u"--quiet"_s, u"origin"_s, u"HEAD:main"_s});
        const std::unique_ptr<GitFixture> clone = GitFixture::cloneOf(origin->path());
        clone->branch(u"lights"_s, true);

        WindowHarness harness;
        harness.openOn(clone->path());
        QToolButton *push = harness.window().workspace()->toolbar()->pushButton();
        QCOMPARE(push->accessibleName(), u"Publish this branch"_s);
        push->click();
        QVERIFY(harness.settle());
        QCOMPARE(harness.model().activityState().presentedError(), std::nullopt);
        QVERIFY(origin->git({u"branch"_s, u"--list"_s, u"lights"_s}).contains("lights"));
        QCOMPARE(push->accessibleName(), u"Push"_s);
    }
};

QTEST_MAIN(WorkspaceToolbarTest)
#include "tst_workspace_toolbar.moc"
