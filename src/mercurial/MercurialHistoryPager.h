#pragma once

#include "process/HistoryPager.h"
#include "records/HistoryFilter.h"

#include <QString>

#include <memory>
#include <optional>

namespace tillery::mercurial {

// The changesets below `belowRevision` (all of them without it), newest
// first, that match the filter.
QString historyRevset(const HistoryFilter &filter, std::optional<qint64> belowRevision);

// Pages through the history by revision number: each page asks for the
// changesets below the last one it returned.
std::unique_ptr<HistoryPager> makeHistoryPager(const QString &repositoryPath, const HistoryFilter &filter,
                                               std::optional<qint64> belowRevision);

} // namespace tillery::mercurial
