#include "model/OpenActions.h"

#include "integrations/EditorLaunch.h"
#include "integrations/Launcher.h"
#include "integrations/TerminalLaunch.h"
#include "model/ActionContext.h"
#include "model/Desktop.h"
#include "model/ModelSettings.h"

using namespace Qt::StringLiterals;

namespace tillery {

QString OpenActions::editorTitle() const
{
    return tr("Open in %1").arg(editorDisplayName(m_context.settings.editorChoice(), InstalledApplications::system()));
}

void OpenActions::launchInBackground(const QString &title, const std::variant<LaunchPlan, QString> &plan)
{
    if (const QString *message = std::get_if<QString>(&plan)) {
        m_context.operations.presentError(title, *message);
        return;
    }
    // An awaited launch waits for its program, which must not hold the window.
    m_context.operations.runQuietly([launchPlan = std::get<LaunchPlan>(plan)] { return launch(launchPlan); },
                                    [this, title](const std::optional<QString> &failure) {
                                        if (failure)
                                            m_context.operations.presentError(title, *failure);
                                    });
}

void OpenActions::openInEditor(const QString &targetPath)
{
    const std::optional<ActionContext::Selected> selected = m_context.selected();
    if (!selected)
        return;
    const InstalledApplications applications = InstalledApplications::system();
    const EditorChoice choice = m_context.settings.editorChoice();
    launchInBackground(tr("Open in %1").arg(editorDisplayName(choice, applications)),
                       editorLaunchPlan(choice, targetPath, selected->repository.path, applications));
}

void OpenActions::openInTerminal()
{
    const std::optional<ActionContext::Selected> selected = m_context.selected();
    if (!selected)
        return;
    launchInBackground(tr("Open in Terminal"),
                       terminalLaunchPlan(m_context.settings.defaultTerminalIdentifier(), selected->repository.path,
                                          InstalledApplications::system()));
}

void OpenActions::openWith(const QString &targetPath, const QString &applicationPath)
{
    const std::optional<ActionContext::Selected> selected = m_context.selected();
    if (!selected)
        return;
    const LaunchPlan plan = openWithPlan(applicationPath, targetPath, selected->repository.path);
    launchInBackground(tr("Open With %1").arg(plan.applicationName), plan);
}

void OpenActions::reveal(const QString &path)
{
    // Asking the file manager may wait seconds for an answer.
    Desktop *desktop = &m_context.desktop;
    m_context.operations.runQuietly([desktop, path] { desktop->reveal(path); }, [](Done) {});
}

void OpenActions::openWithDefaultApplication(const QString &path)
{
    m_context.desktop.open(path);
}

void OpenActions::copyPaths(const QStringList &paths)
{
    copyText(paths.join(u'\n'));
}

void OpenActions::copyText(const QString &text)
{
    m_context.desktop.copyToClipboard(text);
}

} // namespace tillery
