#pragma once

#include "records/RepositorySnapshot.h"

#include <QString>

#include <optional>

namespace tillery {

// Loads the working-copy changes, the local branches with their push state,
// the current branch, the last 250 commits of all branches, the remotes, the
// default branch and whether the current branch is on a remote. The first
// failure ends the load with GitFailure. Blocks; background threads only.
RepositorySnapshot loadGitSnapshot(const QString &repositoryPath);

namespace git {

// The branch HEAD names; nothing when HEAD is detached.
std::optional<QString> currentBranch(const QString &repositoryPath);

} // namespace git
} // namespace tillery
