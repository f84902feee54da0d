#pragma once

#include "process/Cancellation.h"
#include "records/Bookmark.h"
#include "records/Changeset.h"
#include "records/WorkingFile.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>
#include <type_traits>

// The steps both backends take the same way.
namespace tillery {

// The changeset's id, refused when it would be read as an option.
const QString &checkedChangesetId(const Changeset &changeset);

// The working-copy diff that needs no tool: an untracked file's "new file"
// diff. Throws CancellationFailure when the check already says so.
std::optional<QString> diffWithoutTool(const QString &repositoryPath, const WorkingFile &file,
                                       const CancellationCheck &isCancelled);

// Each item as `map` gives it.
template <typename Item, typename Map>
auto mapped(const QList<Item> &items, Map map)
{
    QList<std::decay_t<std::invoke_result_t<Map, const Item &>>> results;
    results.reserve(items.size());
    for (const Item &item : items)
        results.append(map(item));
    return results;
}

// Each item as `toText` gives it; for example each path as a tool's argument.
template <typename Item, typename ToText>
QStringList mappedPaths(const QList<Item> &items, ToText toText)
{
    return mapped(items, toText);
}

QStringList pathsOf(const QList<WorkingFile> &files);

// The name of the first active bookmark or branch.
std::optional<QString> activeBookmarkName(const QList<Bookmark> &bookmarks);

} // namespace tillery
