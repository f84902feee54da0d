#pragma once

#include "ui/ViewSettings.h"

class QPushButton;

namespace tillery {

// Draws the button in the chosen appearance now and whenever the setting
// changes: the platform's own look, or a shaded, rounded, bordered one (a
// blue one for the primary button of a page).
void followButtonAppearance(QPushButton *button, ViewSettings &settings, bool primary = false);

// The style sheet of the shaded look; empty for the platform's own.
QString buttonStyleSheet(ButtonAppearance appearance, bool primary);

} // namespace tillery
