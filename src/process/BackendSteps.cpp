#include "process/BackendSteps.h"

#include "process/Failure.h"
#include "process/NewFileDiff.h"
#include "process/OptionLike.h"

using namespace Qt::StringLiterals;

namespace tillery {

const QString &checkedChangesetId(const Changeset &changeset)
{
    refuseOptionLike(changeset.node, QT_TRANSLATE_NOOP("tillery::OptionLike", "A revision cannot begin with “-”."));
    return changeset.node;
}

std::optional<QString> diffWithoutTool(const QString &repositoryPath, const WorkingFile &file,
                                       const CancellationCheck &isCancelled)
{
    if (isCancelled())
        throw CancellationFailure();
    if (file.state == FileState::untracked)
        return newFileDiff(repositoryPath, file.path, isCancelled);
    return std::nullopt;
}

QStringList pathsOf(const QList<WorkingFile> &files)
{
    return mappedPaths(files, [](const WorkingFile &file) { return file.path; });
}

std::optional<QString> activeBookmarkName(const QList<Bookmark> &bookmarks)
{
    for (const Bookmark &bookmark : bookmarks) {
        if (bookmark.active)
            return bookmark.name;
    }
    return std::nullopt;
}

} // namespace tillery
