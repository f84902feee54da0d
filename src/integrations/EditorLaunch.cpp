#include "integrations/EditorLaunch.h"

#include "integrations/ApplicationBundle.h"
#include "integrations/DesktopEntryCommand.h"
#include "integrations/EditorArguments.h"

#include <QCoreApplication>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

// Where a known editor is: its program (Linux) or its bundle (macOS). One
// found through its desktop file comes with that file's command line.
struct FoundEditor {
    QString location;
    QString bundleIdentifier;
    QStringList desktopCommand;
};

std::optional<FoundEditor> findEditor(ExternalEditor editor, const InstalledApplications &applications)
{
    for (const QString &identifier : bundleIdentifiers(editor)) {
        if (const std::optional<QString> bundle = applications.findBundle(identifier))
            return FoundEditor{*bundle, identifier, {}};
    }
#ifndef Q_OS_MACOS
    for (const QString &name : executableNames(editor)) {
        if (const std::optional<QString> program = applications.findProgram(name))
            return FoundEditor{*program, {}, {}};
    }
    for (const QString &desktopId : desktopFileIds(editor)) {
        if (const std::optional<QStringList> command = applications.desktopFileCommand(desktopId))
            return FoundEditor{command->first(), {}, *command};
    }
#endif
    return std::nullopt;
}

bool isExecutableFile(const QString &path)
{
    const QFileInfo info(path);
    return info.isFile() && info.isExecutable();
}

} // namespace

QList<ExternalEditor> installedEditors(const InstalledApplications &applications)
{
    QList<ExternalEditor> installed;
    for (const ExternalEditor editor : platformExternalEditors()) {
        if (editor != ExternalEditor::other && findEditor(editor, applications))
            installed.append(editor);
    }
    return installed;
}

ExternalEditor chosenEditor(const EditorChoice &choice, const InstalledApplications &applications)
{
    if (choice.selection) {
        const std::optional<ExternalEditor> stored = externalEditorFromRawValue(*choice.selection);
        if (stored && platformExternalEditors().contains(*stored))
            return *stored;
    }
    const QList<ExternalEditor> installed = installedEditors(applications);
    return installed.isEmpty() ? ExternalEditor::other : installed.first();
}

QString editorDisplayName(const EditorChoice &choice, const InstalledApplications &applications)
{
    const ExternalEditor editor = chosenEditor(choice, applications);
    if (editor != ExternalEditor::other || !isApplicationBundle(choice.path))
        return displayName(editor);
    for (const QString &key : {u"CFBundleDisplayName"_s, u"CFBundleName"_s}) {
        if (const std::optional<QString> name = bundleInfoString(choice.path, key); name && !name->isEmpty())
            return *name;
    }
    return displayName(ExternalEditor::other);
}

std::variant<LaunchPlan, QString> editorLaunchPlan(const EditorChoice &choice, const QString &targetPath,
                                                   const QString &repositoryPath,
                                                   const InstalledApplications &applications)
{
    const ExternalEditor editor = chosenEditor(choice, applications);
    const QString name = editorDisplayName(choice, applications);
    if (editor != ExternalEditor::other) {
        const std::optional<FoundEditor> found = findEditor(editor, applications);
        if (!found)
            return QCoreApplication::translate("tillery::EditorLaunch",
                                               "%1 is no longer installed. Choose another editor in Settings.")
                .arg(name);
        if (!found->bundleIdentifier.isEmpty()) {
            return LaunchPlan{u"/usr/bin/open"_s,
                              {u"-b"_s, found->bundleIdentifier, targetPath},
                              repositoryPath,
                              LaunchPlan::Start::awaited,
                              name};
        }
        const QStringList arguments = found->desktopCommand.isEmpty()
                                          ? QStringList{targetPath}
                                          : desktopEntryArguments(found->desktopCommand, targetPath);
        return LaunchPlan{found->location, arguments, repositoryPath, LaunchPlan::Start::detached, name};
    }

    const bool bundle = isApplicationBundle(choice.path);
    if (!bundle && !isExecutableFile(choice.path))
        return QCoreApplication::translate("tillery::EditorLaunch",
                                           "Choose a valid editor path in Settings > Integrations.");
    // An empty string is as invalid here as in the settings (the stored
    // default is the placeholder itself).
    if (const std::optional<QString> problem = ExternalEditorArguments::validate(choice.arguments))
        return *problem;
    const QStringList arguments = ExternalEditorArguments::substituted(
        std::get<QStringList>(ExternalEditorArguments::parse(choice.arguments)), targetPath);
    if (bundle) {
        return LaunchPlan{u"/usr/bin/open"_s, QStringList{u"-a"_s, choice.path} + arguments, repositoryPath,
                          LaunchPlan::Start::awaited, name};
    }
    return LaunchPlan{choice.path, arguments, repositoryPath, LaunchPlan::Start::detached, name};
}

std::optional<QString> editorPathProblem(const QString &path)
{
    if (isApplicationBundle(path) || isExecutableFile(path))
        return std::nullopt;
#ifdef Q_OS_MACOS
    return QCoreApplication::translate("tillery::EditorLaunch",
                                       "The selected path is not an executable or macOS application.");
#else
    return QCoreApplication::translate("tillery::EditorLaunch", "The selected path is not an executable program.");
#endif
}

LaunchPlan openWithPlan(const QString &applicationPath, const QString &targetPath, const QString &repositoryPath)
{
    const QString name = QFileInfo(applicationPath).completeBaseName();
    if (isApplicationBundle(applicationPath))
        return LaunchPlan{u"/usr/bin/open"_s,
                          {u"-a"_s, applicationPath, targetPath},
                          repositoryPath,
                          LaunchPlan::Start::awaited,
                          name};
    return LaunchPlan{applicationPath, {targetPath}, repositoryPath, LaunchPlan::Start::detached, name};
}

} // namespace tillery
