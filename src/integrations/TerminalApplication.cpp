#include "integrations/TerminalApplication.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

struct TerminalEntry {
    TerminalApplication terminal;
    QString identifier;
    QString name;
    QString executable;
};

const QList<TerminalEntry> &catalogue()
{
    static const QList<TerminalEntry> entries{
        {TerminalApplication::terminal, u"com.apple.Terminal"_s, u"Terminal"_s, {}},
        {TerminalApplication::iTerm, u"com.googlecode.iterm2"_s, u"iTerm"_s, {}},
        {TerminalApplication::ghostty, u"com.mitchellh.ghostty"_s, u"Ghostty"_s, u"ghostty"_s},
        {TerminalApplication::gnomeTerminal, u"org.gnome.Terminal"_s, u"GNOME Terminal"_s, u"gnome-terminal"_s},
        {TerminalApplication::konsole, u"org.kde.konsole"_s, u"Konsole"_s, u"konsole"_s},
        {TerminalApplication::xfceTerminal, u"xfce4-terminal"_s, u"Xfce Terminal"_s, u"xfce4-terminal"_s},
        {TerminalApplication::kitty, u"kitty"_s, u"kitty"_s, u"kitty"_s},
        {TerminalApplication::alacritty, u"Alacritty"_s, u"Alacritty"_s, u"alacritty"_s},
        {TerminalApplication::wezterm, u"org.wezfurlong.wezterm"_s, u"WezTerm"_s, u"wezterm"_s},
        {TerminalApplication::foot, u"foot"_s, u"foot"_s, u"foot"_s},
        {TerminalApplication::xterm, u"xterm"_s, u"xterm"_s, u"xterm"_s},
    };
    return entries;
}

const TerminalEntry &entryOf(TerminalApplication terminal)
{
    return catalogue()[static_cast<int>(terminal)];
}

} // namespace

QList<TerminalApplication> allTerminalApplications()
{
    QList<TerminalApplication> terminals;
    for (const TerminalEntry &entry : catalogue())
        terminals.append(entry.terminal);
    return terminals;
}

QList<TerminalApplication> platformTerminalApplications()
{
#ifdef Q_OS_MACOS
    return {TerminalApplication::terminal, TerminalApplication::iTerm, TerminalApplication::ghostty};
#else
    return {TerminalApplication::gnomeTerminal, TerminalApplication::konsole,   TerminalApplication::xfceTerminal,
            TerminalApplication::kitty,         TerminalApplication::alacritty, TerminalApplication::wezterm,
            TerminalApplication::foot,          TerminalApplication::ghostty,   TerminalApplication::xterm};
#endif
}

TerminalApplication platformDefaultTerminal()
{
    return platformTerminalApplications().first();
}

QString identifier(TerminalApplication terminal)
{
    return entryOf(terminal).identifier;
}

std::optional<TerminalApplication> terminalWithIdentifier(const QString &identifier)
{
    for (const TerminalEntry &entry : catalogue()) {
        if (entry.identifier == identifier)
            return entry.terminal;
    }
    return std::nullopt;
}

QString displayName(TerminalApplication terminal)
{
    return entryOf(terminal).name;
}

QString executableName(TerminalApplication terminal)
{
    return entryOf(terminal).executable;
}

TerminalApplication resolveTerminal(const std::optional<QString> &stored, const QList<TerminalApplication> &installed)
{
    if (stored) {
        if (const std::optional<TerminalApplication> chosen = terminalWithIdentifier(*stored);
            chosen && installed.contains(*chosen))
            return *chosen;
    }
    const TerminalApplication own = platformDefaultTerminal();
    if (installed.contains(own))
        return own;
    return installed.isEmpty() ? own : installed.first();
}

QString terminalChoiceCaption()
{
#ifdef Q_OS_MACOS
    return QCoreApplication::translate("tillery::TerminalApplication",
                                       "Used by Open in Terminal. iTerm and Ghostty are shown when installed.");
#else
    return QCoreApplication::translate(
        "tillery::TerminalApplication",
        "Used by Open in Terminal. Only the terminals installed on this computer are shown.");
#endif
}

} // namespace tillery
