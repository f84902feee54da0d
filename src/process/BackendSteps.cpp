#include "process/BackendSteps.h"

#include "process/Failure.h"
#include "process/NewFileDiff.h"
#include "process/OptionLike.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace tillery {

void refuseCloneArguments(const QString &source, const QString &destination)
{
    refuseOptionLike(source, u"a clone source"_s);
    refuseOptionLike(destination, u"a clone destination"_s);
}

void makeRepositoryFolder(const QString &path)
{
    refuseOptionLike(path, u"a repository folder"_s);
    if (!QDir().mkpath(path))
        throw PlatformFailure(u"The folder %1 could not be created."_s.arg(path));
}

const QString &checkedChangesetId(const Changeset &changeset)
{
    refuseOptionLike(changeset.node, u"a revision"_s);
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
    QStringList paths;
    paths.reserve(files.size());
    for (const WorkingFile &file : files)
        paths.append(file.path);
    return paths;
}

QStringList mappedPaths(const QStringList &paths, QString (*argument)(const QString &))
{
    QStringList arguments;
    arguments.reserve(paths.size());
    for (const QString &path : paths)
        arguments.append(argument(path));
    return arguments;
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
