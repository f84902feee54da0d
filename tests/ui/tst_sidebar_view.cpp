#include "Pictures.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"
#include "WindowHarness.h"

#include "ui/SidebarModel.h"
#include "ui/SidebarView.h"

#include <QAction>
#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QMenu>
#include <QMimeData>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::GitFixture;
using test::MercurialFixture;
using test::WindowHarness;

namespace {

// A drag of one sidebar row, dropped on another row (or the section).
bool dragOnto(SidebarModel &sidebar, const QModelIndex &dragged, const QModelIndex &target)
{
    const std::unique_ptr<QMimeData> data(sidebar.mimeData({dragged}));
    if (!sidebar.canDropMimeData(data.get(), Qt::MoveAction, -1, 0, target))
        return false;
    return sidebar.dropMimeData(data.get(), Qt::MoveAction, -1, 0, target);
}

QStringList topLevelNames(const SidebarModel &sidebar)
{
    QStringList names;
    const QModelIndex section = sidebar.sectionIndex();
    for (int row = 0; row < sidebar.rowCount(section); ++row)
        names.append(sidebar.index(row, 0, section).data().toString());
    return names;
}

struct TwoRepositories {
    TwoRepositories()
    {
        harness.open();
        harness.addThroughMenu(harbour.path());
        harness.addThroughMenu(lighthouse.path());
    }
    SidebarModel &sidebar() { return *harness.window().sidebar()->sidebarModel(); }
    QString harbourName() const { return QFileInfo(harbour.path()).fileName(); }
    QString lighthouseName() const { return QFileInfo(lighthouse.path()).fileName(); }

    MercurialFixture harbour;
    GitFixture lighthouse;
    WindowHarness harness;
};

} // namespace

class SidebarViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void dragIntoAFolderAndBack()
    {
        TwoRepositories fixture;
        SidebarModel &sidebar = fixture.sidebar();
        fixture.harness.window().sidebar()->addButton()->menu()->actions().at(4)->trigger();
        QCOMPARE(fixture.harness.model().library().repositoryFolders().size(), 1);
        const RepositoryFolder folder = fixture.harness.model().library().repositoryFolders().first();
        const QString harbour = QDir::cleanPath(fixture.harbour.path());

        QVERIFY(dragOnto(sidebar, sidebar.indexOfRepository(harbour), sidebar.indexOfFolder(folder.id)));
        QCOMPARE(fixture.harness.model().library().repositoryFolders().first().repositoryPaths, QStringList({harbour}));
        QCOMPARE(sidebar.indexOfRepository(harbour).parent(), sidebar.indexOfFolder(folder.id));
        QVERIFY(!topLevelNames(sidebar).contains(fixture.harbourName()));
        QVERIFY(fixture.harness.window().sidebar()->tree()->isExpanded(sidebar.indexOfFolder(folder.id)));

        QVERIFY(dragOnto(sidebar, sidebar.indexOfRepository(harbour), sidebar.sectionIndex()));
        QCOMPARE(fixture.harness.model().library().repositoryFolders().first().repositoryPaths, QStringList());
        QCOMPARE(sidebar.indexOfRepository(harbour).parent(), sidebar.sectionIndex());
        // The arrangement is kept for the next start.
        QVERIFY(fixture.harness.models.settings().value(u"repositorySidebarLayout.v1"_s).isValid());
    }

    void dropsOfForeignTextAreRefused_data()
    {
        QTest::addColumn<QByteArray>("payload");
        QTest::newRow("unknown path") << QByteArray("/nowhere/at/all");
        QTest::newRow("option-like") << QByteArray("--config=alias.x=!touch /tmp/owned");
        QTest::newRow("empty") << QByteArray();
    }

    void dropsOfForeignTextAreRefused()
    {
        QFETCH(QByteArray, payload);
        TwoRepositories fixture;
        SidebarModel &sidebar = fixture.sidebar();
        const RepositorySidebarLayout before = fixture.harness.model().library().layout();
        QMimeData data;
        data.setText(QString::fromUtf8(payload));
        QVERIFY(!sidebar.canDropMimeData(&data, Qt::MoveAction, -1, 0, sidebar.sectionIndex()));
        QVERIFY(!sidebar.dropMimeData(&data, Qt::MoveAction, -1, 0, sidebar.sectionIndex()));
        QVERIFY(fixture.harness.model().library().layout() == before);
    }

    void foldersDroppedFromTheFileManagerAreAdded()
    {
        TwoRepositories fixture;
        SidebarModel &sidebar = fixture.sidebar();
        const GitFixture third;
        QTemporaryDir notAFolder;
        const QString file = notAFolder.filePath(u"notes.txt"_s);
        QFile(file).open(QIODevice::WriteOnly);

        QMimeData files;
        files.setUrls({QUrl::fromLocalFile(file), QUrl(u"https://example.com/repo"_s)});
        QVERIFY(!sidebar.canDropMimeData(&files, Qt::CopyAction, -1, 0, sidebar.sectionIndex()));

        QMimeData folders;
        folders.setUrls({QUrl::fromLocalFile(file), QUrl::fromLocalFile(third.path())});
        QVERIFY(sidebar.dropMimeData(&folders, Qt::CopyAction, -1, 0, sidebar.sectionIndex()));
        QVERIFY(fixture.harness.settle());
        QVERIFY(sidebar.indexOfRepository(QDir::cleanPath(third.path())).isValid());
        QCOMPARE(fixture.harness.model().workspace().selectedRepository()->kind, RepositoryKind::git);
    }

    void contextMenus()
    {
        TwoRepositories fixture;
        SidebarView &view = *fixture.harness.window().sidebar();
        SidebarModel &sidebar = fixture.sidebar();
        view.addButton()->menu()->actions().at(4)->trigger();
        const RepositoryFolder folder = fixture.harness.model().library().repositoryFolders().first();

        const QModelIndex row = sidebar.indexOfRepository(QDir::cleanPath(fixture.lighthouse.path()));
        const std::unique_ptr<QMenu> rowMenu(view.contextMenuFor(row));
        QCOMPARE(test::menuItems(rowMenu.get()),
                 QStringList({u"Show in File Manager"_s, u"Open in Terminal"_s, fixture.harness.model().editorTitle(),
                              u"Move to Folder [Repositories, -, "_s + folder.name + u", New Folder]"_s, u"-"_s,
                              u"Remove Repository…"_s}));
        const std::unique_ptr<QMenu> folderMenu(view.contextMenuFor(sidebar.indexOfFolder(folder.id)));
        QCOMPARE(test::menuItems(folderMenu.get()), QStringList({u"Rename Folder…"_s, u"Remove Folder…"_s}));
        const std::unique_ptr<QMenu> sectionMenu(view.contextMenuFor(sidebar.sectionIndex()));
        QVERIFY(sectionMenu->isEmpty());
        QCOMPARE(test::menuItems(view.addButton()->menu()),
                 QStringList({u"Add Existing Repository…"_s, u"Create New Repository…"_s, u"Clone Repository…"_s,
                              u"-"_s, u"New Folder"_s, u"Sort Sidebar by Name"_s}));
    }

    void removingFromTheSidebarLeavesTheFiles()
    {
        TwoRepositories fixture;
        SidebarView &view = *fixture.harness.window().sidebar();
        const QString path = QDir::cleanPath(fixture.harbour.path());
        const std::unique_ptr<QMenu> menu(view.contextMenuFor(fixture.sidebar().indexOfRepository(path)));
        fixture.harness.models.prompts.alertAnswers = {0};
        menu->actions().last()->trigger();
        QVERIFY(fixture.harness.settle());
        QCOMPARE(fixture.harness.models.prompts.alerts.last().message,
                 u"Remove “"_s + fixture.harbourName() + u"” from Tillery?"_s);
        QVERIFY(!fixture.sidebar().indexOfRepository(path).isValid());
        QCOMPARE(topLevelNames(fixture.sidebar()), QStringList({fixture.lighthouseName()}));
        QVERIFY(QDir(path + u"/.hg"_s).exists());
    }

    void clickingAFolderSelectsItWithoutFolding()
    {
        TwoRepositories fixture;
        SidebarView &view = *fixture.harness.window().sidebar();
        view.addButton()->menu()->actions().at(4)->trigger();
        const QUuid folder = fixture.harness.model().library().repositoryFolders().first().id;
        fixture.harness.model().selectSidebarFolder(std::nullopt);
        const QModelIndex index = fixture.sidebar().indexOfFolder(folder);
        const bool expanded = view.tree()->isExpanded(index);
        const QRect rect = view.tree()->visualRect(index);
        QTest::mouseClick(view.tree()->viewport(), Qt::LeftButton, {}, rect.center());
        QCOMPARE(fixture.harness.model().library().selectedSidebarFolderID(), std::optional(folder));
        QCOMPARE(view.tree()->isExpanded(index), expanded);
    }

    // Whatever makes a row current selects its repository; a right click only
    // opens the row's menu.
    void highlightAndSelectionAgree()
    {
        TwoRepositories fixture;
        AppModel &model = fixture.harness.model();
        QTreeView *tree = fixture.harness.window().sidebar()->tree();
        const QModelIndex harbour = fixture.sidebar().indexOfRepository(QDir::cleanPath(fixture.harbour.path()));
        const QModelIndex lighthouse = fixture.sidebar().indexOfRepository(QDir::cleanPath(fixture.lighthouse.path()));
        QCOMPARE(tree->currentIndex(), lighthouse);

        tree->setFocus();
        QTest::keyClick(tree, Qt::Key_Up);
        QCOMPARE(tree->currentIndex(), harbour);
        QCOMPARE(model.workspace().selectedRepository()->path, QDir::cleanPath(fixture.harbour.path()));

        // Rows are as high as their 20-point icons need (the heading row set
        // the height of every row once).
        QVERIFY2(tree->visualRect(harbour).height() >= 24, qPrintable(QString::number(tree->visualRect(harbour).height())));
        QTest::mouseClick(tree->viewport(), Qt::RightButton, {}, tree->visualRect(lighthouse).center());
        if (QWidget *menu = QApplication::activePopupWidget())
            menu->close();
        QCOMPARE(tree->currentIndex(), harbour);
        QCOMPARE(model.workspace().selectedRepository()->path, QDir::cleanPath(fixture.harbour.path()));
        QVERIFY(fixture.harness.settle());
    }

    void customIconsAreDrawnSmallWithRoundedCorners()
    {
        TwoRepositories fixture;
        const QString path = QDir::cleanPath(fixture.harbour.path());
        const QModelIndex before = fixture.sidebar().indexOfRepository(path);
        const QIcon kindIcon = before.data(Qt::DecorationRole).value<QIcon>();
        QVERIFY(!kindIcon.isNull());

        QTemporaryDir pictures;
        QFile picture(pictures.filePath(u"wide.png"_s));
        QVERIFY(picture.open(QIODevice::WriteOnly) && picture.write(test::pngBytes(300, 120, Qt::blue)) > 0);
        picture.close();
        fixture.harness.model().setRepositoryIcon(path, picture.fileName());
        QVERIFY(fixture.harness.settle());
        const QIcon custom = fixture.sidebar().indexOfRepository(path).data(Qt::DecorationRole).value<QIcon>();
        const QImage drawn = custom.pixmap(QSize(20, 20)).toImage();
        QCOMPARE(drawn.size(), QSize(20, 20));
        QCOMPARE(qAlpha(drawn.pixel(0, 0)), 0);
        QCOMPARE(drawn.pixelColor(10, 10), QColor(Qt::blue));
    }
};

QTEST_MAIN(SidebarViewTest)
#include "tst_sidebar_view.moc"
