#pragma once

#include "records/Repository.h"

#include <QString>

namespace tillery {

// The root of the Mercurial repository that contains `path` ("hg root" run
// in that folder); fails with MercurialFailure.
QString mercurialRoot(const QString &path);

// The root of the Git work tree that contains `path`
// ("git rev-parse --show-toplevel" run in that folder); fails with GitFailure.
QString gitRoot(const QString &path);

// The innermost repository that contains `path`: asks Git, then Mercurial,
// and keeps the candidate with the longest root (Git on a tie). Fails with
// RepositoryFailure when neither tool recognises the folder.
Repository detectRepository(const QString &path);

} // namespace tillery
