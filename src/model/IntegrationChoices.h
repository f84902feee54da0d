#pragma once

#include "integrations/EditorLaunch.h"
#include "integrations/InstalledApplications.h"

#include <QList>
#include <QString>

#include <optional>

namespace tillery {

// One entry of an editor or terminal menu: the value stored when it is
// chosen and the text shown.
struct ApplicationOption {
    QString value;
    QString label;

    friend bool operator==(const ApplicationOption &, const ApplicationOption &) = default;
};

// What the Integrations settings offer and check, worked out from the
// applications installed on this computer.
class IntegrationChoices {
public:
    explicit IntegrationChoices(InstalledApplications applications = InstalledApplications::system());

    // The installed known editors (and the chosen one, marked, when it is
    // not installed), then "Other Application…".
    QList<ApplicationOption> editorOptions(const EditorChoice &choice) const;
    // The value of the editor the choice stands for.
    QString chosenEditor(const EditorChoice &choice) const;
    static QString otherEditor();
    // Why a program or application cannot be the other editor.
    static std::optional<QString> editorPathProblem(const QString &path);
    // Why an argument string for the other editor cannot be used.
    static std::optional<QString> editorArgumentsProblem(const QString &arguments);

    // The installed terminals, or only the stored one, marked, when none is.
    QList<ApplicationOption> terminalOptions(const std::optional<QString> &stored) const;
    bool hasInstalledTerminal() const;
    // The value of the terminal the stored identifier stands for.
    QString chosenTerminal(const std::optional<QString> &stored) const;
    // What the terminal setting does on this platform.
    static QString terminalCaption();

private:
    InstalledApplications m_applications;
};

} // namespace tillery
