#pragma once

#include "records/Repository.h"

#include <QAbstractItemModel>
#include <QList>
#include <QUrl>
#include <QUuid>

#include <optional>

namespace tillery {

class AppModel;

// The sidebar as a tree: one section "Repositories" whose rows are the
// top-level items in order, folders holding their repositories. Rows drag as
// the repository's path in plain text and take such drops: on the section a
// repository goes to the top level, on a folder into it, on a repository
// next to it. Folders dragged in from the file manager are added.
class SidebarModel final : public QAbstractItemModel {
    Q_OBJECT

public:
    enum Role { KindRole = Qt::UserRole + 1, PathRole, FolderRole };
    enum class Kind { section, repository, folder };

    explicit SidebarModel(AppModel &model, QObject *parent = nullptr);

    QModelIndex index(int row, int column, const QModelIndex &parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    Qt::DropActions supportedDropActions() const override;
    QStringList mimeTypes() const override;
    QMimeData *mimeData(const QModelIndexList &indexes) const override;
    bool canDropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                         const QModelIndex &parent) const override;
    bool dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                      const QModelIndex &parent) override;

    QModelIndex sectionIndex() const;
    QModelIndex indexOfRepository(const QString &path) const;
    QModelIndex indexOfFolder(const QUuid &folderId) const;
    std::optional<Repository> repositoryAt(const QModelIndex &index) const;

private:
    // An item's identity packed into the index: 0 the section, 1 + n the
    // top-level item n, and for a folder's repository the folder's row and
    // the repository's place inside it.
    static quintptr packed(int topRow, int childRow);
    // The local folders a drag from outside carries.
    static QList<QUrl> droppedFolders(const QMimeData *data);
    // A drag of one of our own rows: a known repository's path.
    bool isRepositoryDrag(const QMimeData *data) const;
    Kind kindOf(const QModelIndex &index) const;
    void rebuild();

    AppModel &m_model;
};

} // namespace tillery
