#pragma once

#include "records/Repository.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

class QSettings;
class QTemporaryDir;

namespace tillery {

class AppModel;
class DialogPrompts;
class MainWindow;
class PlatformDesktop;
class ViewSettings;

// The application as it runs: its settings, the one model and the main
// window over it. With `demo` it works on two sample repositories made in a
// temporary folder, with settings of their own, all removed when it ends.
class ApplicationScene {
public:
    // Fails (std::exception) when the sample repositories cannot be made.
    explicit ApplicationScene(bool demo);
    ~ApplicationScene();
    ApplicationScene(const ApplicationScene &) = delete;
    ApplicationScene &operator=(const ApplicationScene &) = delete;

    MainWindow &window() { return *m_window; }
    const QList<Repository> &demoRepositories() const { return m_demoRepositories; }

    // Loads the settings and selects the last repository.
    void start();
    // Adds the repository in the folder (if it is new) and selects it.
    void openRepository(const QString &folder);
    void select(const Repository &repository);
    // Lets the model finish what it started before a picture is taken.
    void waitUntilIdle();
    bool isIdle() const;
    // The message of the error the model presents, if any.
    std::optional<QString> presentedError() const;
    // The page ("changes" or "history") with the file selected (see showPage()).
    void showPage(const QString &tab, const QString &file);
    // Pictures of every page, sheet and settings tab of the sample
    // repositories, light and dark; the files written.
    QStringList takeTour(const QString &folder);

private:
    std::unique_ptr<QTemporaryDir> m_demoFolder;
    std::unique_ptr<QSettings> m_settings;
    QList<Repository> m_demoRepositories;
    std::unique_ptr<DialogPrompts> m_prompts;
    std::unique_ptr<PlatformDesktop> m_desktop;
    std::unique_ptr<AppModel> m_model;
    std::unique_ptr<ViewSettings> m_viewSettings;
    std::unique_ptr<MainWindow> m_window;

public:
    // The settings file of a start without --demo.
    static QString personalSettingsFile();
    // Adds the repositories in the folders (those that are new) and selects the last.
    void openRepositories(const QStringList &folders);
    // Brings the window to the front, out of the Dock or taskbar if minimized.
    void raiseWindow();
    // Calls `report` with a line each time the selected repository or the
    // presented error changes.
    void reportChanges(const std::function<void(const QString &line)> &report);
};

} // namespace tillery
