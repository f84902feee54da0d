#include "integrations/InstalledApplications.h"

#include "integrations/DesktopEntryCommand.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace tillery {

#ifdef Q_OS_MACOS
std::optional<QString> macApplicationWithBundleIdentifier(const QString &bundleIdentifier);
#endif

namespace {

std::optional<QString> programOnPath(const QString &name)
{
    const QString found = QStandardPaths::findExecutable(name);
    return found.isEmpty() ? std::nullopt : std::optional(found);
}

std::optional<QStringList> commandOfDesktopFile(const QString &desktopId)
{
    const QString file = QStandardPaths::locate(QStandardPaths::ApplicationsLocation, desktopId + u".desktop"_s);
    QFile desktopFile(file);
    if (file.isEmpty() || !desktopFile.open(QIODevice::ReadOnly))
        return std::nullopt;
    std::optional<QStringList> command = desktopEntryCommand(QString::fromUtf8(desktopFile.readAll()));
    if (!command)
        return std::nullopt;
    const QString program = command->first();
    const std::optional<QString> found =
        QFileInfo(program).isAbsolute() ? (QFileInfo(program).isExecutable() ? std::optional(program) : std::nullopt)
                                        : programOnPath(program);
    if (!found)
        return std::nullopt;
    (*command)[0] = *found;
    return command;
}

} // namespace

InstalledApplications InstalledApplications::system()
{
    InstalledApplications applications;
    applications.findProgram = programOnPath;
    applications.desktopFileCommand = commandOfDesktopFile;
#ifdef Q_OS_MACOS
    applications.findBundle = macApplicationWithBundleIdentifier;
#else
    applications.findBundle = [](const QString &) { return std::optional<QString>(); };
#endif
    return applications;
}

} // namespace tillery
