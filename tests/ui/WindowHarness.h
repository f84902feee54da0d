#pragma once

// What the window tests share: the harness and the helpers below, and the support and Qt headers
// most of them use.
#include "Checks.h"
#include "ModelHarness.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include "ui/ChangedFileDelegate.h"
#include "ui/ChangesView.h"
#include "ui/CommitBox.h"
#include "ui/DiffView.h"
#include "ui/MainWindow.h"
#include "ui/RepositoryWorkspace.h"
#include "ui/SheetParts.h"
#include "ui/Translations.h"
#include "ui/ViewSettings.h"
#include "ui/WelcomeView.h"
#include "ui/WorkspaceTabHeader.h"

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStandardPaths>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

namespace tillery::test {

using namespace Qt::StringLiterals;

// A menu or button text as a person sees it: "&&" shows one ampersand, a lone "&" marks a mnemonic.
inline QString shownLabel(const QString &text)
{
    return QString(text).replace(u"&&"_s, u"\x01"_s).remove(u'&').replace(u'\x01', u'&');
}

// A menu's item (in submenus too) by its label as shown; when there is none the test fails and goes
// on with an item that does nothing.
inline QAction *findAction(const QMenu *menu, const QString &label, bool required = true)
{
    static QAction nothing;
    for (QAction *action : menu->actions()) {
        if (shownLabel(action->text()) == label && !action->isSeparator())
            return action;
        if (QAction *inner = action->menu() ? findAction(action->menu(), label, false) : nullptr)
            return inner;
    }
    if (required)
        QTest::qFail(qPrintable(u"No menu item \"%1\""_s.arg(label)), __FILE__, __LINE__);
    return required ? &nothing : nullptr;
}

// A menu bar item by its label as shown.
inline QAction *menuAction(const QMainWindow &window, const QString &label)
{
    QMenu bar;
    bar.addActions(window.menuBar()->actions());
    return findAction(&bar, label);
}

// A menu's items as shown: labels, "-" for dividers, a submenu as its title and its items in brackets.
inline QStringList menuItems(const QMenu *menu)
{
    QStringList items;
    for (const QAction *action : menu->actions()) {
        QString item = action->isSeparator() ? u"-"_s : shownLabel(action->text());
        if (action->menu())
            item += u" ["_s + menuItems(action->menu()).join(u", "_s) + u"]"_s;
        items.append(item);
    }
    return items;
}

// The child of that type (and name); the test program stops when there is none.
template <typename T>
T *child(const QObject &parent, const QString &name = QString())
{
    T *found = parent.findChild<T *>(name);
    if (!found)
        qFatal("No %s named \"%s\"", T::staticMetaObject.className(), qPrintable(name));
    return found;
}

// The real main window over a real model, shown offscreen, every item model of it watched by
// QAbstractItemModelTester. The model and its settings outlive the window.
class WindowHarness {
public:
    ~WindowHarness()
    {
        // Work still running reports to a model that is about to go.
        if (m_window)
            models.settle();
    }

    // Starts the model, opens the window, waits until it is active and idle.
    MainWindow &open()
    {
        installTranslations();
        m_viewSettings = std::make_unique<ViewSettings>(models.settings());
        m_window = std::make_unique<MainWindow>(models.start(), *m_viewSettings);
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

    // Closes the window and ends the model, as quitting does.
    void close()
    {
        models.settle();
        m_window.reset();
        models.stop();
    }

    MainWindow &window() { return *m_window; }
    AppModel &model() { return models.model(); }
    ChangesView &changes() { return *m_window->workspace()->changesView(); }
    bool settle() { return models.settle(); }
    bool adopt(const RepositoryFixture &repository) { return models.adopt(repository); }

    // Adds a repository the way a person does: the menu item, then the folder chooser's answer.
    void addThroughMenu(const QString &folder)
    {
        models.prompts.folderAnswers.append(folder);
        menuAction(*m_window, u"Add Local Repository…"_s)->trigger();
        models.settle();
    }

    ModelHarness models;

private:
    std::unique_ptr<ViewSettings> m_viewSettings;
    std::unique_ptr<MainWindow> m_window;
};

// Clicks a row of a list or tree.
inline void clickRow(QAbstractItemView *view, const QModelIndex &index, Qt::MouseButton button = Qt::LeftButton)
{
    QTest::mouseClick(view->viewport(), button, {}, view->visualRect(index).center());
}

// The display texts, or another role's values, of a list's rows, top to bottom.
template <typename T = QString>
QList<T> rowValues(const QAbstractItemView *list, int role = Qt::DisplayRole)
{
    QList<T> values;
    for (int row = 0; row < list->model()->rowCount(); ++row)
        values.append(list->model()->index(row, 0).data(role).value<T>());
    return values;
}

// The visible, enabled controls inside the widget that cannot be reached with Tab or have no name
// that a screen reader can say.
inline QStringList accessibilityFaults(QWidget &top)
{
    QStringList faults;
    for (QWidget *widget : top.findChildren<QWidget *>()) {
        bool control = false;
        for (const char *type : {"QAbstractButton", "QLineEdit", "QComboBox", "QAbstractItemView", "QPlainTextEdit",
                                 "tillery::DiffCanvas", "tillery::IconWell"})
            control = control || widget->inherits(type);
        if (!control || !widget->isVisibleTo(&top) || !widget->isEnabled()
            || widget->testAttribute(Qt::WA_TransparentForMouseEvents))
            continue;
        const QString name = QString::fromLatin1(widget->metaObject()->className()) + u' ' + widget->objectName();
        if (!(widget->focusPolicy() & Qt::TabFocus))
            faults.append(u"not reachable with Tab: "_s + name);
        if (QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name).trimmed().isEmpty())
            faults.append(u"no accessible name: "_s + name);
    }
    return faults;
}

} // namespace tillery::test
