#include "Checks.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"
#include "WindowHarness.h"

#include "ui/ChangesView.h"
#include "ui/CommitBox.h"

#include <QAction>
#include <QCheckBox>
#include <QFile>
#include <QListView>
#include <QMenu>
#include <QPushButton>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::GitFixture;
using test::MercurialFixture;
using test::RepositoryFixture;
using test::WindowHarness;

namespace {

int rowOf(const QListView *list, const QString &path)
{
    return static_cast<int>(test::listedPaths(list).indexOf(path));
}

// Selects rows in the list as a person does, which selects them in the model.
void selectRows(QListView *list, const QStringList &paths)
{
    QItemSelection selection;
    for (const QString &path : paths) {
        const QModelIndex index = list->model()->index(rowOf(list, path), 0);
        selection.select(index, index);
    }
    list->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

QAction *findItem(const QMenu *menu, const QString &label)
{
    for (QAction *action : menu->actions()) {
        if (action->text() == label)
            return action;
        if (action->menu()) {
            if (QAction *inner = findItem(action->menu(), label))
                return inner;
        }
    }
    return nullptr;
}

QList<Qt::CheckState> checkStates(const QListView *list)
{
    QList<Qt::CheckState> states;
    for (int row = 0; row < list->model()->rowCount(); ++row)
        states.append(static_cast<Qt::CheckState>(list->model()->index(row, 0).data(Qt::CheckStateRole).toInt()));
    return states;
}

} // namespace

class ChangesViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void contextMenuItems_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<QStringList>("selected");
        QTest::addColumn<QString>("clicked");
        QTest::addColumn<QStringList>("expected");

        const auto items = [](const QString &discard, const QString &ignoreFile, const QString &folders,
                              const QString &extension) {
            QStringList list{discard, u"-"_s, u"Ignore File (Add to "_s + ignoreFile + u')'};
            if (!folders.isEmpty())
                list.append(u"Ignore Folder (Add to "_s + ignoreFile + u") ["_s + folders + u']');
            if (!extension.isEmpty())
                list.append(u"Ignore All "_s + extension + u" Files (Add to "_s + ignoreFile + u')');
            list << u"-"_s << u"Copy File Path"_s << u"Copy Relative File Path"_s << u"-"_s
                 << u"Show in File Manager"_s << u"{editor}"_s << u"Open with Default Program"_s;
            return list;
        };
        const QStringList all{u"Makefile"_s, u"archive.tar.gz"_s, u"docs/guide/intro.md"_s};
        QTest::newRow("mercurial, nested file, nothing selected")
            << RepositoryKind::mercurial << QStringList() << u"docs/guide/intro.md"_s
            << items(u"Discard Changes"_s, u".hgignore"_s, u"docs, docs/guide"_s, u".md"_s);
        QTest::newRow("mercurial, three selected")
            << RepositoryKind::mercurial << all << u"archive.tar.gz"_s
            << items(u"Discard 3 Selected Changes"_s, u".hgignore"_s, QString(), u".gz"_s);
        QTest::newRow("git, three selected, no extension")
            << RepositoryKind::git << all << u"Makefile"_s
            << items(u"Discard 3 Selected Changes"_s, u".gitignore"_s, QString(), QString());
        QTest::newRow("git, clicked outside the selection")
            << RepositoryKind::git << QStringList({u"Makefile"_s, u"docs/guide/intro.md"_s}) << u"archive.tar.gz"_s
            << items(u"Discard Changes"_s, u".gitignore"_s, QString(), u".gz"_s);
        QTest::newRow("git, ampersands shown as they are")
            << RepositoryKind::git << QStringList() << u"R&D/plan.a&b"_s
            << items(u"Discard Changes"_s, u".gitignore"_s, u"R&D"_s, u".a&b"_s);
    }

    void contextMenuItems()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(QStringList, selected);
        QFETCH(QString, clicked);
        QFETCH(QStringList, expected);
        const std::unique_ptr<RepositoryFixture> repository = test::makeFixture(kind);
        for (const QString &path : {u"Makefile"_s, u"archive.tar.gz"_s, u"docs/guide/intro.md"_s, u"R&D/plan.a&b"_s})
            repository->write(path, "text\n");

        WindowHarness harness;
        ChangesView &changes = harness.openOn(repository->path());
        selectRows(changes.list(), selected);
        QVERIFY(harness.settle());
        expected.replace(expected.indexOf(u"{editor}"_s), harness.model().editorTitle());
        const std::unique_ptr<QMenu> menu(changes.contextMenuFor(rowOf(changes.list(), clicked)));
        QCOMPARE(test::menuItems(menu.get()), expected);
    }

    void contextMenuCommandsActOnTheClickedFile()
    {
        const GitFixture repository;
        repository.write(u"docs/guide/intro.md"_s, "text\n");
        repository.write(u"notes.txt"_s, "text\n");

        WindowHarness harness;
        ChangesView &changes = harness.openOn(repository.path());
        const std::unique_ptr<QMenu> menu(changes.contextMenuFor(rowOf(changes.list(), u"docs/guide/intro.md"_s)));
        findItem(menu.get(), u"Copy File Path"_s)->trigger();
        findItem(menu.get(), u"Copy Relative File Path"_s)->trigger();
        QCOMPARE(harness.models.desktop.clipboard,
                 QStringList({repository.path() + u"/docs/guide/intro.md"_s, u"docs/guide/intro.md"_s}));

        findItem(menu.get(), u"docs"_s)->trigger();
        QVERIFY(harness.settle());
        QCOMPARE(test::readFile(repository.filePath(u".gitignore"_s)), QByteArray("docs/\n"));
        QCOMPARE(test::listedPaths(changes.list()), QStringList({u".gitignore"_s, u"notes.txt"_s}));
    }

    void discardAsksFirst_data()
    {
        test::addKindColumn();
    }

    void discardAsksFirst()
    {
        QFETCH(RepositoryKind, kind);
        const std::unique_ptr<RepositoryFixture> repository = test::makeFixture(kind);
        repository->write(u"chart.txt"_s, "harbour\n");
        repository->commitAll(u"Start"_s);
        repository->write(u"chart.txt"_s, "harbour\nbuoy\n");
        repository->write(u"scratch.txt"_s, "draft\n");

        WindowHarness harness;
        ChangesView &changes = harness.openOn(repository->path());
        selectRows(changes.list(), {u"chart.txt"_s, u"scratch.txt"_s});
        const std::unique_ptr<QMenu> menu(changes.contextMenuFor(rowOf(changes.list(), u"chart.txt"_s)));
        QAction *discard = findItem(menu.get(), u"Discard 2 Selected Changes"_s);
        QVERIFY(discard);

        harness.models.prompts.alertAnswers = {1};
        discard->trigger();
        QVERIFY(harness.settle());
        QCOMPARE(harness.models.prompts.alerts.size(), 1);
        QCOMPARE(harness.models.prompts.alerts.first().message, u"Discard changes to 2 selected files?"_s);
        QCOMPARE(test::readFile(repository->filePath(u"chart.txt"_s)), QByteArray("harbour\nbuoy\n"));
        QCOMPARE(test::listedPaths(changes.list()).size(), 2);

        harness.models.prompts.alertAnswers = {0};
        discard->trigger();
        QVERIFY(harness.settle());
        QCOMPARE(test::readFile(repository->filePath(u"chart.txt"_s)), QByteArray("harbour\n"));
        QVERIFY(!QFile::exists(repository->filePath(u"scratch.txt"_s)));
        QCOMPARE(harness.models.desktop.trashed, QStringList({repository->filePath(u"scratch.txt"_s)}));
        QCOMPARE(changes.state(), ChangesView::State::clean);
    }

    // The row whose diff shows is the current one, after a restart too, and
    // Space ticks it.
    void shownDiffAndCurrentRowAgree()
    {
        const MercurialFixture repository;
        for (const char *name : {"a.txt", "b.txt", "c.txt"})
            repository.write(QString::fromLatin1(name), "x\n");
        WindowHarness harness;
        selectRows(harness.openOn(repository.path()).list(), {u"b.txt"_s});
        QVERIFY(harness.settle());
        harness.close();
        harness.open();
        QListView *list = harness.changes().list();
        QTRY_VERIFY(harness.model().diffSelection().diff().text.contains(u"b.txt"_s));
        QCOMPARE(list->currentIndex().row(), 1);
        QCOMPARE(list->selectionModel()->selectedRows().size(), 1);
        QCOMPARE(list->selectionModel()->selectedRows().first().row(), 1);

        list->setFocus();
        QTest::keyClick(list, Qt::Key_Space);
        QCOMPARE(checkStates(list), (QList<Qt::CheckState>{Qt::Unchecked, Qt::Checked, Qt::Unchecked}));
        QTest::keyClick(list, Qt::Key_Down);
        QTRY_VERIFY(harness.model().diffSelection().diff().text.contains(u"c.txt"_s));
        QTest::keyClick(list, Qt::Key_Space);
        QCOMPARE(checkStates(list), (QList<Qt::CheckState>{Qt::Unchecked, Qt::Checked, Qt::Checked}));
    }

    void selectAllAndStaleTicks()
    {
        const MercurialFixture repository;
        repository.write(u"a.txt"_s, "a\n");
        repository.write(u"b.txt"_s, "b\n");
        repository.write(u"c.txt"_s, "c\n");

        WindowHarness harness;
        ChangesView &changes = harness.openOn(repository.path());
        QPushButton *commit = changes.commitBox()->commitButton();
        QVERIFY(!changes.selectAll()->isChecked());

        changes.selectAll()->click();
        QCOMPARE(checkStates(changes.list()), QList<Qt::CheckState>(3, Qt::Checked));
        QCOMPARE(commit->text(), u"Commit 3 Files"_s);

        test::clickCheckBox(changes.list(), 0);
        QVERIFY(!changes.selectAll()->isChecked());
        QCOMPARE(commit->text(), u"Commit 2 Files"_s);
        test::clickCheckBox(changes.list(), 0);
        QVERIFY(changes.selectAll()->isChecked());

        changes.selectAll()->click();
        QCOMPARE(checkStates(changes.list()), QList<Qt::CheckState>(3, Qt::Unchecked));
        QCOMPARE(commit->text(), u"Commit 0 Files"_s);

        // A ticked file that leaves the working copy no longer counts.
        test::clickCheckBox(changes.list(), 0);
        test::clickCheckBox(changes.list(), 2);
        repository.removeFromDisk(u"c.txt"_s);
        harness.model().refresh();
        QVERIFY(harness.settle());
        QCOMPARE(test::listedPaths(changes.list()), QStringList({u"a.txt"_s, u"b.txt"_s}));
        QCOMPARE(commit->text(), u"Commit 1 File"_s);
    }
};

QTEST_MAIN(ChangesViewTest)
#include "tst_changes_view.moc"
