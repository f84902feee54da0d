#include "records/SidebarLayout.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

const QString repositoryKey = u"repository"_s;
const QString folderKey = u"folder"_s;
const QString payloadKey = u"_0"_s;

QString uuidText(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

// Thrown inside the decoder and turned into the reason.
struct DecodingError {
    QString reason;
};

[[noreturn]] void fail(const QString &reason)
{
    throw DecodingError{reason};
}

QString stringAt(const QJsonObject &object, const QString &key)
{
    const QJsonValue value = object.value(key);
    if (!value.isString())
        fail(u"Expected a string for the key \"%1\"."_s.arg(key));
    return value.toString();
}

QUuid uuidAt(const QJsonObject &object, const QString &key)
{
    const QUuid id = QUuid::fromString(stringAt(object, key));
    if (id.isNull())
        fail(u"Attempted to decode UUID from invalid UUID string."_s);
    return id;
}

QStringList stringsAt(const QJsonObject &object, const QString &key)
{
    const QJsonValue value = object.value(key);
    if (!value.isArray())
        fail(u"Expected an array for the key \"%1\"."_s.arg(key));
    QStringList strings;
    for (const QJsonValue &element : value.toArray()) {
        if (!element.isString())
            fail(u"Expected a string in the array \"%1\"."_s.arg(key));
        strings.append(element.toString());
    }
    return strings;
}

QJsonArray arrayAt(const QJsonObject &object, const QString &key)
{
    const QJsonValue value = object.value(key);
    if (!value.isArray())
        fail(u"Expected an array for the key \"%1\"."_s.arg(key));
    return value.toArray();
}

QJsonObject objectOf(const QJsonValue &value)
{
    if (!value.isObject())
        fail(u"Expected an object."_s);
    return value.toObject();
}

RepositorySidebarItem decodeItem(const QJsonValue &value)
{
    const QJsonObject item = objectOf(value);
    if (item.size() != 1)
        fail(u"Invalid number of keys found, expected one."_s);
    const QString kind = item.begin().key();
    const QJsonObject payload = objectOf(item.begin().value());
    if (kind == repositoryKey)
        return RepositorySidebarItem::repository(stringAt(payload, payloadKey));
    if (kind == folderKey)
        return RepositorySidebarItem::folder(uuidAt(payload, payloadKey));
    fail(u"Unknown sidebar item \"%1\"."_s.arg(kind));
}

RepositoryFolder decodeFolder(const QJsonValue &value)
{
    const QJsonObject folder = objectOf(value);
    return RepositoryFolder{uuidAt(folder, u"id"_s), stringAt(folder, u"name"_s),
                            stringsAt(folder, u"repositoryPaths"_s)};
}

} // namespace

QByteArray encodeSidebarLayout(const RepositorySidebarLayout &layout)
{
    QJsonArray items;
    for (const RepositorySidebarItem &item : layout.topLevelItems) {
        const QString payload = item.isRepository() ? item.path : uuidText(item.folderId);
        items.append(
            QJsonObject{{item.isRepository() ? repositoryKey : folderKey, QJsonObject{{payloadKey, payload}}}});
    }
    QJsonArray folders;
    for (const RepositoryFolder &folder : layout.folders) {
        folders.append(QJsonObject{{u"id"_s, uuidText(folder.id)},
                                   {u"name"_s, folder.name},
                                   {u"repositoryPaths"_s, QJsonArray::fromStringList(folder.repositoryPaths)}});
    }
    // QJsonObject orders its keys, and "folders" would come first; the
    // arrangement is written with "topLevelItems" first.
    const QByteArray itemsJson = QJsonDocument(items).toJson(QJsonDocument::Compact);
    const QByteArray foldersJson = QJsonDocument(folders).toJson(QJsonDocument::Compact);
    return "{\"topLevelItems\":" + itemsJson + ",\"folders\":" + foldersJson + "}";
}

std::variant<RepositorySidebarLayout, QString> decodeSidebarLayout(const QByteArray &json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        return u"The data is not valid JSON: %1."_s.arg(error.errorString());
    try {
        if (!document.isObject())
            fail(u"Expected an object."_s);
        const QJsonObject root = document.object();
        RepositorySidebarLayout layout;
        if (root.contains(u"folders"_s)) {
            for (const QJsonValue &folder : arrayAt(root, u"folders"_s))
                layout.folders.append(decodeFolder(folder));
        }
        if (root.contains(u"topLevelItems"_s)) {
            for (const QJsonValue &item : arrayAt(root, u"topLevelItems"_s))
                layout.topLevelItems.append(decodeItem(item));
            return layout;
        }
        for (const RepositoryFolder &folder : std::as_const(layout.folders))
            layout.topLevelItems.append(RepositorySidebarItem::folder(folder.id));
        if (root.contains(u"ungroupedPaths"_s)) {
            for (const QString &path : stringsAt(root, u"ungroupedPaths"_s))
                layout.topLevelItems.append(RepositorySidebarItem::repository(path));
        }
        return layout;
    } catch (const DecodingError &decoding) {
        return decoding.reason;
    }
}

} // namespace tillery
