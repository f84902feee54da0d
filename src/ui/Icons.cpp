#include "ui/Icons.h"

#include <QHash>

using namespace Qt::StringLiterals;

// The drawings live in this library; a static library's resources must be
// registered by hand before first use.
static void registerBundledIcons()
{
    static const bool registered = [] {
        Q_INIT_RESOURCE(icons);
        return true;
    }();
    Q_UNUSED(registered);
}

namespace tillery {

namespace {

struct SymbolMapping {
    QString themeName;
    QString bundled;
};

const QHash<QString, SymbolMapping> &mappings()
{
    static const QHash<QString, SymbolMapping> table{
        {u"point.3.connected.trianglepath.dotted"_s, {u"network-workgroup"_s, u"network"_s}},
        {u"folder"_s, {u"folder"_s, u"folder"_s}},
        {u"doc.text"_s, {u"text-x-generic"_s, u"doc-text"_s}},
        {u"doc.text.magnifyingglass"_s, {u"edit-find"_s, u"doc-search"_s}},
        {u"checkmark"_s, {u"object-select-symbolic"_s, u"checkmark"_s}},
        {u"checkmark.circle"_s, {u"emblem-ok-symbolic"_s, u"checkmark-circle"_s}},
        {u"gearshape"_s, {u"emblem-system-symbolic"_s, u"gear"_s}},
        {u"plus"_s, {u"list-add"_s, u"plus"_s}},
        {u"arrow.triangle.branch"_s, {u"vcs-branch"_s, u"branch"_s}},
        {u"terminal"_s, {u"utilities-terminal"_s, u"terminal"_s}},
        {u"arrow.clockwise"_s, {u"view-refresh"_s, u"refresh"_s}},
        {u"arrow.down.circle"_s, {u"go-down"_s, u"arrow-down"_s}},
        {u"arrow.up.circle"_s, {u"go-up"_s, u"arrow-up"_s}},
        {u"arrow.triangle.2.circlepath"_s, {u"emblem-synchronizing-symbolic"_s, u"arrow-fetch"_s}},
        {u"pencil"_s, {u"accessories-text-editor"_s, u"editor"_s}},
        {u"photo"_s, {u"image-x-generic"_s, u"image"_s}},
        {u"doc.on.doc"_s, {u"edit-copy"_s, u"copy"_s}},
        {u"clock"_s, {u"document-open-recent"_s, u"clock"_s}},
    };
    return table;
}

QIcon bundledIcon(const QString &name)
{
    registerBundledIcons();
    return QIcon(u":/icons/icons/"_s + name + u".svg"_s);
}

} // namespace

QIcon symbolIcon(const QString &symbolName)
{
    const auto mapping = mappings().constFind(symbolName);
    if (mapping == mappings().cend())
        return QIcon();
    return QIcon::fromTheme(mapping->themeName, bundledIcon(mapping->bundled));
}

QIcon repositoryKindIcon(RepositoryKind kind)
{
    return bundledIcon(kind == RepositoryKind::git ? u"git"_s : u"mercurial"_s);
}

} // namespace tillery
