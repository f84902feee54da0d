#include "ui/SidebarModel.h"

#include "model/AppModel.h"
#include "model/SidebarArrangement.h"
#include "ui/Icons.h"
#include "ui/ShownText.h"

#include <QFileInfo>
#include <QFont>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QMimeData>
#include <QPalette>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

constexpr quintptr sectionId = 0;
// Internal ids: top-level rows count from 1; a folder's repository adds
// (its row + 1) << 20 to its folder's id.
constexpr int childShift = 20;

} // namespace

SidebarModel::SidebarModel(AppModel &model, QObject *parent)
    : QAbstractItemModel(parent)
    , m_model(model)
{
    connect(&model.library(), &RepositoryLibrary::sidebarChanged, this, &SidebarModel::rebuild);
    connect(&model.library(), &RepositoryLibrary::repositoriesChanged, this, &SidebarModel::rebuild);
    connect(&model.icons(), &RepositoryIcons::iconsChanged, this, &SidebarModel::rebuild);
}

void SidebarModel::rebuild()
{
    beginResetModel();
    endResetModel();
}

quintptr SidebarModel::packed(int topRow, int childRow)
{
    return static_cast<quintptr>(topRow + 1) + (childRow < 0 ? 0 : static_cast<quintptr>(childRow + 1) << childShift);
}

SidebarModel::Kind SidebarModel::kindOf(const QModelIndex &index) const
{
    if (index.internalId() == sectionId)
        return Kind::section;
    if ((index.internalId() >> childShift) != 0)
        return Kind::repository;
    const int top = static_cast<int>(index.internalId()) - 1;
    return m_model.library().sidebarItems()[top].isFolder() ? Kind::folder : Kind::repository;
}

QModelIndex SidebarModel::index(int row, int column, const QModelIndex &parent) const
{
    if (column != 0 || row < 0 || row >= rowCount(parent))
        return QModelIndex();
    if (!parent.isValid())
        return createIndex(row, 0, sectionId);
    if (parent.internalId() == sectionId)
        return createIndex(row, 0, packed(row, -1));
    return createIndex(row, 0, packed(parent.row(), row));
}

QModelIndex SidebarModel::parent(const QModelIndex &child) const
{
    if (!child.isValid() || child.internalId() == sectionId)
        return QModelIndex();
    const quintptr inner = child.internalId() >> childShift;
    if (inner == 0)
        return createIndex(0, 0, sectionId);
    const int top = static_cast<int>(child.internalId() & ((quintptr(1) << childShift) - 1)) - 1;
    return createIndex(top, 0, packed(top, -1));
}

int SidebarModel::rowCount(const QModelIndex &parent) const
{
    if (!parent.isValid())
        return 1;
    if (parent.internalId() == sectionId)
        return static_cast<int>(m_model.library().sidebarItems().size());
    if (kindOf(parent) != Kind::folder)
        return 0;
    const RepositorySidebarItem &item = m_model.library().sidebarItems()[parent.row()];
    const RepositoryFolder *folder = sidebar::folderWithId(m_model.library().layout(), item.folderId);
    return folder ? static_cast<int>(folder->repositoryPaths.size()) : 0;
}

int SidebarModel::columnCount(const QModelIndex &) const
{
    return 1;
}

std::optional<Repository> SidebarModel::repositoryAt(const QModelIndex &index) const
{
    const QString path = index.data(PathRole).toString();
    return path.isEmpty() ? std::nullopt : m_model.library().repositoryWithPath(path);
}

QVariant SidebarModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return QVariant();
    const Kind kind = kindOf(index);
    if (role == KindRole)
        return static_cast<int>(kind);
    // Every row, the heading too, is as high as a 20-point icon needs: the
    // view takes one row's height for all.
    if (role == Qt::SizeHintRole)
        return QSize(-1, std::max(28, QFontMetrics(QGuiApplication::font()).height() + 10));
    if (kind == Kind::section) {
        // A heading, as sidebars show them: small, bold and quiet.
        switch (role) {
        case Qt::DisplayRole:
            return tr("Repositories");
        case Qt::FontRole: {
            QFont font;
            font.setPointSizeF(font.pointSizeF() * 0.9);
            font.setBold(true);
            return font;
        }
        case Qt::ForegroundRole:
            return QGuiApplication::palette().brush(QPalette::PlaceholderText);
        default:
            return QVariant();
        }
    }

    const RepositoryLibrary &library = m_model.library();
    if (kind == Kind::folder) {
        const RepositoryFolder *folder =
            sidebar::folderWithId(library.layout(), library.sidebarItems()[index.row()].folderId);
        if (!folder)
            return QVariant();
        switch (role) {
        case Qt::DisplayRole:
        case Qt::EditRole:
            return folder->name;
        case Qt::DecorationRole:
            return symbolIcon(u"folder"_s);
        case FolderRole:
            return folder->id;
        case Qt::FontRole: {
            QFont font;
            font.setWeight(QFont::Medium);
            return font;
        }
        default:
            return QVariant();
        }
    }

    QString path;
    if ((index.internalId() >> childShift) == 0) {
        path = library.sidebarItems()[index.row()].path;
    } else {
        const int top = static_cast<int>(index.internalId() & ((quintptr(1) << childShift) - 1)) - 1;
        const RepositoryFolder *folder = sidebar::folderWithId(library.layout(), library.sidebarItems()[top].folderId);
        path = folder ? folder->repositoryPaths.value(index.row()) : QString();
    }
    switch (role) {
    case Qt::DisplayRole:
        return QFileInfo(path).fileName();
    case Qt::ToolTipRole:
        return plainToolTip(path);
    case PathRole:
        return path;
    case Qt::DecorationRole: {
        const QImage custom = m_model.icons().icons().value(path);
        if (!custom.isNull())
            return QIcon(roundedPicture(custom, 20, 4));
        const std::optional<Repository> repository = library.repositoryWithPath(path);
        return repositoryKindIcon(repository ? repository->kind : RepositoryKind::mercurial);
    }
    default:
        return QVariant();
    }
}

Qt::ItemFlags SidebarModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    switch (kindOf(index)) {
    case Kind::section:
        return Qt::ItemIsEnabled | Qt::ItemIsDropEnabled;
    case Kind::folder:
        return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDropEnabled;
    case Kind::repository:
        break;
    }
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled;
}

Qt::DropActions SidebarModel::supportedDropActions() const
{
    return Qt::MoveAction;
}

QList<QUrl> SidebarModel::droppedFolders(const QMimeData *data)
{
    QList<QUrl> folders;
    for (const QUrl &url : data->urls()) {
        if (url.isLocalFile() && QFileInfo(url.toLocalFile()).isDir())
            folders.append(url);
    }
    return folders;
}

QStringList SidebarModel::mimeTypes() const
{
    return {u"text/plain"_s, u"text/uri-list"_s};
}

QMimeData *SidebarModel::mimeData(const QModelIndexList &indexes) const
{
    for (const QModelIndex &index : indexes) {
        const QString path = index.data(PathRole).toString();
        if (!path.isEmpty()) {
            auto *data = new QMimeData;
            data->setText(path);
            return data;
        }
    }
    return nullptr;
}

bool SidebarModel::isRepositoryDrag(const QMimeData *data) const
{
    return data->hasText() && m_model.library().repositoryWithPath(data->text());
}

bool SidebarModel::canDropMimeData(const QMimeData *data, Qt::DropAction, int, int, const QModelIndex &parent) const
{
    if (!data || !parent.isValid())
        return false;
    return isRepositoryDrag(data) || !droppedFolders(data).isEmpty();
}

bool SidebarModel::dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                                const QModelIndex &parent)
{
    if (!canDropMimeData(data, action, row, column, parent))
        return false;
    if (!isRepositoryDrag(data)) {
        // Folders from the file manager: added like the add command's choice.
        m_model.addRepositories(droppedFolders(data));
        return true;
    }
    const QString path = data->text();
    switch (kindOf(parent)) {
    case Kind::section:
        if (row >= 0) {
            // Between two top-level rows: out of any folder, to that place.
            m_model.moveRepositoryBefore(path, row);
        } else {
            m_model.moveToTopLevel(path);
        }
        return true;
    case Kind::folder:
        m_model.moveIntoFolder(path, parent.data(FolderRole).toUuid());
        return true;
    case Kind::repository: {
        const QModelIndex holder = parent.parent();
        if (kindOf(holder) == Kind::folder)
            m_model.moveIntoFolder(path, holder.data(FolderRole).toUuid());
        else if (parent.data(PathRole).toString() != path)
            m_model.moveRepositoryBefore(path, parent.row());
        return true;
    }
    }
    return false;
}

QModelIndex SidebarModel::sectionIndex() const
{
    return index(0, 0);
}

QModelIndex SidebarModel::indexOfRepository(const QString &path) const
{
    const QModelIndex section = sectionIndex();
    for (int top = 0; top < rowCount(section); ++top) {
        const QModelIndex item = index(top, 0, section);
        if (item.data(PathRole).toString() == path)
            return item;
        for (int child = 0; child < rowCount(item); ++child) {
            const QModelIndex inner = index(child, 0, item);
            if (inner.data(PathRole).toString() == path)
                return inner;
        }
    }
    return QModelIndex();
}

QModelIndex SidebarModel::indexOfFolder(const QUuid &folderId) const
{
    const QModelIndex section = sectionIndex();
    for (int top = 0; top < rowCount(section); ++top) {
        const QModelIndex item = index(top, 0, section);
        if (item.data(FolderRole).toUuid() == folderId)
            return item;
    }
    return QModelIndex();
}

} // namespace tillery
