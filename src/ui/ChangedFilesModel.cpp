#include "ui/ChangedFilesModel.h"

#include "model/AppModel.h"
#include "ui/ShownText.h"

namespace tillery {

ChangedFilesModel::ChangedFilesModel(AppModel &model, Source source, QObject *parent)
    : QAbstractListModel(parent)
    , m_model(model)
    , m_source(source)
{
    if (source == Source::workingCopy) {
        m_files = model.workspace().snapshot().files;
        connect(&model.workspace(), &Workspace::snapshotChanged, this,
                [this] { showFiles(m_model.workspace().snapshot().files); });
        const auto showMarks = [this] {
            if (rowCount() > 0)
                Q_EMIT dataChanged(index(0), index(rowCount() - 1), {Qt::CheckStateRole});
        };
        connect(&model.diffSelection(), &DiffSelection::selectedFilePathsChanged, this, showMarks);
        connect(&model.chosenLines(), &ChosenLines::changed, this, showMarks);
    } else if (source == Source::shelf) {
        m_files = model.shelfSelection().files();
        connect(&model.shelfSelection(), &ShelfSelection::filesChanged, this,
                [this] { showFiles(m_model.shelfSelection().files()); });
    } else {
        m_files = model.diffSelection().changesetFiles();
        connect(&model.diffSelection(), &DiffSelection::changesetFilesChanged, this,
                [this] { showFiles(m_model.diffSelection().changesetFiles()); });
    }
}

void ChangedFilesModel::showFiles(const QList<WorkingFile> &files)
{
    if (files == m_files)
        return;
    beginResetModel();
    m_files = files;
    endResetModel();
}

int ChangedFilesModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_files.size());
}

int ChangedFilesModel::rowOf(const QString &path) const
{
    for (int row = 0; row < m_files.size(); ++row) {
        if (m_files[row].path == path)
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
        return file.path;
    case Qt::ToolTipRole:
        return plainToolTip(file.path);
    case Qt::CheckStateRole:
        if (m_source != Source::workingCopy)
            return QVariant();
        return m_model.chosenLines().fileState(file.path);
    case StateRole:
        return static_cast<int>(file.state);
    default:
        return QVariant();
    }
}

bool ChangedFilesModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || role != Qt::CheckStateRole || m_source != Source::workingCopy)
        return false;
    QSet<QString> marked = m_model.diffSelection().selectedFilePaths();
    const QString &path = fileAt(index.row()).path;
    // A file with some lines chosen is taken whole.
    if (value.toInt() != Qt::Unchecked)
        marked.insert(path);
    else
        marked.remove(path);
    m_model.setSelectedFilePaths(marked);
    return true;
}

Qt::ItemFlags ChangedFilesModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags flags = QAbstractListModel::flags(index);
    return m_source == Source::workingCopy && index.isValid() ? flags | Qt::ItemIsUserCheckable : flags;
}

} // namespace tillery
