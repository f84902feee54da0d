#include "ui/ShelfListModel.h"

#include "model/AppModel.h"
#include "ui/RelativeDate.h"

#include <QLocale>

namespace tillery {

ShelfListModel::ShelfListModel(AppModel &model, QObject *parent)
    : QAbstractListModel(parent)
    , m_model(model)
    , m_shelves(model.workspace().snapshot().shelves)
{
    connect(&model.workspace(), &Workspace::snapshotChanged, this, [this] {
        const QList<Shelf> &shelves = m_model.workspace().snapshot().shelves;
        if (shelves == m_shelves)
            return;
        beginResetModel();
        m_shelves = shelves;
        endResetModel();
    });
}

int ShelfListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_shelves.size());
}

QVariant ShelfListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_shelves.size())
        return {};
    const Shelf &shelf = m_shelves[index.row()];
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return shelf.title;
    case AgeRole:
        return relativeDateText(shelf.date, m_clock());
    case Qt::ToolTipRole:
        return QLocale().toString(shelf.date.toLocalTime(), QLocale::LongFormat);
    default:
        return {};
    }
}

int ShelfListModel::rowOf(const QString &id) const
{
    for (qsizetype row = 0; row < m_shelves.size(); ++row) {
        if (m_shelves[row].id == id)
            return static_cast<int>(row);
    }
    return -1;
}

} // namespace tillery
