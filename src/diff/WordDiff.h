#pragma once

#include "diff/DiffDocument.h"

#include <QHash>
#include <QList>
#include <QStringView>

#include <optional>

namespace tillery {

// A stretch of a line's text, in UTF-16 units from the line's start (the marker is character 0).
struct ChangedSpan {
    qsizetype start = 0;
    qsizetype length = 0;

    friend bool operator==(const ChangedSpan &, const ChangedSpan &) = default;
};

// The changed stretches of a removed line and of the added line it is paired with.
struct WordChanges {
    QList<ChangedSpan> removed;
    QList<ChangedSpan> added;
};

// Longer lines are not compared: they are generated or minified text whose
// marks nobody reads, and one of them must not hold up painting a screen.
inline constexpr qsizetype wordDiffMaxLineLength = 1000;

// The words that differ between a removed line and the added line paired
// with it, both with their marker. Nothing when either line is longer than
// wordDiffMaxLineLength, when comparing them would cost too much, or when
// they share too little for marks to help. Identical lines have no spans.
std::optional<WordChanges> diffWords(QStringView removedLine, QStringView addedLine);

// Word changes for the paired deletion and addition lines among unified
// lines [first, last] of the document, keyed by unified line index. Lines
// pair as in the document's split rows, however the range cuts their runs;
// a pair with one line in the range comes back whole, so the split layout
// can ask with the lines of either side. Lines without a partner or without
// useful marks are absent. Costs a bisection and the pairs compared, plus,
// when the range starts among the additions of a run with more deletions
// than additions, a walk back over its unpaired deletions.
QHash<qsizetype, QList<ChangedSpan>> wordChangesInRange(const PresentedDiffDocument &document, qsizetype first,
                                                        qsizetype last);

} // namespace tillery
