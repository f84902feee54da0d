#include "FakeTool.h"
#include "ModelHarness.h"
#include "Pictures.h"
#include "RecordPrinting.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::GitFixture;
using test::MercurialFixture;
using test::ModelHarness;

namespace {

Repository repositoryOf(const test::RepositoryFixture &fixture, RepositoryKind kind)
{
    return Repository{fixture.path(), kind};
}

QStringList pathsOf(const QList<WorkingFile> &files)
{
    QStringList paths;
    for (const WorkingFile &file : files)
        paths.append(file.path);
    return paths;
}

} // namespace

class AppModelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void startsQuietlyFromBrokenSettings()
    {
        ModelHarness harness;
        harness.settings().setValue(u"repositories.v1"_s, QByteArray("[{\"path\":"));
        harness.settings().setValue(u"repositorySidebarLayout.v1"_s, u"not data"_s);
        harness.settings().setValue(u"lastSelectedRepository.v1"_s, 42);
        harness.settings().setValue(u"repositoryIconFiles.v1"_s, u"nonsense"_s);
        AppModel &model = harness.start();
        QVERIFY(harness.settle());
        QCOMPARE(model.library().repositories(), QList<Repository>());
        QCOMPARE(model.workspace().selectedRepository(), std::nullopt);
        QCOMPARE(model.activityState().presentedError(), std::nullopt);
        QVERIFY(!model.activityState().isBusy());
        QVERIFY(model.settings().lastSelectedRepository() == std::nullopt);
    }

    void startsWithTheStoredRepositories()
    {
        const MercurialFixture first;
        const GitFixture second;
        second.write(u"changed.txt"_s, "x\n");
        QTemporaryDir gone;
        const QString goneRepository = gone.filePath(u"deleted"_s);
        ModelHarness harness;
        harness.modelSettings().setRepositories({repositoryOf(first, RepositoryKind::mercurial),
                                                 {goneRepository, RepositoryKind::git},
                                                 repositoryOf(second, RepositoryKind::git)});
        // The git repository sits in a folder at the top of the sidebar.
        harness.modelSettings().setSidebarLayout(
            {{RepositorySidebarItem::folder(QUuid(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11)),
              RepositorySidebarItem::repository(first.path())},
             {{QUuid(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11), u"Work"_s, {second.path()}}}});
        harness.modelSettings().setLastSelectedRepository(goneRepository);

        AppModel &model = harness.start();
        QCOMPARE(model.library().repositories(), (QList<Repository>{repositoryOf(first, RepositoryKind::mercurial),
                                                                    repositoryOf(second, RepositoryKind::git)}));
        QCOMPARE(model.workspace().selectedRepository(), std::optional(repositoryOf(second, RepositoryKind::git)));
        QVERIFY(!model.workspace().isSwitchingRepository());
        QVERIFY(model.activityState().isBusy());
        QCOMPARE(model.activityState().activity(), u"Refreshing "_s + QFileInfo(second.path()).fileName());
        QVERIFY(harness.settle());
        QCOMPARE(pathsOf(model.workspace().snapshot().files), QStringList{u"changed.txt"_s});
        QCOMPARE(model.settings().lastSelectedRepository(), std::optional(second.path()));
    }

    // A refresh that arrives after the person moved on is dropped.
    void switchingWhileARefreshRuns()
    {
        const MercurialFixture slow;
        slow.write(u"from-slow.txt"_s, "x\n");
        const GitFixture fast;
        fast.write(u"from-fast.txt"_s, "x\n");
        test::FakeToolBehaviour behaviour;
        behaviour.customBody = "[ \"$2\" = status ] && sleep 1\nexec hg \"$@\"";
        const test::FakeTool slowHg(behaviour);
        const test::ScopedEnvironmentVariable override("HG", slowHg.path().toUtf8());

        ModelHarness harness;
        AppModel &model = harness.start();
        model.adoptRepository(repositoryOf(slow, RepositoryKind::mercurial));
        QVERIFY(model.workspace().isSwitchingRepository());
        model.adoptRepository(repositoryOf(fast, RepositoryKind::git));
        QVERIFY(harness.settle());
        QCOMPARE(pathsOf(model.workspace().snapshot().files), QStringList{u"from-fast.txt"_s});
        QVERIFY(!model.workspace().isSwitchingRepository());
        // The slow repository did load: selecting it again shows its own files.
        model.select(repositoryOf(slow, RepositoryKind::mercurial));
        QVERIFY(harness.settle());
        QCOMPARE(pathsOf(model.workspace().snapshot().files), QStringList{u"from-slow.txt"_s});
    }

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
        QVERIFY(model.activityState().isBusy());
        QCOMPARE(model.activityState().activity(), u"Adding repository"_s);
        QVERIFY(harness.settle());
        QCOMPARE(errors.count(), 1);
        QCOMPARE(model.activityState().presentedError()->title, u"Adding repository"_s);
        QCOMPARE(model.activityState().presentedError()->message,
                 plain.path() + u" is not a Mercurial or Git repository."_s);
        QVERIFY(!model.activityState().isBusy());
        model.dismissError();

        for (int time = 0; time < 2; ++time) {
            harness.prompts.folderAnswers = {repository.filePath(u"src/deep"_s)};
            model.addRepository();
            QVERIFY(harness.settle());
        }
        QCOMPARE(harness.prompts.folders.first().title, u"Choose a Mercurial or Git Repository"_s);
        QCOMPARE(harness.prompts.folders.first().confirmButton, u"Add Repository"_s);
        const Repository added = repositoryOf(repository, RepositoryKind::git);
        QCOMPARE(model.library().repositories(), QList<Repository>{added});
        QCOMPARE(model.workspace().selectedRepository(), std::optional(added));
        QCOMPARE(model.library().sidebarItems(),
                 QList<RepositorySidebarItem>{RepositorySidebarItem::repository(added.path)});
        QCOMPARE(harness.modelSettings().repositories(), QList<Repository>{added});
    }

    void removingRepositories()
    {
        const MercurialFixture first;
        const GitFixture second;
        ModelHarness harness;
        harness.modelSettings().setRepositories(
            {repositoryOf(first, RepositoryKind::mercurial), repositoryOf(second, RepositoryKind::git)});
        AppModel &model = harness.start();
        QVERIFY(harness.settle());
        const Repository selected = repositoryOf(first, RepositoryKind::mercurial);
        QCOMPARE(model.workspace().selectedRepository(), std::optional(selected));

        harness.prompts.alertAnswers = {1};
        model.confirmRemove(selected);
        QCOMPARE(harness.prompts.alerts.last().message,
                 u"Remove “"_s + QFileInfo(first.path()).fileName() + u"” from Tillery?"_s);
        QCOMPARE(harness.prompts.alerts.last().informativeText,
                 u"The repository will only be removed from the app. Files on disk will not be changed."_s);
        QCOMPARE(harness.prompts.alerts.last().buttons, (QStringList{u"Remove"_s, u"Cancel"_s}));
        QCOMPARE(model.library().repositories().size(), 2);

        harness.prompts.alertAnswers = {0};
        model.confirmRemove(selected);
        QCOMPARE(model.library().repositories(), QList<Repository>{repositoryOf(second, RepositoryKind::git)});
        QCOMPARE(model.workspace().selectedRepository(), std::optional(repositoryOf(second, RepositoryKind::git)));
        QVERIFY(model.workspace().isSwitchingRepository());
        QVERIFY(harness.settle());
        QVERIFY(QFileInfo(first.path() + u"/.hg"_s).isDir());

        model.remove(repositoryOf(second, RepositoryKind::git));
        QCOMPARE(model.workspace().selectedRepository(), std::nullopt);
        QVERIFY(!model.workspace().isSwitchingRepository());
        QCOMPARE(harness.modelSettings().repositories(), QList<Repository>());
        QCOMPARE(harness.modelSettings().lastSelectedRepository(), std::nullopt);
    }

    void sidebarFolders()
    {
        const MercurialFixture a;
        const GitFixture b;
        const GitFixture c;
        ModelHarness harness;
        harness.modelSettings().setRepositories({repositoryOf(a, RepositoryKind::mercurial),
                                                 repositoryOf(b, RepositoryKind::git),
                                                 repositoryOf(c, RepositoryKind::git)});
        AppModel &model = harness.start();
        QVERIFY(harness.settle());

        // A new folder goes after the selected repository and is selected.
        model.createFolder();
        QCOMPARE(model.library().sidebarItems().size(), 4);
        QVERIFY(model.library().sidebarItems()[1].isFolder());
        const QUuid folder = model.library().sidebarItems()[1].folderId;
        QCOMPARE(model.library().selectedSidebarFolderID(), std::optional(folder));
        model.moveIntoFolder(c.path(), folder);
        model.moveIntoFolder(b.path(), folder);
        harness.prompts.textAnswers = {u"Work"_s};
        model.renameFolder(folder);
        QCOMPARE(harness.prompts.texts.last().title, u"Rename Folder"_s);
        QCOMPARE(harness.prompts.texts.last().initialText, u"New Folder"_s);

        // With a folder selected, the next one goes after it; given a
        // repository, it goes after that repository's row and takes it in.
        model.createFolder(a.path());
        QCOMPARE(model.library().sidebarItems().size(), 2);
        QVERIFY(model.library().sidebarItems()[0].isFolder() && model.library().sidebarItems()[1].isFolder());

        const RepositorySidebarLayout before = model.library().layout();
        AppModel &restarted = harness.start();
        QVERIFY(harness.settle());
        QCOMPARE(restarted.library().layout(), before);
        QCOMPARE(restarted.library().repositoryFolders()[0].name, u"Work"_s);
        QCOMPARE(restarted.library().repositoryFolders()[0].repositoryPaths, (QStringList{c.path(), b.path()}));
        QCOMPARE(restarted.library().repositoryFolders()[1].repositoryPaths, QStringList{a.path()});

        harness.prompts.alertAnswers = {0};
        restarted.removeFolder(folder);
        QCOMPARE(harness.prompts.alerts.last().message, u"Remove Folder “Work”?"_s);
        QCOMPARE(harness.prompts.alerts.last().informativeText,
                 u"Repositories in this folder will be moved to the main repository list. No files will be changed."_s);
        QCOMPARE(restarted.library().sidebarItems().size(), 3);
        QCOMPARE(restarted.library().sidebarItems()[1], RepositorySidebarItem::repository(c.path()));
        QCOMPARE(restarted.library().sidebarItems()[2], RepositorySidebarItem::repository(b.path()));
        QCOMPARE(restarted.library().repositories().size(), 3);
    }

    // Pictures are read, decoded and stored off the main thread.
    void repositoryIcons()
    {
        const GitFixture repository;
        QTemporaryDir pictures;
        const auto pictureFile = [&pictures](const QString &name, const QByteArray &bytes) {
            QFile file(pictures.filePath(name));
            file.open(QIODevice::WriteOnly);
            file.write(bytes);
            return file.fileName();
        };
        ModelHarness harness;
        AppModel &model = harness.start();
        QList<bool> answers;
        const auto answer = [&answers](bool taken) { answers.append(taken); };
        model.setRepositoryIcon(repository.path(), pictureFile(u"not.png"_s, "not a picture"), answer);
        model.setRepositoryIcon(repository.path(), pictures.filePath(u"missing.png"_s), answer);
        model.setRepositoryIcon(repository.path(), pictures.path(), answer);
        QVERIFY(harness.settle());
        QCOMPARE(answers, (QList<bool>{false, false, false}));
        model.setRepositoryIcon(repository.path(), pictureFile(u"a.png"_s, test::pngBytes(32, 16, Qt::green)), answer);
        QVERIFY(!model.icons().icons().contains(repository.path()));
        QVERIFY(harness.settle());
        const QString firstFile = harness.modelSettings().repositoryIconFiles().value(repository.path());
        model.setRepositoryIcon(repository.path(), pictureFile(u"b.png"_s, test::pngBytes(8, 8, Qt::green)), answer);
        QVERIFY(harness.settle());
        QCOMPARE(answers, (QList<bool>{false, false, false, true, true}));
        const QStringList files = QDir(harness.iconFolder()).entryList(QDir::Files);
        QCOMPARE(files.size(), 1);
        QVERIFY(files.first() != firstFile);
        QCOMPARE(model.icons().icons().value(repository.path()).size(), QSize(256, 256));

        AppModel &restarted = harness.start();
        QVERIFY(harness.settle());
        QCOMPARE(restarted.icons().icons().value(repository.path()).size(), QSize(256, 256));
        restarted.removeRepositoryIcon(repository.path());
        QCOMPARE(QDir(harness.iconFolder()).entryList(QDir::Files), QStringList());
        QVERIFY(restarted.icons().icons().isEmpty());
        QVERIFY(harness.modelSettings().repositoryIconFiles().isEmpty());
    }
};

QTEST_GUILESS_MAIN(AppModelTest)
#include "tst_app_model.moc"
