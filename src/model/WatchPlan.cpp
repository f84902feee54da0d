#include "model/WatchPlan.h"

#include "git/GitConflicts.h"
#include "git/GitIgnoredFolders.h"
#include "mercurial/MercurialIgnoredFolders.h"

#include <QDir>
#include <QFileInfo>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

bool isToolFolderName(const QString &name)
{
    return name == u".hg"_s || name == u".git"_s;
}

bool holdsRepository(const QString &folder)
{
    return QFileInfo::exists(folder + u"/.hg"_s) || QFileInfo::exists(folder + u"/.git"_s);
}

QStringList subfolders(const QString &folder)
{
    QStringList found;
    const QFileInfoList entries =
        QDir(folder).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden | QDir::NoSymLinks);
    for (const QFileInfo &entry : entries)
        found << entry.filePath();
    return found;
}

} // namespace

WatchPlan metadataPlan(RepositoryKind kind, const QString &toolFolder, const QString &commonFolder)
{
    WatchPlan plan;
    const auto in = [](const QString &folder, const QStringList &names) {
        QStringList paths;
        for (const QString &name : names)
            paths << folder + u'/' + name;
        return paths;
    };
    if (kind == RepositoryKind::mercurial) {
        plan.stateFolders = {toolFolder, commonFolder};
        plan.refFolders = in(toolFolder, {u"shelved"_s, u"merge"_s});
        plan.stateFiles = in(toolFolder, {u"dirstate"_s, u"bookmarks"_s, u"bookmarks.current"_s, u"branch"_s,
                                          u"rebasestate"_s, u"graftstate"_s, u"shelvedstate"_s, u"histedit-state"_s})
                          + in(commonFolder, {u"00changelog.i"_s, u"phaseroots"_s, u"obsstore"_s, u"bookmarks"_s});
        plan.readTouchedFiles = {toolFolder + u"/dirstate"_s};
        return plan;
    }
    plan.stateFolders = {toolFolder};
    if (commonFolder != toolFolder)
        plan.stateFolders << commonFolder;
    plan.refFolders = {commonFolder + u"/refs"_s};
    plan.stateFiles = in(toolFolder, {u"index"_s, u"HEAD"_s, u"MERGE_HEAD"_s, u"CHERRY_PICK_HEAD"_s, u"REVERT_HEAD"_s,
                                      u"rebase-merge"_s, u"rebase-apply"_s})
                      + in(commonFolder, {u"packed-refs"_s});
    plan.readTouchedFiles = {toolFolder + u"/index"_s};
    return plan;
}

WatchPlan repositoryMetadataPlan(const Repository &repository)
{
    if (repository.kind == RepositoryKind::mercurial)
        return metadataPlan(repository.kind, repository.path + u"/.hg"_s, mercurial::storeFolder(repository.path));
    const QString gitFolder = git::workingGitFolder(repository.path);
    return metadataPlan(repository.kind, gitFolder, git::commonGitFolder(gitFolder));
}

IgnoredQuery ignoredQuery(const Repository &repository)
{
    return [repository](const QStringList &relative) {
        // A name that would break a line of the answer is watched rather than asked about.
        QStringList asked;
        for (const QString &folder : relative) {
            if (!folder.contains(u'\n') && !folder.contains(u'\r'))
                asked << folder;
        }
        return repository.kind == RepositoryKind::mercurial ? mercurial::ignoredFolders(repository.path, asked)
                                                            : git::ignoredFolders(repository.path, asked);
    };
}

QString relativeFolder(const QString &root, const QString &folder)
{
    if (folder == root)
        return QString();
    return folder.startsWith(root + u'/') ? folder.sliced(root.size() + 1) : folder;
}

QStringList workingSubfolders(const QString &folder)
{
    QStringList found;
    for (const QString &candidate : subfolders(folder)) {
        if (!isToolFolderName(QFileInfo(candidate).fileName()) && !holdsRepository(candidate))
            found << candidate;
    }
    return found;
}

QStringList walkWorkingFolders(const QString &root, const QStringList &starts, const IgnoredQuery &ignored,
                               const QSet<QString> &known)
{
    QStringList wanted;
    QStringList depth = starts;
    while (!depth.isEmpty()) {
        QStringList asked;
        QStringList relative;
        for (const QString &folder : std::as_const(depth)) {
            if (known.contains(folder))
                continue;
            if (folder == root) {
                wanted << folder;
                continue;
            }
            asked << folder;
            relative << relativeFolder(root, folder);
        }
        const QSet<QString> left = relative.isEmpty() ? QSet<QString>() : ignored(relative);
        QStringList kept;
        for (qsizetype i = 0; i < asked.size(); ++i) {
            if (!left.contains(relative[i]))
                kept << asked[i];
        }
        wanted += kept;
        if (depth.contains(root) && !known.contains(root))
            kept.prepend(root);
        depth.clear();
        for (const QString &folder : std::as_const(kept))
            depth += workingSubfolders(folder);
    }
    return wanted;
}

QStringList walkAllFolders(const QStringList &folders, const QSet<QString> &known)
{
    QStringList found;
    QStringList pending = folders;
    while (!pending.isEmpty()) {
        const QString folder = pending.takeLast();
        if (!QFileInfo(folder).isDir())
            continue;
        if (!known.contains(folder))
            found << folder;
        pending += subfolders(folder);
    }
    return found;
}

FileStamps stampsOf(const QStringList &paths)
{
    FileStamps stamps;
    for (const QString &path : paths) {
        FileStamp stamp;
        struct stat status { };
        if (::stat(QFile::encodeName(path).constData(), &status) == 0) {
            stamp.exists = true;
            stamp.size = status.st_size;
            stamp.inode = status.st_ino;
            stamp.modified = QFileInfo(path).lastModified().toMSecsSinceEpoch();
        }
        stamps.insert(path, stamp);
    }
    return stamps;
}

} // namespace tillery
