#include "ui/ChangedFilesModel.h"

#include "model/AppModel.h"

namespace tillery {

ChangedFilesModel::ChangedFilesModel(AppModel &model, QObject *parent)
    : QAbstractListModel(parent)
    , m_model(model)
{
    connect(&model.workspace(), &Workspace::snapshotChanged, this, [this] {
        beginResetModel();
        endResetModel();
    });
    connect(&model.diffSelection(), &DiffSelection::selectedFilePathsChanged, this, [this] {
        if (rowCount() > 0)
            Q_EMIT dataChanged(index(0), index(rowCount() - 1), {Qt::CheckStateRole});
    });
}

int ChangedFilesModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_model.workspace().snapshot().files.size());
}

const WorkingFile &ChangedFilesModel::fileAt(int row) const
{
    return m_model.workspace().snapshot().files[row];
}

int ChangedFilesModel::rowOf(const QString &path) const
{
    const QList<WorkingFile> &files = m_model.workspace().snapshot().files;
    for (int row = 0; row < files.size(); ++row) {
        if (files[row].path == path)
            return row;
    }
    return -1;
}

QVariant ChangedFilesModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return QVariant();
    const WorkingFile &file = fileAt(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return file.path;
    case Qt::CheckStateRole:
        return m_model.diffSelection().selectedFilePaths().contains(file.path) ? Qt::Checked : Qt::Unchecked;
    case StateRole:
        return static_cast<int>(file.state);
    default:
        return QVariant();
    }
}

bool ChangedFilesModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || role != Qt::CheckStateRole)
        return false;
    QSet<QString> marked = m_model.diffSelection().selectedFilePaths();
    const QString &path = fileAt(index.row()).path;
    if (value.toInt() == Qt::Checked)
        marked.insert(path);
    else
        marked.remove(path);
    m_model.setSelectedFilePaths(marked);
    return true;
}

Qt::ItemFlags ChangedFilesModel::flags(const QModelIndex &index) const
{
    return QAbstractListModel::flags(index) | Qt::ItemIsUserCheckable;
}

} // namespace tillery
