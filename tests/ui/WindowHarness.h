#pragma once

#include "ModelHarness.h"

#include "ui/MainWindow.h"
#include "ui/ViewSettings.h"

#include <QStringList>

#include <memory>

class QListView;
class QMenu;

namespace tillery {
class ChangesView;
}

namespace tillery::test {

// The real main window over a real model, shown offscreen. The model and its
// settings outlive the window.
class WindowHarness {
public:
    WindowHarness() = default;
    WindowHarness(const WindowHarness &) = delete;
    WindowHarness &operator=(const WindowHarness &) = delete;
    ~WindowHarness();

    // Starts the model, opens the window, waits until it is active and idle.
    MainWindow &open();
    // Closes the window and ends the model, as quitting does.
    void close();
    MainWindow &window() { return *m_window; }
    AppModel &model() { return models.model(); }
    ViewSettings &viewSettings() { return *m_viewSettings; }
    ChangesView &changes();
    bool settle() { return models.settle(); }

    // Adds a repository the way a person does: the menu item, then the
    // folder chooser's answer.
    void addThroughMenu(const QString &folder);

    // Opens the window and adds the repository through the menu; its Changes page.
    ChangesView &openOn(const QString &repositoryPath);

    ModelHarness models;

private:
    std::unique_ptr<ViewSettings> m_viewSettings;
    std::unique_ptr<MainWindow> m_window;
};

// Clicks a changed-file row's check box.
void clickCheckBox(QListView *list, int row);

// A menu or button text as a person sees it: "&&" shows one ampersand, a lone "&" marks a mnemonic
// and is not drawn.
QString shownLabel(const QString &text);

// A menu's items as shown (mnemonic marks taken out): labels, "-" for dividers, and a submenu as its
// title followed by its items in brackets.
QStringList menuItems(const QMenu *menu);

// The paths shown in the changed-files list, top to bottom.
QStringList listedPaths(const QListView *list);

} // namespace tillery::test
