#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace tillery {

// How the editors and terminals installed here are found. A value, so that
// launch plans can be worked out (and tested) apart from the system.
struct InstalledApplications {
    // Linux: a program on the search path.
    std::function<std::optional<QString>(const QString &name)> findProgram;
    // Linux: the command line an installed desktop file ("org.kde.kate")
    // starts, its program found, its field codes in place (see
    // desktopEntryCommand()).
    std::function<std::optional<QStringList>(const QString &desktopId)> desktopFileCommand;
    // macOS: the application bundle with this identifier.
    std::function<std::optional<QString>(const QString &bundleIdentifier)> findBundle;

    // What this computer has.
    static InstalledApplications system();
};

} // namespace tillery
