#include "Pictures.h"
#include "WindowHarness.h"

#include "ui/SidebarModel.h"
#include "ui/SidebarView.h"

#include <QImage>
#include <QMimeData>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::WindowHarness;

class SidebarViewTest : public QObject {
    Q_OBJECT

    // One window over a Mercurial and a Git repository and an empty folder.
    struct Shared {
        test::MercurialFixture harbour;
        test::GitFixture lighthouse;
        WindowHarness harness;
    };
    std::unique_ptr<Shared> m_shared;
    SidebarView *m_view = nullptr;
    SidebarModel *m_sidebar = nullptr;
    QTreeView *m_tree = nullptr;
    QUuid m_folder;

    AppModel &model() { return m_shared->harness.model(); }
    QString harbourPath() const { return QDir::cleanPath(m_shared->harbour.path()); }
    QModelIndex harbour() const { return m_sidebar->indexOfRepository(harbourPath()); }
    QModelIndex lighthouse() const
    {
        return m_sidebar->indexOfRepository(QDir::cleanPath(m_shared->lighthouse.path()));
    }

    // A drag of one sidebar row, dropped on another row (or the section).
    bool dragOnto(const QModelIndex &dragged, const QModelIndex &target)
    {
        const std::unique_ptr<QMimeData> data(m_sidebar->mimeData({dragged}));
        return m_sidebar->canDropMimeData(data.get(), Qt::MoveAction, -1, 0, target)
               && m_sidebar->dropMimeData(data.get(), Qt::MoveAction, -1, 0, target);
    }

private Q_SLOTS:
    void initTestCase()
    {
        test::prepareUiTest();
        m_shared = std::make_unique<Shared>();
        m_shared->harness.open();
        m_shared->harness.addThroughMenu(m_shared->harbour.path());
        m_shared->harness.addThroughMenu(m_shared->lighthouse.path());
        m_view = test::child<SidebarView>(m_shared->harness.window());
        m_sidebar = test::child<SidebarModel>(*m_view);
        m_tree = test::child<QTreeView>(*m_view);
        test::findAction(test::child<QToolButton>(*m_view, u"addRepository"_s)->menu(), u"New Folder"_s)->trigger();
        QCOMPARE(model().library().repositoryFolders().size(), 1);
        m_folder = model().library().repositoryFolders().first().id;
    }

    void cleanupTestCase() { m_shared.reset(); }

    void dragIntoAFolderAndBack()
    {
        QVERIFY(dragOnto(harbour(), m_sidebar->indexOfFolder(m_folder)));
        QCOMPARE(model().library().repositoryFolders().first().repositoryPaths, QStringList({harbourPath()}));
        QCOMPARE(harbour().parent(), m_sidebar->indexOfFolder(m_folder));
        QVERIFY(m_tree->isExpanded(m_sidebar->indexOfFolder(m_folder)));

        QVERIFY(dragOnto(harbour(), m_sidebar->sectionIndex()));
        QCOMPARE(model().library().repositoryFolders().first().repositoryPaths, QStringList());
        QCOMPARE(harbour().parent(), m_sidebar->sectionIndex());
        // The arrangement is kept for the next start.
        QVERIFY(m_shared->harness.models.settings().value(u"repositorySidebarLayout.v1"_s).isValid());
    }

    void dropsOfForeignTextAreRefused_data()
    {
        QTest::addColumn<QString>("payload");
        QTest::newRow("unknown path") << u"/nowhere/at/all"_s;
        QTest::newRow("option-like") << u"--config=alias.x=!touch /tmp/owned"_s;
        QTest::newRow("empty") << QString();
    }

    void dropsOfForeignTextAreRefused()
    {
        QFETCH(QString, payload);
        const RepositorySidebarLayout before = model().library().layout();
        QMimeData data;
        data.setText(payload);
        QVERIFY(!m_sidebar->canDropMimeData(&data, Qt::MoveAction, -1, 0, m_sidebar->sectionIndex()));
        QVERIFY(!m_sidebar->dropMimeData(&data, Qt::MoveAction, -1, 0, m_sidebar->sectionIndex()));
        QVERIFY(model().library().layout() == before);
    }

    void contextMenus()
    {
        const std::unique_ptr<QMenu> rowMenu(m_view->contextMenuFor(lighthouse()));
        const QString folderName = model().library().repositoryFolders().first().name;
        QVERIFY(test::menuItems(rowMenu.get())
                    .contains(u"Move to Folder [Repositories, -, "_s + folderName + u", New Folder]"_s));
        const std::unique_ptr<QMenu> folderMenu(m_view->contextMenuFor(m_sidebar->indexOfFolder(m_folder)));
        QCOMPARE(test::menuItems(folderMenu.get()), QStringList({u"Rename Folder…"_s, u"Remove Folder…"_s}));
        QVERIFY(std::unique_ptr<QMenu>(m_view->contextMenuFor(m_sidebar->sectionIndex()))->isEmpty());
    }

    void clickingAFolderSelectsItWithoutFolding()
    {
        const QModelIndex folder = m_sidebar->indexOfFolder(m_folder);
        const bool expanded = m_tree->isExpanded(folder);
        test::clickRow(m_tree, folder);
        QCOMPARE(model().library().selectedSidebarFolderID(), std::optional(m_folder));
        QCOMPARE(m_tree->isExpanded(folder), expanded);
    }

    // Whatever makes a row current selects its repository; a right click only
    // opens the row's menu.
    void highlightAndSelectionAgree()
    {
        model().moveRepositoryBefore(harbourPath(), lighthouse().row());
        test::clickRow(m_tree, lighthouse());
        QCOMPARE(model().workspace().selectedRepository()->path, QDir::cleanPath(m_shared->lighthouse.path()));
        m_tree->setFocus();
        QTest::keyClick(m_tree, Qt::Key_Up);
        QCOMPARE(m_tree->currentIndex(), harbour());
        QCOMPARE(model().workspace().selectedRepository()->path, harbourPath());

        // Rows are as high as their 20-point icons need.
        QVERIFY2(m_tree->visualRect(harbour()).height() >= 24,
                 qPrintable(QString::number(m_tree->visualRect(harbour()).height())));
        test::clickRow(m_tree, lighthouse(), Qt::RightButton);
        if (QWidget *menu = QApplication::activePopupWidget())
            menu->close();
        QCOMPARE(m_tree->currentIndex(), harbour());
        QCOMPARE(model().workspace().selectedRepository()->path, harbourPath());
        QVERIFY(m_shared->harness.settle());
    }

    void customIconsAreDrawnSmallWithRoundedCorners()
    {
        QVERIFY(!harbour().data(Qt::DecorationRole).value<QIcon>().isNull());
        QTemporaryDir pictures;
        QFile picture(pictures.filePath(u"wide.png"_s));
        QVERIFY(picture.open(QIODevice::WriteOnly) && picture.write(test::pngBytes(300, 120, Qt::blue)) > 0);
        picture.close();
        model().setRepositoryIcon(harbourPath(), picture.fileName());
        QVERIFY(m_shared->harness.settle());
        const QImage drawn = harbour().data(Qt::DecorationRole).value<QIcon>().pixmap(QSize(20, 20)).toImage();
        QCOMPARE(drawn.size(), QSize(20, 20));
        QCOMPARE(qAlpha(drawn.pixel(0, 0)), 0);
        QCOMPARE(drawn.pixelColor(10, 10), QColor(Qt::blue));
    }

    void foldersDroppedFromTheFileManagerAreAdded()
    {
        const test::GitFixture third;
        QTemporaryDir notAFolder;
        const QString file = notAFolder.filePath(u"notes.txt"_s);
        QFile(file).open(QIODevice::WriteOnly);

        QMimeData files;
        files.setUrls({QUrl::fromLocalFile(file), QUrl(u"https://example.com/repo"_s)});
        QVERIFY(!m_sidebar->canDropMimeData(&files, Qt::CopyAction, -1, 0, m_sidebar->sectionIndex()));
        QMimeData folders;
        folders.setUrls({QUrl::fromLocalFile(file), QUrl::fromLocalFile(third.path())});
        QVERIFY(m_sidebar->dropMimeData(&folders, Qt::CopyAction, -1, 0, m_sidebar->sectionIndex()));
        QVERIFY(m_shared->harness.settle());
        QVERIFY(m_sidebar->indexOfRepository(QDir::cleanPath(third.path())).isValid());
        QCOMPARE(model().workspace().selectedRepository()->kind, RepositoryKind::git);
    }

    // Last: it takes a repository out of the shared window.
    void removingFromTheSidebarLeavesTheFiles()
    {
        const std::unique_ptr<QMenu> menu(m_view->contextMenuFor(harbour()));
        m_shared->harness.models.prompts.alertAnswers = {0};
        test::findAction(menu.get(), u"Remove Repository…"_s)->trigger();
        QVERIFY(m_shared->harness.settle());
        QCOMPARE(m_shared->harness.models.prompts.alerts.last().message,
                 u"Remove “"_s + QFileInfo(harbourPath()).fileName() + u"” from Tillery?"_s);
        QVERIFY(!harbour().isValid());
        QVERIFY(QDir(harbourPath() + u"/.hg"_s).exists());
    }
};

QTEST_MAIN(SidebarViewTest)
#include "tst_sidebar_view.moc"
