#pragma once

#include <QString>

#include <functional>
#include <optional>

namespace tillery {

// How the editors and terminals installed here are found. A value, so that
// launch plans can be worked out (and tested) apart from the system.
struct InstalledApplications {
    // Linux: a program on the search path.
    std::function<std::optional<QString>(const QString &name)> findProgram;
    // Linux: the program an installed desktop file ("org.kde.kate") starts.
    std::function<std::optional<QString>(const QString &desktopId)> desktopFileProgram;
    // macOS: the application bundle with this identifier.
    std::function<std::optional<QString>(const QString &bundleIdentifier)> findBundle;

    // What this computer has.
    static InstalledApplications system();
};

// The program named by the Exec line of a desktop file's main entry.
std::optional<QString> programOfDesktopEntry(const QString &desktopFileText);

} // namespace tillery
