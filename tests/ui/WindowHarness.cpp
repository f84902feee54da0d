#include "WindowHarness.h"

#include "ui/ChangedFileDelegate.h"
#include "ui/ChangesView.h"
#include "ui/RepositoryWorkspace.h"
#include "ui/Translations.h"

#include <QAction>
#include <QListView>
#include <QMenu>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tillery::test {

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
    m_window->show();
    m_window->activateWindow();
    if (!QTest::qWaitForWindowActive(m_window.get()))
        qWarning("The main window did not become active");
    models.settle();
    return *m_window;
}

ChangesView &WindowHarness::changes()
{
    return *m_window->workspace()->changesView();
}

void WindowHarness::addThroughMenu(const QString &folder)
{
    models.prompts.folderAnswers.append(folder);
    m_window->menuAction(u"Add Local Repository…"_s)->trigger();
    models.settle();
}

ChangesView &WindowHarness::openOn(const QString &repositoryPath)
{
    open();
    addThroughMenu(repositoryPath);
    return changes();
}

void clickCheckBox(QListView *list, int row)
{
    const QRect rowRect = list->visualRect(list->model()->index(row, 0));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, ChangedFileDelegate::checkBoxRect(rowRect).center());
}

QString shownLabel(const QString &text)
{
    QString shown;
    for (qsizetype index = 0; index < text.size(); ++index) {
        if (text[index] == u'&' && ++index == text.size())
            break;
        shown.append(text[index]);
    }
    return shown;
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

QStringList listedPaths(const QListView *list)
{
    QStringList paths;
    for (int row = 0; row < list->model()->rowCount(); ++row)
        paths.append(list->model()->index(row, 0).data().toString());
    return paths;
}

} // namespace tillery::test
