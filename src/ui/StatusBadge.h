#pragma once

#include "records/FileState.h"

#include <QColor>
#include <QFont>
#include <QRect>

#include <optional>

class QPainter;

namespace tillery {

// A file state as its letter in the state's colour, centred in 18 points.
namespace statusBadge {

inline constexpr int width = 18;

QColor color(FileState state);
QFont font(const QFont &base);
// On a selected row the letter takes the selection's text colour, as the
// state colours do not read on every highlight.
void paint(QPainter &painter, const QRect &rect, FileState state, const std::optional<QColor> &selectedText = {});

} // namespace statusBadge
} // namespace tillery
