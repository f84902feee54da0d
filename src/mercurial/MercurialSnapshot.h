#pragma once

#include "records/RepositorySnapshot.h"

#include <QString>

namespace tillery {

// Loads the working-copy changes (conflicts marked), the last 250 changesets,
// the bookmarks with their dates, the branch and the remote paths, running
// seven queries one after another. Fails with MercurialFailure, or with
// PlatformFailure when JSON does not parse. Blocks; background threads only.
RepositorySnapshot loadMercurialSnapshot(const QString &repositoryPath);

} // namespace tillery
