#pragma once

#include <functional>

class QAbstractItemView;
class QMenu;

namespace tillery {

// When the list asks for a context menu over a row, pops up the menu that
// `menuFor` makes for that row; it goes when it closes.
void offerRowMenus(QAbstractItemView *list, std::function<QMenu *(int row)> menuFor);

} // namespace tillery
