#pragma once

#include "process/Cancellation.h"
#include "records/Bookmark.h"
#include "records/Changeset.h"
#include "records/WorkingFile.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// The steps both backends take the same way.
namespace tillery {

// The changeset's id, refused when it would be read as an option.
const QString &checkedChangesetId(const Changeset &changeset);

// The working-copy diff that needs no tool: an untracked file's "new file"
// diff. Throws CancellationFailure when the check already says so.
std::optional<QString> diffWithoutTool(const QString &repositoryPath, const WorkingFile &file,
                                       const CancellationCheck &isCancelled);

// Each item as `toText` gives it; for example each path as a tool's argument.
template <typename Item, typename ToText>
QStringList mappedPaths(const QList<Item> &items, ToText toText)
{
    QStringList texts;
    texts.reserve(items.size());
    for (const Item &item : items)
        texts.append(toText(item));
    return texts;
}

QStringList pathsOf(const QList<WorkingFile> &files);

// The name of the first active bookmark or branch.
std::optional<QString> activeBookmarkName(const QList<Bookmark> &bookmarks);

} // namespace tillery
