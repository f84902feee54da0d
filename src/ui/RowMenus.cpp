#include "ui/RowMenus.h"

#include <QAbstractItemView>
#include <QMenu>

namespace tillery {

void offerRowMenus(QAbstractItemView *list, std::function<QMenu *(int row)> menuFor)
{
    list->setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(list, &QAbstractItemView::customContextMenuRequested, list,
                     [list, menuFor = std::move(menuFor)](const QPoint &position) {
                         const QModelIndex index = list->indexAt(position);
                         if (!index.isValid())
                             return;
                         QMenu *menu = menuFor(index.row());
                         menu->setAttribute(Qt::WA_DeleteOnClose);
                         menu->popup(list->viewport()->mapToGlobal(position));
                     });
}

} // namespace tillery
