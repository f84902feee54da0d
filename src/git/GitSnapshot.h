#pragma once

#include "records/Bookmark.h"
#include "records/RepositorySnapshot.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace tillery {

// Loads the working-copy changes, the local branches with their push state,
// the current branch, the last 250 commits of all branches, the remotes, the
// default branch and whether the current branch is on a remote. Commands run
// one after another; the first failure ends the load with GitFailure.
// Blocks; background threads only.
RepositorySnapshot loadGitSnapshot(const QString &repositoryPath);

namespace git {

// The steps of a load that other operations use on their own.
QString currentBranch(const QString &repositoryPath);
QStringList remoteBranches(const QString &repositoryPath);
QList<Bookmark> branches(const QString &repositoryPath);

} // namespace git
} // namespace tillery
