#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace tillery {

// The terminals "Open in Terminal" can use. The persisted value is an
// application identifier: the bundle identifier on macOS, the desktop-file
// id (or program name) on Linux. Ghostty is the same choice on both.
enum class TerminalApplication {
    terminal,
    iTerm,
    ghostty,
    gnomeTerminal,
    konsole,
    xfceTerminal,
    kitty,
    alacritty,
    wezterm,
    foot,
    xterm,
};

QList<TerminalApplication> allTerminalApplications();
// The terminals this platform offers, in the order the choice falls back.
QList<TerminalApplication> platformTerminalApplications();
// The platform's own terminal: Terminal on macOS, GNOME Terminal on Linux.
TerminalApplication platformDefaultTerminal();

QString identifier(TerminalApplication terminal);
std::optional<TerminalApplication> terminalWithIdentifier(const QString &identifier);
QString displayName(TerminalApplication terminal);
// Linux: the program that starts it.
QString executableName(TerminalApplication terminal);

// The stored choice when it is installed; otherwise the platform's own
// terminal when installed, else the first installed one, else the
// platform's own terminal.
TerminalApplication resolveTerminal(const std::optional<QString> &stored, const QList<TerminalApplication> &installed);

// The settings picker's caption.
QString terminalChoiceCaption();

} // namespace tillery
