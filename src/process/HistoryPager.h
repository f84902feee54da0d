#pragma once

#include "records/Changeset.h"

#include <QList>

namespace tillery {

// Changesets in the order the history shows them, newest first.
struct HistoryPage {
    QList<Changeset> changesets;
    // Nothing older is left.
    bool isLast = false;
};

// Reads a repository's history one page after another. Each call blocks
// (background threads only) and throws the tool's failure; one call at a
// time, from any thread. Letting it go stops whatever it still runs.
class HistoryPager {
public:
    virtual ~HistoryPager() = default;
    virtual HistoryPage next(int limit) = 0;
};

} // namespace tillery
