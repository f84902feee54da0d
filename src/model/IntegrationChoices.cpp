#include "model/IntegrationChoices.h"

#include "integrations/EditorArguments.h"
#include "integrations/ExternalEditor.h"
#include "integrations/TerminalApplication.h"
#include "integrations/TerminalLaunch.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

QString notInstalled(const QString &application)
{
    return QCoreApplication::translate("tillery::IntegrationChoices", "%1 (not installed)").arg(application);
}

} // namespace

IntegrationChoices::IntegrationChoices(InstalledApplications applications)
    : m_applications(std::move(applications))
{
}

QList<ApplicationOption> IntegrationChoices::editorOptions(const EditorChoice &choice) const
{
    const ExternalEditor current = tillery::chosenEditor(choice, m_applications);
    const QList<ExternalEditor> installed = installedEditors(m_applications);
    QList<ApplicationOption> options;
    for (const ExternalEditor editor : platformExternalEditors()) {
        if (editor == ExternalEditor::other)
            continue;
        if (installed.contains(editor))
            options.append({rawValue(editor), displayName(editor)});
        else if (editor == current)
            options.append({rawValue(editor), notInstalled(displayName(editor))});
    }
    options.append({otherEditor(), QCoreApplication::translate("tillery::IntegrationChoices", "Other Application…")});
    return options;
}

QString IntegrationChoices::chosenEditor(const EditorChoice &choice) const
{
    return rawValue(tillery::chosenEditor(choice, m_applications));
}

QString IntegrationChoices::otherEditor()
{
    return rawValue(ExternalEditor::other);
}

std::optional<QString> IntegrationChoices::editorPathProblem(const QString &path)
{
    return tillery::editorPathProblem(path);
}

std::optional<QString> IntegrationChoices::editorArgumentsProblem(const QString &arguments)
{
    return ExternalEditorArguments::validate(arguments);
}

QList<ApplicationOption> IntegrationChoices::terminalOptions(const std::optional<QString> &stored) const
{
    const QList<TerminalApplication> installed = installedTerminals(m_applications);
    QList<ApplicationOption> options;
    for (const TerminalApplication terminal : installed)
        options.append({identifier(terminal), displayName(terminal)});
    if (installed.isEmpty()) {
        const TerminalApplication current = resolveTerminal(stored, installed);
        options.append({identifier(current), notInstalled(displayName(current))});
    }
    return options;
}

bool IntegrationChoices::hasInstalledTerminal() const
{
    return !installedTerminals(m_applications).isEmpty();
}

QString IntegrationChoices::chosenTerminal(const std::optional<QString> &stored) const
{
    return identifier(resolveTerminal(stored, installedTerminals(m_applications)));
}

QString IntegrationChoices::terminalCaption()
{
    return terminalChoiceCaption();
}

} // namespace tillery
