#pragma once

#include <QString>

namespace tillery {

// Whether the commit user name set in the settings can be used for Git
// commits, which need "Full Name <address>"; Git's own configuration
// applies to commits when it cannot.
bool isUsableGitIdentity(const QString &userName);

} // namespace tillery
