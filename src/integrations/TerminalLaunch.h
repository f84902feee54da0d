#pragma once

#include "integrations/InstalledApplications.h"
#include "integrations/LaunchPlan.h"
#include "integrations/TerminalApplication.h"

#include <QList>
#include <QString>

#include <optional>
#include <variant>

namespace tillery {

// The terminals of this platform that are installed, in catalogue order.
QList<TerminalApplication> installedTerminals(const InstalledApplications &applications);

// How to open a new window of the chosen terminal whose shell starts in the
// repository's folder; or the message to show instead.
std::variant<LaunchPlan, QString> terminalLaunchPlan(const std::optional<QString> &storedIdentifier,
                                                     const QString &repositoryPath,
                                                     const InstalledApplications &applications);

} // namespace tillery
