#pragma once

#include <QPalette>

namespace tillery {

// A dark palette for the Fusion style, for desktops that do not hand one over.
QPalette darkPalette();

// True when the palette's list background is dark.
bool isDarkPalette(const QPalette &palette);

} // namespace tillery
