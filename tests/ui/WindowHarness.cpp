#include "WindowHarness.h"

#include "ui/ChangedFileDelegate.h"
#include "ui/Translations.h"

#include <QAbstractItemModelTester>
#include <QMenuBar>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace tillery::test {

void prepareUiTest()
{
    pinTestEnvironment();
    QStandardPaths::setTestModeEnabled(true);
    // The Trash lives there; Qt does not make the folder.
    QDir().mkpath(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
}

WindowHarness::~WindowHarness()
{
    // Work still running reports to a model that is about to go.
    if (m_window)
        models.settle();
    m_window.reset();
}

void WindowHarness::close()
{
    models.settle();
    m_window.reset();
    models.stop();
}

MainWindow &WindowHarness::open()
{
    installTranslations();
    AppModel &model = models.start();
    m_viewSettings = std::make_unique<ViewSettings>(models.settings());
    m_window = std::make_unique<MainWindow>(model, *m_viewSettings);
    for (QAbstractItemModel *items : m_window->findChildren<QAbstractItemModel *>()) {
        if (QByteArray(items->metaObject()->className()).startsWith("tillery::"))
            new QAbstractItemModelTester(items, QAbstractItemModelTester::FailureReportingMode::QtTest, items);
    }
    m_window->show();
    m_window->activateWindow();
    if (!QTest::qWaitForWindowActive(m_window.get()))
        qWarning("The main window did not become active");
    models.settle();
    return *m_window;
}

void WindowHarness::addThroughMenu(const QString &folder)
{
    models.prompts.folderAnswers.append(folder);
    menuAction(*m_window, u"Add Local Repository…"_s)->trigger();
    models.settle();
}

ChangesView &WindowHarness::openOn(const QString &repositoryPath)
{
    open();
    addThroughMenu(repositoryPath);
    return changes();
}

std::unique_ptr<RepositoryFixture> chartRepository(RepositoryKind kind)
{
    std::unique_ptr<RepositoryFixture> repository = makeFixture(kind);
    repository->write(u"chart.txt"_s, "harbour\n");
    repository->commitAll(u"Chart the harbour"_s);
    return repository;
}

namespace {

QAction *itemIn(const QMenu *menu, const QString &label)
{
    for (QAction *action : menu->actions()) {
        if (shownLabel(action->text()) == label && !action->isSeparator())
            return action;
        if (QAction *inner = action->menu() ? itemIn(action->menu(), label) : nullptr)
            return inner;
    }
    return nullptr;
}

// A missing item fails the test; the test goes on with an item that does nothing.
QAction *orMissing(QAction *item, const QString &label)
{
    static QAction nothing;
    if (!item)
        QTest::qFail(qPrintable(u"No menu item \"%1\""_s.arg(label)), __FILE__, __LINE__);
    return item ? item : &nothing;
}

} // namespace

QAction *menuAction(const QMainWindow &window, const QString &label)
{
    QAction *item = nullptr;
    for (const QAction *menu : window.menuBar()->actions())
        item = item || !menu->menu() ? item : itemIn(menu->menu(), label);
    return orMissing(item, label);
}

QAction *findAction(const QMenu *menu, const QString &label)
{
    return orMissing(itemIn(menu, label), label);
}

void clickRow(QAbstractItemView *view, const QModelIndex &index, Qt::MouseButton button)
{
    QTest::mouseClick(view->viewport(), button, {}, view->visualRect(index).center());
}

void clickCheckBox(QListView *list, int row)
{
    const QRect rowRect = list->visualRect(list->model()->index(row, 0));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, ChangedFileDelegate::checkBoxRect(rowRect).center());
}

QString shownLabel(const QString &text)
{
    return QString(text).replace(u"&&"_s, u"\x01"_s).remove(u'&').replace(u'\x01', u'&');
}

QStringList menuItems(const QMenu *menu)
{
    QStringList items;
    for (const QAction *action : menu->actions()) {
        if (action->isSeparator())
            items.append(u"-"_s);
        else if (action->menu())
            items.append(shownLabel(action->text()) + u" ["_s + menuItems(action->menu()).join(u", "_s) + u"]"_s);
        else
            items.append(shownLabel(action->text()));
    }
    return items;
}

QStringList listedPaths(const QAbstractItemView *list)
{
    QStringList paths;
    for (int row = 0; row < list->model()->rowCount(); ++row)
        paths.append(list->model()->index(row, 0).data().toString());
    return paths;
}

} // namespace tillery::test
