#pragma once

#include "records/WorkingFile.h"

#include <QSet>
#include <QString>

namespace tillery {

// Some of a working file's changes: the diff they were chosen in and the
// ids of the chosen added and removed lines (where each line starts in that
// diff).
struct ChosenChanges {
    WorkingFile file;
    QString shownDiff;
    QSet<qsizetype> lines;
};

} // namespace tillery
