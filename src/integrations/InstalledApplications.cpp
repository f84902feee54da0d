#include "integrations/InstalledApplications.h"

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

std::optional<QString> programOfDesktopFile(const QString &desktopId)
{
    const QString file = QStandardPaths::locate(QStandardPaths::ApplicationsLocation, desktopId + u".desktop"_s);
    QFile desktopFile(file);
    if (file.isEmpty() || !desktopFile.open(QIODevice::ReadOnly))
        return std::nullopt;
    const std::optional<QString> program = programOfDesktopEntry(QString::fromUtf8(desktopFile.readAll()));
    if (!program)
        return std::nullopt;
    if (QFileInfo(*program).isAbsolute())
        return QFileInfo(*program).isExecutable() ? program : std::nullopt;
    return programOnPath(*program);
}

} // namespace

std::optional<QString> programOfDesktopEntry(const QString &desktopFileText)
{
    bool inMainEntry = false;
    for (const QString &rawLine : desktopFileText.split(u'\n')) {
        const QString line = rawLine.trimmed();
        if (line.startsWith(u'[')) {
            inMainEntry = line == u"[Desktop Entry]";
            continue;
        }
        if (!inMainEntry || !line.startsWith(u"Exec="))
            continue;
        const QString command = line.sliced(5).trimmed();
        if (command.startsWith(u'"')) {
            const qsizetype close = command.indexOf(u'"', 1);
            return close > 1 ? std::optional(command.sliced(1, close - 1)) : std::nullopt;
        }
        const QString program = command.section(u' ', 0, 0);
        return program.isEmpty() ? std::nullopt : std::optional(program);
    }
    return std::nullopt;
}

InstalledApplications InstalledApplications::system()
{
    InstalledApplications applications;
    applications.findProgram = programOnPath;
    applications.desktopFileProgram = programOfDesktopFile;
#ifdef Q_OS_MACOS
    applications.findBundle = macApplicationWithBundleIdentifier;
#else
    applications.findBundle = [](const QString &) { return std::optional<QString>(); };
#endif
    return applications;
}

} // namespace tillery
