#include "model/OpenActions.h"

#include "integrations/EditorLaunch.h"
#include "integrations/Launcher.h"
#include "integrations/TerminalLaunch.h"
#include "model/AppModel.h"

using namespace Qt::StringLiterals;

namespace tillery {

OpenActions::OpenActions(AppModel &model, Desktop &desktop)
    : m_model(model)
    , m_desktop(desktop)
{
}

QString OpenActions::editorTitle() const
{
    return u"Open in "_s + editorDisplayName(m_model.settings().editorChoice(), InstalledApplications::system());
}

void OpenActions::launchInBackground(const QString &title, const std::variant<LaunchPlan, QString> &plan)
{
    if (const QString *message = std::get_if<QString>(&plan)) {
        m_model.presentError(title, *message);
        return;
    }
    // An awaited launch waits for its program, which must not hold the window.
    m_model.runQuietly([launchPlan = std::get<LaunchPlan>(plan)] { return launch(launchPlan); },
                       [this, title](const std::optional<QString> &failure) {
                           if (failure)
                               m_model.presentError(title, *failure);
                       });
}

void OpenActions::openInEditor(const QString &targetPath)
{
    const std::optional<Repository> repository = m_model.workspace().selectedRepository();
    if (!repository)
        return;
    const InstalledApplications applications = InstalledApplications::system();
    const EditorChoice choice = m_model.settings().editorChoice();
    launchInBackground(u"Open in "_s + editorDisplayName(choice, applications),
                       editorLaunchPlan(choice, targetPath, repository->path, applications));
}

void OpenActions::openInTerminal()
{
    const std::optional<Repository> repository = m_model.workspace().selectedRepository();
    if (!repository)
        return;
    launchInBackground(u"Open in Terminal"_s, terminalLaunchPlan(m_model.settings().defaultTerminalIdentifier(),
                                                                repository->path, InstalledApplications::system()));
}

void OpenActions::openWith(const QString &targetPath, const QString &applicationPath)
{
    const std::optional<Repository> repository = m_model.workspace().selectedRepository();
    if (!repository)
        return;
    const LaunchPlan plan = openWithPlan(applicationPath, targetPath, repository->path);
    launchInBackground(u"Open With "_s + plan.applicationName, plan);
}

void OpenActions::reveal(const QString &path)
{
    // Asking the file manager may wait seconds for an answer.
    Desktop *desktop = &m_desktop;
    m_model.runQuietly([desktop, path] { desktop->reveal(path); }, [](Done) {});
}

void OpenActions::openWithDefaultApplication(const QString &path)
{
    m_desktop.open(path);
}

void OpenActions::copyPaths(const QStringList &paths)
{
    copyText(paths.join(u'\n'));
}

void OpenActions::copyText(const QString &text)
{
    m_desktop.copyToClipboard(text);
}

} // namespace tillery
