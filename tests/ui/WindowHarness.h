#pragma once

// What the window tests share: the harness and the helpers below, and the support and Qt headers
// most of them use.
#include "Checks.h"
#include "ModelHarness.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include "ui/ChangesView.h"
#include "ui/CommitBox.h"
#include "ui/DiffCanvas.h"
#include "ui/DiffView.h"
#include "ui/MainWindow.h"
#include "ui/RepositoryWorkspace.h"
#include "ui/ViewSettings.h"
#include "ui/WelcomeView.h"
#include "ui/WorkspaceTabHeader.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

#include <memory>

namespace tillery::test {

// Pins the environment for real hg and git, and keeps Qt's own files out of the person's folders.
void prepareUiTest();

// The real main window over a real model, shown offscreen, every item model of it watched by
// QAbstractItemModelTester. The model and its settings outlive the window.
class WindowHarness {
public:
    ~WindowHarness();

    // Starts the model, opens the window, waits until it is active and idle.
    MainWindow &open();
    // Closes the window and ends the model, as quitting does.
    void close();
    MainWindow &window() { return *m_window; }
    AppModel &model() { return models.model(); }
    ViewSettings &viewSettings() { return *m_viewSettings; }
    ChangesView &changes() { return *m_window->workspace()->changesView(); }
    bool settle() { return models.settle(); }

    // Adds a repository the way a person does: the menu item, then the folder chooser's answer.
    void addThroughMenu(const QString &folder);
    // Opens the window and adds the repository through the menu; its Changes page.
    ChangesView &openOn(const QString &repositoryPath);
    // Shows a sheet as its menu item or button does.
    template <typename Sheet>
    Sheet *showSheet(Workspace::Sheet sheet)
    {
        model().setSheetShown(sheet, true);
        return qobject_cast<Sheet *>(m_window->sheet(sheet));
    }

    ModelHarness models;

private:
    std::unique_ptr<ViewSettings> m_viewSettings;
    std::unique_ptr<MainWindow> m_window;
};

// A repository of the kind whose one changeset adds chart.txt.
std::unique_ptr<RepositoryFixture> chartRepository(RepositoryKind kind);

// The child of that type (and name); the test program stops when there is none.
template <typename T>
T *child(const QObject &parent, const QString &name = QString())
{
    T *found = parent.findChild<T *>(name);
    if (!found)
        qFatal("No %s named \"%s\"", T::staticMetaObject.className(), qPrintable(name));
    return found;
}

// A menu bar item, or a menu's item (in submenus too), by its label as shown; when there is none the
// test fails.
QAction *menuAction(const QMainWindow &window, const QString &label);
QAction *findAction(const QMenu *menu, const QString &label);

// Clicks a row of a list or tree, or a changed-file row's check box.
void clickRow(QAbstractItemView *view, const QModelIndex &index, Qt::MouseButton button = Qt::LeftButton);
void clickCheckBox(QListView *list, int row);

// A menu or button text as a person sees it: "&&" shows one ampersand, a lone "&" marks a mnemonic
// and is not drawn.
QString shownLabel(const QString &text);

// A menu's items as shown: labels, "-" for dividers, and a submenu as its title followed by its
// items in brackets.
QStringList menuItems(const QMenu *menu);

// The display texts of a list's rows, top to bottom.
QStringList listedPaths(const QAbstractItemView *list);

} // namespace tillery::test
