#pragma once

#include <QString>

class QMessageBox;

namespace tillery {

// Names that come from files, repositories, branches, tools and settings, made to show exactly as
// they are where Qt would otherwise read them as markup.

// For a menu item or button: a lone "&" would mark the next letter as a keyboard mnemonic and vanish.
QString menuLabel(const QString &text);

// For a tooltip: text that looks like HTML would be drawn as HTML.
QString plainToolTip(const QString &text);

// For a message box whose texts are set: both its text and its informative text are shown as plain
// text (the box's own text format does not reach the informative text).
void showMessageAsPlainText(QMessageBox &box);

} // namespace tillery
