#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <variant>

namespace tillery {

// One top-level row of the sidebar: a repository (by path) or a folder (by id).
struct RepositorySidebarItem {
    enum class Kind { repository, folder };

    Kind kind = Kind::repository;
    QString path;
    QUuid folderId;

    static RepositorySidebarItem repository(const QString &path) { return {Kind::repository, path, {}}; }
    static RepositorySidebarItem folder(const QUuid &id) { return {Kind::folder, {}, id}; }

    bool isRepository() const { return kind == Kind::repository; }
    bool isFolder() const { return kind == Kind::folder; }
    friend bool operator==(const RepositorySidebarItem &, const RepositorySidebarItem &) = default;
};

// A folder of the sidebar and its repositories, in display order.
struct RepositoryFolder {
    QUuid id;
    QString name;
    QStringList repositoryPaths;

    friend bool operator==(const RepositoryFolder &, const RepositoryFolder &) = default;
};

// The persisted arrangement of the sidebar.
struct RepositorySidebarLayout {
    QList<RepositorySidebarItem> topLevelItems;
    QList<RepositoryFolder> folders;

    friend bool operator==(const RepositorySidebarLayout &, const RepositorySidebarLayout &) = default;
};

// {"topLevelItems": [{"repository": {"_0": path}} | {"folder": {"_0": UUID}}],
//  "folders": [{"id": UUID, "name": ..., "repositoryPaths": [...]}]}
QByteArray encodeSidebarLayout(const RepositorySidebarLayout &layout);

// The layout, or the reason it could not be read. Older data without
// "topLevelItems" lists its folders first, then its "ungroupedPaths".
std::variant<RepositorySidebarLayout, QString> decodeSidebarLayout(const QByteArray &json);

} // namespace tillery
