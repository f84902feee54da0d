#include "Checks.h"
#include "FakeTool.h"
#include "ModelHarness.h"
#include "Pictures.h"
#include "RecordPrinting.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::GitFixture;
using test::MercurialFixture;
using test::ModelHarness;

namespace {

Repository hg(const test::RepositoryFixture &fixture)
{
    return Repository{fixture.path(), RepositoryKind::mercurial};
}

Repository git(const test::RepositoryFixture &fixture)
{
    return Repository{fixture.path(), RepositoryKind::git};
}

QStringList shownPaths(const AppModel &model)
{
    QStringList paths;
    for (const WorkingFile &file : model.workspace().snapshot().files)
        paths.append(file.path);
    return paths;
}

} // namespace

class AppModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    // The stored list without the repository that vanished, the last selected
    // one or else the first in the sidebar, refreshed at once. Removing one
    // asks first, selects the next repository and leaves the files alone.
    void storedRepositories()
    {
        const MercurialFixture first;
        const GitFixture second;
        second.write(u"changed.txt"_s, "x\n");
        QTemporaryDir gone;
        const QString goneRepository = gone.filePath(u"deleted"_s);
        ModelHarness harness;
        harness.modelSettings().setRepositories({hg(first), {goneRepository, RepositoryKind::git}, git(second)});
        const QUuid folder(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11);
        harness.modelSettings().setSidebarLayout(
            {{RepositorySidebarItem::folder(folder), RepositorySidebarItem::repository(first.path())},
             {{folder, u"Work"_s, {second.path()}}}});
        harness.modelSettings().setLastSelectedRepository(goneRepository);

        AppModel &model = harness.start();
        QCOMPARE(model.library().repositories(), (QList<Repository>{hg(first), git(second)}));
        QCOMPARE(model.workspace().selectedRepository(), std::optional(git(second)));
        QCOMPARE(model.activityState().activity(), u"Refreshing "_s + QFileInfo(second.path()).fileName());
        QVERIFY(harness.settle());
        QCOMPARE(shownPaths(model), QStringList{u"changed.txt"_s});
        QCOMPARE(model.settings().lastSelectedRepository(), std::optional(second.path()));

        harness.prompts.alertAnswers = {1, 0};
        model.confirmRemove(git(second));
        QCOMPARE(harness.prompts.alerts.last().message,
                 u"Remove “"_s + QFileInfo(second.path()).fileName() + u"” from Tillery?"_s);
        QCOMPARE(model.library().repositories().size(), 2);
        model.confirmRemove(git(second));
        QCOMPARE(model.library().repositories(), QList<Repository>{hg(first)});
        QCOMPARE(model.workspace().selectedRepository(), std::optional(hg(first)));
        QVERIFY(harness.settle());
        QVERIFY(QFileInfo(second.path() + u"/.git"_s).isDir());

        model.remove(hg(first));
        QCOMPARE(model.workspace().selectedRepository(), std::nullopt);
        QCOMPARE(harness.modelSettings().repositories(), QList<Repository>());
        QCOMPARE(harness.modelSettings().lastSelectedRepository(), std::nullopt);
    }

    // A refresh that arrives after the person moved on is dropped.
    void switchingWhileARefreshRuns()
    {
        const MercurialFixture slow;
        slow.write(u"from-slow.txt"_s, "x\n");
        const GitFixture fast;
        fast.write(u"from-fast.txt"_s, "x\n");
        QTemporaryDir gate;
        const test::FakeTool slowHg(test::running(test::interceptedBody(
            RepositoryKind::mercurial, "status", test::waitForFile(gate.filePath(u"go"_s)) + "; exec hg \"$@\"")));
        const test::ScopedEnvironmentVariable override("HG", slowHg.path().toUtf8());

        ModelHarness harness;
        AppModel &model = harness.start();
        model.adoptRepository(hg(slow));
        QVERIFY(model.workspace().isSwitchingRepository());
        model.adoptRepository(git(fast));
        QTRY_COMPARE(shownPaths(model), QStringList{u"from-fast.txt"_s});
        test::writeFile(gate.filePath(u"go"_s), {});
        QVERIFY(harness.settle());
        QCOMPARE(shownPaths(model), QStringList{u"from-fast.txt"_s});
        QVERIFY(!model.workspace().isSwitchingRepository());
        model.select(hg(slow));
        QVERIFY(harness.settle());
        QCOMPARE(shownPaths(model), QStringList{u"from-slow.txt"_s});
    }

    // A folder inside a repository adds the repository, once; anything else is refused.
    void addingFolders()
    {
        const GitFixture repository;
        QDir().mkpath(repository.filePath(u"src/deep"_s));
        QTemporaryDir plain;
        ModelHarness harness;
        AppModel &model = harness.start();
        const QSignalSpy errors(&model.activityState(), &ActivityState::presentedErrorChanged);
        model.addRepositories({QUrl::fromLocalFile(plain.filePath(u"missing"_s)), QUrl(u"https://example.com/"_s),
                               QUrl::fromLocalFile(plain.path())});
        QVERIFY(harness.settle());
        QCOMPARE(errors.count(), 1);
        QCOMPARE(model.activityState().presentedError()->message,
                 plain.path() + u" is not a Mercurial or Git repository."_s);
        model.dismissError();

        for (int time = 0; time < 2; ++time) {
            harness.prompts.folderAnswers = {repository.filePath(u"src/deep"_s)};
            model.addRepository();
            QVERIFY(harness.settle());
        }
        QCOMPARE(model.library().repositories(), QList<Repository>{git(repository)});
        QCOMPARE(model.workspace().selectedRepository(), std::optional(git(repository)));
        QCOMPARE(harness.modelSettings().repositories(), QList<Repository>{git(repository)});
    }

    // Folders go after the selected row, keep their order and name across a
    // restart, and give their repositories back when removed.
    void sidebarFolders()
    {
        const MercurialFixture a;
        const GitFixture b;
        ModelHarness harness;
        harness.modelSettings().setRepositories({hg(a), git(b)});
        AppModel &model = harness.start();
        QVERIFY(harness.settle());
        model.createFolder();
        QVERIFY(model.library().sidebarItems()[1].isFolder());
        const QUuid folder = model.library().sidebarItems()[1].folderId;
        QCOMPARE(model.library().selectedSidebarFolderID(), std::optional(folder));
        model.moveIntoFolder(b.path(), folder);
        harness.prompts.textAnswers = {u"Work"_s};
        model.renameFolder(folder);
        QCOMPARE(harness.prompts.texts.last().initialText, u"New Folder"_s);

        const RepositorySidebarLayout before = model.library().layout();
        AppModel &restarted = harness.start();
        QVERIFY(harness.settle());
        QCOMPARE(restarted.library().layout(), before);
        QCOMPARE(restarted.library().repositoryFolders()[0].name, u"Work"_s);

        harness.prompts.alertAnswers = {0};
        restarted.removeFolder(folder);
        QCOMPARE(restarted.library().sidebarItems(),
                 (QList<RepositorySidebarItem>{RepositorySidebarItem::repository(a.path()),
                                               RepositorySidebarItem::repository(b.path())}));
    }

    // Pictures are stored once, replace the one before, and survive a restart until removed. A wide
    // one is drawn whole and centred: 256 x 128 between transparent bands of 64.
    void repositoryIcons()
    {
        const GitFixture repository;
        QTemporaryDir pictures;
        const auto pictureFile = [&pictures](const QString &name, const QByteArray &bytes) {
            test::writeFile(pictures.filePath(name), bytes);
            return pictures.filePath(name);
        };
        ModelHarness harness;
        AppModel &model = harness.start();
        QList<bool> answers;
        const auto answer = [&answers](bool taken) { answers.append(taken); };
        model.setRepositoryIcon(repository.path(), pictureFile(u"not.png"_s, "not a picture"), answer);
        model.setRepositoryIcon(repository.path(), pictureFile(u"a.png"_s, test::pngBytes(32, 16, Qt::green)), answer);
        QVERIFY(harness.settle());
        const QString firstFile = harness.modelSettings().repositoryIconFiles().value(repository.path());
        model.setRepositoryIcon(repository.path(), pictureFile(u"b.png"_s, test::pngBytes(1024, 512, Qt::green)),
                                answer);
        QVERIFY(harness.settle());
        QCOMPARE(answers, (QList<bool>{false, true, true}));
        const QStringList files = QDir(harness.iconFolder()).entryList(QDir::Files);
        QCOMPARE(files.size(), 1);
        QVERIFY(files.first() != firstFile);

        AppModel &restarted = harness.start();
        QVERIFY(harness.settle());
        const QImage icon = restarted.icons().icons().value(repository.path());
        QCOMPARE(icon.size(), QSize(256, 256));
        for (const int y : {0, 63, 192, 255})
            QCOMPARE(qAlpha(icon.pixel(128, y)), 0);
        for (const int y : {64, 128, 191})
            QVERIFY(icon.pixelColor(0, y) == QColor(Qt::green) && icon.pixelColor(255, y) == QColor(Qt::green));
        restarted.removeRepositoryIcon(repository.path());
        QCOMPARE(QDir(harness.iconFolder()).entryList(QDir::Files), QStringList());
        QVERIFY(harness.modelSettings().repositoryIconFiles().isEmpty());
    }
};

QTEST_GUILESS_MAIN(AppModelTest)
#include "tst_app_model.moc"
