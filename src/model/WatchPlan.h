#pragma once

#include "records/Repository.h"

#include <QDateTime>
#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>

namespace tillery {

// What to watch in a repository so that a change made outside Tillery
// refreshes it. Paths are absolute.
struct WatchPlan {
    // The tool's own folders (".hg", ".git", the store, a work tree's common
    // folder), where state files come and go, locks among them: a change
    // there matters only when the stamp of a state file changed.
    QStringList stateFolders;
    // Folders under the tool's folder where every change matters (refs,
    // shelves, merge state), with their subfolders; some appear only later.
    QStringList refFolders;
    // The files and folders whose stamps tell a change that matters.
    QStringList stateFiles;
    // Of those, the files that Tillery's own reads may rewrite (a status that
    // records the times of files it found unchanged).
    QStringList readTouchedFiles;
    // The working copy's folders that are not ignored, the root first and
    // parents before their subfolders.
    QStringList workingFolders;
};

// The tool's folders and state files for a kind: `toolFolder` is ".hg" or
// the git folder, `commonFolder` the store or the folder of the refs.
WatchPlan metadataPlan(RepositoryKind kind, const QString &toolFolder, const QString &commonFolder);

// The metadata plan of a repository on disk, its working folders not yet walked.
WatchPlan repositoryMetadataPlan(const Repository &repository);

// The folders among `relative` (paths under the root) that the tool ignores.
using IgnoredQuery = std::function<QSet<QString>(const QStringList &relative)>;
IgnoredQuery ignoredQuery(const Repository &repository);

// The path of `folder` under `root` ("" for the root itself).
QString relativeFolder(const QString &root, const QString &folder);

// Subfolders of `folder` that may hold working files: not the tools'
// folders, not symbolic links, not nested repositories.
QStringList workingSubfolders(const QString &folder);

// Walks down from `starts` (folders under `root` known to be wanted), one
// depth at a time, asking `ignored` about each depth's folders and not going
// into those it names; returns the starts and every wanted folder below,
// leaving out those in `known`.
QStringList walkWorkingFolders(const QString &root, const QStringList &starts, const IgnoredQuery &ignored,
                               const QSet<QString> &known = {});

// Every folder at and under `folders` that exists and is not in `known`.
QStringList walkAllFolders(const QStringList &folders, const QSet<QString> &known);

// Enough of a file's state to tell that it was written, replaced or removed.
struct FileStamp {
    bool exists = false;
    qint64 size = 0;
    qint64 modified = 0;
    quint64 inode = 0;
    friend bool operator==(const FileStamp &, const FileStamp &) = default;
};
using FileStamps = QHash<QString, FileStamp>;
FileStamps stampsOf(const QStringList &paths);

} // namespace tillery
