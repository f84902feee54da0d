#include "ui/ApplicationScene.h"

#include "model/AppModel.h"
#include "model/DemoRepositories.h"
#include "model/PlatformDesktop.h"
#include "ui/DesktopServices.h"
#include "ui/MainWindow.h"
#include "ui/ScreenshotTour.h"
#include "ui/ViewSettings.h"

#include <QDir>
#include <QSettings>
#include <QTemporaryDir>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace tillery {

ApplicationScene::ApplicationScene(bool demo)
{
    QString iconFolder = AppModelServices::defaultIconFolder();
    if (demo) {
        m_demoFolder = std::make_unique<QTemporaryDir>(QDir::tempPath() + u"/tillery-demo-XXXXXX"_s);
        m_settings = std::make_unique<QSettings>(m_demoFolder->filePath(u"settings.ini"_s), QSettings::IniFormat);
        iconFolder = m_demoFolder->filePath(u"Repository Icons"_s);
        m_demoRepositories = makeDemoRepositories(m_demoFolder->path());
        ModelSettings demoSettings(*m_settings);
        demoSettings.setRepositories(m_demoRepositories);
        demoSettings.setLastSelectedRepository(m_demoRepositories.first().path);
    } else {
        m_settings =
            std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope, u"Tillery"_s, u"Tillery"_s);
    }
    m_prompts = std::make_unique<DialogPrompts>();
    m_desktop = std::make_unique<PlatformDesktop>();
    m_model = std::make_unique<AppModel>(AppModelServices{*m_settings, *m_prompts, *m_desktop, iconFolder});
    m_viewSettings = std::make_unique<ViewSettings>(*m_settings);
    m_window = std::make_unique<MainWindow>(*m_model, *m_viewSettings);
    m_prompts->setWindow(m_window.get());
}

ApplicationScene::~ApplicationScene()
{
    // The window goes before the model it shows, the model before its services.
    m_window.reset();
    m_model.reset();
}

void ApplicationScene::start()
{
    m_model->start();
}

void ApplicationScene::openRepository(const QString &folder)
{
    m_model->addRepositories({QUrl::fromLocalFile(folder)});
}

void ApplicationScene::select(const Repository &repository)
{
    m_model->select(repository);
}

void ApplicationScene::waitUntilIdle()
{
    tillery::waitUntilIdle(*m_model);
}

bool ApplicationScene::isIdle() const
{
    return m_model->isIdle();
}

std::optional<QString> ApplicationScene::presentedError() const
{
    const std::optional<PresentedError> &error = m_model->activityState().presentedError();
    return error ? std::optional(error->message) : std::nullopt;
}

void ApplicationScene::showPage(const QString &tab, const QString &file)
{
    tillery::showPage(*m_model, tab, file);
}

QStringList ApplicationScene::takeTour(const QString &folder)
{
    return takeScreenshotTour(*m_window, *m_model, m_demoRepositories, folder);
}

QString ApplicationScene::personalSettingsFile()
{
    return QSettings(QSettings::NativeFormat, QSettings::UserScope, u"Tillery"_s, u"Tillery"_s).fileName();
}

void ApplicationScene::openRepositories(const QStringList &folders)
{
    m_model->openFolders(folders);
}

void ApplicationScene::raiseWindow()
{
    m_window->setWindowState(m_window->windowState() & ~Qt::WindowMinimized);
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
}

void ApplicationScene::reportChanges(const std::function<void(const QString &line)> &report)
{
    const Workspace &workspace = m_model->workspace();
    QObject::connect(&workspace, &Workspace::selectedRepositoryChanged, m_window.get(), [&workspace, report] {
        const std::optional<Repository> &selected = workspace.selectedRepository();
        report(u"the selected repository is "_s + (selected ? selected->path : u"none"_s));
    });
    const ActivityState &activity = m_model->activityState();
    QObject::connect(&activity, &ActivityState::presentedErrorChanged, m_window.get(), [&activity, report] {
        if (const std::optional<PresentedError> &error = activity.presentedError())
            report(u"error: "_s + error->title + u": "_s + error->message);
    });
}

} // namespace tillery
