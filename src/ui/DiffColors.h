#pragma once

#include "diff/DiffDocument.h"

#include <QColor>
#include <QPalette>

namespace tillery {

// The colours of a diff row, made from the palette so that they read well
// in both light and dark appearances.
struct DiffRowColors {
    QColor background;
    QColor text;
};

DiffRowColors diffRowColors(DiffLineKind kind, const QPalette &palette);
// A line of a conflict: the working copy's side in blue, the side merged in
// in orange, the ancestor's in grey, the markers stronger; the line's own
// colours outside a conflict.
DiffRowColors diffRowColors(const PresentedDiffLine &line, const QPalette &palette);
// Behind the changed words of a removed or added line paired with another.
QColor changedWordsColor(DiffLineKind kind, const QPalette &palette);
// The line-number cells: the control background at 0.72 opacity over the row.
QColor gutterColor(const QPalette &palette);

// The background of a run of annotated lines from one changeset: runs
// alternate between the base and a shade of it a little towards the text.
QColor annotationRunColor(qsizetype run, const QPalette &palette);

} // namespace tillery
