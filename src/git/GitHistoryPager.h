#pragma once

#include "process/HistoryPager.h"
#include "records/HistoryFilter.h"

#include <QString>

#include <memory>

namespace tillery::git {

// Pages through one `git log` that runs for as long as the pager lives, read
// a page at a time: Git sorts the whole history once, and each later page
// costs only its own records. Unfiltered, it skips the `skip` commits a
// snapshot already brought, numbering the rest down from `nextRevision`.
std::unique_ptr<HistoryPager> makeHistoryPager(const QString &repositoryPath, const HistoryFilter &filter,
                                               qsizetype skip, qint64 nextRevision);

} // namespace tillery::git
