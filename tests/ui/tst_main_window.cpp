#include "RepositoryFixtures.h"
#include "TestEnvironment.h"
#include "WindowHarness.h"

#include "Checks.h"
#include "ui/ChangesView.h"
#include "ui/DesktopServices.h"
#include "ui/SidebarView.h"
#include "ui/CommitBox.h"
#include "ui/RepositoryWorkspace.h"
#include "ui/CloneSheet.h"
#include "ui/CreateBookmarkSheet.h"
#include "ui/WelcomeView.h"
#include "ui/WorkspaceTabHeader.h"

#include <QAction>
#include <QApplication>
#include <QTimer>
#include <QTreeView>
#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QLineEdit>
#include <QLabel>
#include <QListView>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTextDocument>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::GitFixture;
using test::MercurialFixture;
using test::RepositoryFixture;
using test::WindowHarness;

namespace {

QList<QAction *> itemsOfMenu(MainWindow &window, const QString &title)
{
    QList<QAction *> items;
    for (QAction *menu : window.menuBar()->actions()) {
        if (menu->text() == title) {
            for (QAction *item : menu->menu()->actions()) {
                if (!item->isSeparator())
                    items.append(item);
            }
        }
    }
    return items;
}

QString lastCommitMessage(const RepositoryFixture &fixture, RepositoryKind kind)
{
    if (kind == RepositoryKind::git)
        return QString::fromUtf8(test::runTool(u"git"_s, {u"log"_s, u"-1"_s, u"--format=%B"_s}, fixture.path())).trimmed();
    return QString::fromUtf8(test::runTool(u"hg"_s, {u"log"_s, u"-l"_s, u"1"_s, u"-T"_s, u"{desc}"_s}, fixture.path()));
}

// The visible labels holding the text that would draw it as markup.
QStringList labelsReadingMarkup(QWidget &top, const QString &text)
{
    QStringList found;
    for (const QLabel *label : top.findChildren<QLabel *>()) {
        const bool markup = label->textFormat() == Qt::RichText
                            || (label->textFormat() == Qt::AutoText && Qt::mightBeRichText(label->text()));
        if (label->isVisibleTo(&top) && markup && label->text().contains(text))
            found.append(label->text());
    }
    return found;
}

// A tooltip's text as drawn: Qt reads it as HTML when it looks like HTML.
QString shownToolTip(const QString &tip)
{
    if (!Qt::mightBeRichText(tip))
        return tip;
    QTextDocument document;
    document.setHtml(tip);
    return document.toPlainText();
}

} // namespace

class MainWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void startPageWithRepositoryCommandsDisabled()
    {
        WindowHarness harness;
        MainWindow &window = harness.open();
        QVERIFY(window.welcome()->isVisible());
        QVERIFY(!window.workspace()->isVisible());
        QCOMPARE(window.minimumSize(), QSize(940, 620));
        for (const QString &menu : {u"Repository"_s, u"Branch"_s}) {
            const QList<QAction *> items = itemsOfMenu(window, menu);
            QVERIFY(!items.isEmpty());
            for (const QAction *item : items)
                QVERIFY2(!item->isEnabled(), qPrintable(item->text()));
        }
        for (const QAction *item : itemsOfMenu(window, u"File"_s))
            QVERIFY2(item->isEnabled(), qPrintable(item->text()));
        // Quitting is in the application's own menu, with the platform's key.
        const QList<QAction *> application = itemsOfMenu(window, u"Tillery"_s);
        QCOMPARE(application.last()->text(), u"Quit Tillery"_s);
        QCOMPARE(application.last()->shortcut(), QKeySequence(QKeySequence::Quit));
    }

    void addTickAndCommitWithTheShortcut_data()
    {
        test::addKindColumn();
    }

    void addTickAndCommitWithTheShortcut()
    {
        QFETCH(RepositoryKind, kind);
        const std::unique_ptr<RepositoryFixture> repository = test::makeFixture(kind);
        repository->write(u"chart.txt"_s, "harbour\n");
        repository->commitAll(u"Start"_s);
        repository->write(u"chart.txt"_s, "harbour\nbuoy\n");
        repository->write(u"tides.txt"_s, "high at six\n");

        WindowHarness harness;
        MainWindow &window = harness.open();
        harness.addThroughMenu(repository->path());
        QVERIFY(window.workspace()->isVisible());
        ChangesView &changes = harness.changes();
        QCOMPARE(changes.state(), ChangesView::State::list);
        QCOMPARE(test::listedPaths(changes.list()), QStringList({u"chart.txt"_s, u"tides.txt"_s}));
        TabButton *changesTab = window.workspace()->tabHeader()->changesButton();
        QCOMPARE(changesTab->badge(), 2);
        QCOMPARE(changesTab->accessibleName(), u"Changes, 2"_s);

        CommitBox *box = changes.commitBox();
        QCOMPARE(box->commitButton()->text(), u"Commit 0 Files"_s);
        test::clickCheckBox(changes.list(), 1);
        QCOMPARE(box->commitButton()->text(), u"Commit 1 File"_s);
        QVERIFY(!box->commitButton()->isEnabled());
        // Ticking a box leaves the list's own selection alone.
        QVERIFY(changes.list()->selectionModel()->selectedIndexes().isEmpty());

        QTest::keyClicks(box->summary(), u"   "_s);
        QVERIFY(!box->commitButton()->isEnabled());
        box->summary()->clear();
        QTest::keyClicks(box->summary(), u"Add the tide table"_s);
        QVERIFY(box->commitButton()->isEnabled());
        QTest::keyClick(box->summary(), Qt::Key_Return, Qt::ControlModifier);
        QVERIFY(harness.settle());

        QCOMPARE(harness.model().activityState().presentedError(), std::nullopt);
        QCOMPARE(lastCommitMessage(*repository, kind), u"Add the tide table"_s);
        QCOMPARE(test::listedPaths(changes.list()), QStringList({u"chart.txt"_s}));
        QCOMPARE(box->summary()->text(), QString());
        QCOMPARE(box->commitButton()->text(), u"Commit 0 Files"_s);
        QCOMPARE(changesTab->accessibleName(), u"Changes, 1"_s);

        // The last file, committed from the file list with the same shortcut.
        changes.selectAll()->click();
        QTest::keyClicks(box->summary(), u"Note the buoy"_s);
        changes.list()->setFocus();
        QTest::keyClick(changes.list(), Qt::Key_Return, Qt::ControlModifier);
        QVERIFY(harness.settle());
        QCOMPARE(lastCommitMessage(*repository, kind), u"Note the buoy"_s);
        QCOMPARE(changes.state(), ChangesView::State::clean);
        QCOMPARE(changesTab->badge(), 0);
        QCOMPARE(changesTab->accessibleName(), u"Changes"_s);
    }

    // Keys that edit text reach a focused text field before any menu item
    // (Ctrl+Backspace is also Remove Repository); elsewhere the item has them.
    void textFieldsKeepTheirEditingKeys()
    {
        const GitFixture repository;
        repository.write(u"chart.txt"_s, "harbour\n");
        WindowHarness harness;
        MainWindow &window = harness.open();
        harness.addThroughMenu(repository.path());
        QLineEdit *summary = harness.changes().commitBox()->summary();
        summary->setFocus();
        QTest::keyClicks(summary, u"Add the tide table"_s);
        QTest::keyClick(summary, Qt::Key_Backspace, Qt::ControlModifier);
        QCOMPARE(summary->text(), u"Add the tide "_s);
        QTest::keyClick(summary, Qt::Key_Left, Qt::ControlModifier);
        QCOMPARE(summary->cursorPosition(), 8);
        QTest::keyClick(summary, Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(summary->selectedText(), u"Add the tide "_s);
        QVERIFY(harness.models.prompts.alerts.isEmpty());

        window.sidebar()->tree()->setFocus();
        QTest::keyClick(window.sidebar()->tree(), Qt::Key_Backspace, Qt::ControlModifier);
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

    void branchMenuFollowsTheRepository_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<bool>("activeBookmark");
        QTest::addColumn<QString>("updateLabel");
        QTest::newRow("mercurial without a bookmark") << RepositoryKind::mercurial << false << u"Update from default"_s;
        QTest::newRow("mercurial with a bookmark") << RepositoryKind::mercurial << true << u"Update from default"_s;
        QTest::newRow("git on a branch") << RepositoryKind::git << true << u"Update from main"_s;
    }

    void branchMenuFollowsTheRepository()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(bool, activeBookmark);
        QFETCH(QString, updateLabel);
        const std::unique_ptr<RepositoryFixture> repository = test::makeFixture(kind);
        repository->write(u"a.txt"_s, "a\n");
        repository->commitAll(u"Start"_s);
        if (activeBookmark && kind == RepositoryKind::mercurial)
            static_cast<MercurialFixture &>(*repository).bookmark(u"feature"_s);

        WindowHarness harness;
        MainWindow &window = harness.open();
        harness.addThroughMenu(repository->path());
        QAction *update = window.menuAction(updateLabel);
        QVERIFY2(update, qPrintable(updateLabel));
        QVERIFY(update->isEnabled());
        QCOMPARE(window.menuAction(u"Rename…"_s)->isEnabled(), activeBookmark);
        QCOMPARE(window.menuAction(u"Delete…"_s)->isEnabled(), activeBookmark);
        for (const QString &label : {u"Push"_s, u"Refresh"_s, u"Remove Repository…"_s, u"Stash All Changes"_s})
            QVERIFY2(window.menuAction(label)->isEnabled(), qPrintable(label));
    }

    void cloneAndBranchThroughTheSheets()
    {
        GitFixture origin;
        origin.write(u"chart.txt"_s, "harbour\n");
        origin.commitAll(u"Start"_s);
        QTemporaryDir destination;

        WindowHarness harness;
        MainWindow &window = harness.open();
        window.menuAction(u"Clone Repository…"_s)->trigger();
        auto *clone = qobject_cast<CloneSheet *>(window.sheet(Workspace::Sheet::clone));
        QVERIFY(clone);
        QTRY_VERIFY(clone->isVisible());
        clone->source()->setText(origin.path() + u"/"_s);
        clone->parentFolder()->setText(destination.path());
        QCOMPARE(clone->name()->text(), QFileInfo(origin.path()).fileName());
        QCOMPARE(clone->kind()->currentText(), u"Git"_s);
        clone->name()->setText(u"harbour copy"_s);
        QVERIFY(clone->cloneButton()->isEnabled());
        clone->cloneButton()->click();
        QVERIFY(harness.settle());
        QTRY_VERIFY(!window.sheet(Workspace::Sheet::clone));
        QCOMPARE(harness.model().activityState().presentedError(), std::nullopt);
        const QString cloned = destination.filePath(u"harbour copy"_s);
        QCOMPARE(test::readFile(cloned + u"/chart.txt"_s), QByteArray("harbour\n"));
        QCOMPARE(harness.model().workspace().selectedRepository()->path, cloned);

        window.menuAction(u"New Branch…"_s)->trigger();
        auto *branch = qobject_cast<CreateBookmarkSheet *>(window.sheet(Workspace::Sheet::bookmark));
        QVERIFY(branch);
        branch->name()->setText(u"--force"_s);
        QVERIFY(!branch->createButton()->isEnabled());
        branch->name()->setText(u"feature/lights"_s);
        QVERIFY(branch->createButton()->isEnabled());
        branch->createButton()->click();
        QVERIFY(harness.settle());
        QCOMPARE(harness.model().activityState().presentedError(), std::nullopt);
        QCOMPARE(QString::fromUtf8(test::runTool(u"git"_s, {u"branch"_s, u"--show-current"_s}, cloned)).trimmed(),
                 u"feature/lights"_s);
    }

    void errorAlertShowsTheNewestErrorAndDismisses()
    {
        WindowHarness harness;
        MainWindow &window = harness.open();
        harness.model().presentError(u"Pushing changes"_s, u"abort: no remote"_s);
        QMessageBox *alert = window.errorAlert();
        QVERIFY(alert);
        QTRY_VERIFY(alert->isVisible());
        QCOMPARE(alert->text(), u"Pushing changes"_s);
        QCOMPARE(alert->informativeText(), u"abort: no remote"_s);
        QCOMPARE(alert->buttons().size(), 1);

        harness.model().presentError(u"Pulling changes"_s, u"abort: repository not found"_s);
        QCOMPARE(window.errorAlert(), alert);
        QCOMPARE(alert->text(), u"Pulling changes"_s);
        QCOMPARE(alert->informativeText(), u"abort: repository not found"_s);

        alert->button(QMessageBox::Ok)->click();
        QCOMPARE(harness.model().activityState().presentedError(), std::nullopt);
        QTRY_VERIFY(!window.errorAlert());
    }

    // Names and tool output that look like markup or carry "&" are shown exactly as they are.
    void namesShowAsTheyAre()
    {
        const GitFixture repository;
        repository.write(u"chart.txt"_s, "harbour\n");
        repository.commitAll(u"Start"_s);
        const QString hostile = u"<b>bold & brave.txt"_s;
        repository.write(hostile, "text\n");

        WindowHarness harness;
        MainWindow &window = harness.open();
        harness.addThroughMenu(repository.path());
        QVERIFY(harness.settle());
        AppModel &model = harness.model();
        const auto file = std::find_if(model.workspace().snapshot().files.cbegin(),
                                       model.workspace().snapshot().files.cend(),
                                       [&](const WorkingFile &candidate) { return candidate.path == hostile; });
        QVERIFY(file != model.workspace().snapshot().files.cend());
        model.selectChangeFiles({*file});
        QVERIFY(harness.settle());
        QStringList markup = labelsReadingMarkup(window, u"<b>bold"_s);

        const QAbstractItemModel *files = harness.changes().list()->model();
        const QString tip = files->index(0, 0).data(Qt::ToolTipRole).toString();
        QCOMPARE(shownToolTip(tip), hostile);
        QCOMPARE(files->index(0, 0).data(Qt::DisplayRole).toString(), hostile);

        model.presentError(u"Discarding “"_s + hostile + u'”', u"error: <b>bold & brave.txt: no such file"_s);
        QMessageBox *alert = window.errorAlert();
        QVERIFY(alert);
        QTRY_VERIFY(alert->isVisible());
        markup += labelsReadingMarkup(*alert, u"<b>bold"_s);
        QVERIFY2(markup.isEmpty(), qPrintable(markup.join(u'\n')));
        alert->button(QMessageBox::Ok)->click();
    }
};

QTEST_MAIN(MainWindowTest)
#include "tst_main_window.moc"
