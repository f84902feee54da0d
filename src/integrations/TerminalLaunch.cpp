#include "integrations/TerminalLaunch.h"

#include "integrations/ITermScript.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

std::optional<QString> locationOf(TerminalApplication terminal, const InstalledApplications &applications)
{
#ifdef Q_OS_MACOS
    return applications.findBundle(identifier(terminal));
#else
    return applications.findProgram(executableName(terminal));
#endif
}

// Each Linux terminal's own way to start in a folder; the folder is also the
// working directory, which is all xterm has.
QStringList startInFolderArguments(TerminalApplication terminal, const QString &folder)
{
    switch (terminal) {
    case TerminalApplication::gnomeTerminal:
    case TerminalApplication::xfceTerminal:
    case TerminalApplication::foot:
    case TerminalApplication::ghostty:
        return {u"--working-directory="_s + folder};
    case TerminalApplication::konsole:
        return {u"--workdir"_s, folder};
    case TerminalApplication::kitty:
        return {u"--directory"_s, folder};
    case TerminalApplication::alacritty:
        return {u"--working-directory"_s, folder};
    case TerminalApplication::wezterm:
        return {u"start"_s, u"--cwd"_s, folder};
    default:
        return {};
    }
}

} // namespace

QList<TerminalApplication> installedTerminals(const InstalledApplications &applications)
{
    QList<TerminalApplication> installed;
    for (const TerminalApplication terminal : platformTerminalApplications()) {
        if (locationOf(terminal, applications))
            installed.append(terminal);
    }
    return installed;
}

std::variant<LaunchPlan, QString> terminalLaunchPlan(const std::optional<QString> &storedIdentifier,
                                                     const QString &repositoryPath,
                                                     const InstalledApplications &applications)
{
    const TerminalApplication terminal = resolveTerminal(storedIdentifier, installedTerminals(applications));
    const QString name = displayName(terminal);
#ifdef Q_OS_MACOS
    switch (terminal) {
    case TerminalApplication::iTerm:
        return LaunchPlan{u"/usr/bin/osascript"_s,
                          {u"-e"_s, iTermScript(repositoryPath)},
                          repositoryPath,
                          LaunchPlan::Start::awaited,
                          name};
    case TerminalApplication::ghostty:
        return LaunchPlan{QString(), {repositoryPath}, repositoryPath, LaunchPlan::Start::ghosttyService, name};
    default:
        return LaunchPlan{u"/usr/bin/open"_s,
                          {u"-b"_s, identifier(TerminalApplication::terminal), repositoryPath},
                          repositoryPath,
                          LaunchPlan::Start::awaited,
                          name};
    }
#else
    const std::optional<QString> program = locationOf(terminal, applications);
    if (!program)
        return QCoreApplication::translate(
            "tillery::TerminalLaunch", "No terminal was found. Install one, such as GNOME Terminal, Konsole or xterm.");
    return LaunchPlan{*program, startInFolderArguments(terminal, repositoryPath), repositoryPath,
                      LaunchPlan::Start::detached, name};
#endif
}

} // namespace tillery
