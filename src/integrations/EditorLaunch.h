#pragma once

#include "integrations/ExternalEditor.h"
#include "integrations/InstalledApplications.h"
#include "integrations/LaunchPlan.h"

#include <QList>
#include <QString>

#include <optional>
#include <variant>

namespace tillery {

// The editor settings as stored.
struct EditorChoice {
    std::optional<QString> selection; // raw value of ExternalEditor
    QString path; // for `other`: an application bundle or an executable
    QString arguments; // for `other`: the argument string
};

// The known editors of this platform that are installed.
QList<ExternalEditor> installedEditors(const InstalledApplications &applications);

// The editor in use: the stored one, or when none is stored (or it is not
// one of this platform's) the first installed known editor, else `other`.
ExternalEditor chosenEditor(const EditorChoice &choice, const InstalledApplications &applications);

// "VS Code", or for `other` the chosen application's name, else "Editor".
QString editorDisplayName(const EditorChoice &choice, const InstalledApplications &applications);

// How to open the target (a file or the repository) in the chosen editor,
// with the repository as working directory; or the message to show instead.
std::variant<LaunchPlan, QString> editorLaunchPlan(const EditorChoice &choice, const QString &targetPath,
                                                   const QString &repositoryPath,
                                                   const InstalledApplications &applications);

// Why a chosen file cannot be the `other` editor (it is neither an
// application nor an executable program); nothing when it can.
std::optional<QString> editorPathProblem(const QString &path);

// How to open the target with an application the person picked: an
// application bundle through "open -a" (macOS), else the program itself.
LaunchPlan openWithPlan(const QString &applicationPath, const QString &targetPath, const QString &repositoryPath);

} // namespace tillery
