#include "mercurial/MercurialSnapshot.h"

#include "mercurial/MercurialConflictParsers.h"
#include "mercurial/MercurialConflicts.h"
#include "mercurial/MercurialParsers.h"
#include "mercurial/MercurialShelves.h"
#include "mercurial/MercurialTool.h"
#include "process/BackendSteps.h"
#include "process/Concurrently.h"
#include "process/ToolRunner.h"

#include <exception>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

QHash<QString, QDateTime> loadBookmarkDates(const QString &repositoryPath)
{
    try {
        return mercurial::parseBookmarkDates(
            runMercurial(MercurialTool::bookmarkDatesCommand(), repositoryPath).standardOutput);
    } catch (const std::exception &) {
        // Dates are a nicety: without them the bookmarks are simply undated.
        return {};
    }
}

QList<Bookmark> loadBookmarks(const QString &repositoryPath)
{
    const QByteArray output = runMercurial(MercurialTool::bookmarksCommand(), repositoryPath).standardOutput;
    if (output.isEmpty())
        return {};
    return mercurial::parseBookmarks(output, loadBookmarkDates(repositoryPath));
}

} // namespace

RepositorySnapshot loadMercurialSnapshot(const QString &repositoryPath)
{
    // Status takes longest on a large working copy: it runs on a server of its
    // own while the other queries run one after another on another. The
    // shelves follow it there: a repository has two servers at most.
    QList<Shelf> shelves;
    std::future<QList<WorkingFile>> files = startConcurrently([&repositoryPath, &shelves] {
        QList<WorkingFile> working =
            parseMercurialStatus(runMercurial(MercurialTool::statusCommand(), repositoryPath).standardOutput);
        shelves = mercurial::listShelves(repositoryPath);
        return working;
    });
    RepositorySnapshot snapshot;
    QSet<QString> unresolved;
    try {
        const QByteArray conflicts =
            runMercurial(MercurialTool::unresolvedFilesCommand(), repositoryPath).standardOutput;
        unresolved = mercurial::parseUnresolvedPaths(conflicts);
        snapshot.resolvedFiles = mercurial::parseResolvedPaths(conflicts);
        snapshot.history =
            mercurial::parseHistory(runMercurial(MercurialTool::historyCommand(), repositoryPath).standardOutput);
        const QByteArray parents = runMercurial(MercurialTool::workingParentCommand(), repositoryPath).standardOutput;
        snapshot.workingParent = mercurial::parseWorkingParent(parents);
        snapshot.operation = mercurial::operationInProgress(repositoryPath, mercurial::hasSecondParent(parents));
        snapshot.bookmarks = loadBookmarks(repositoryPath);
        snapshot.branch = mercurial::parseCurrentBranch(
            runMercurial(MercurialTool::currentBranchCommand(), repositoryPath).standardOutput);
        snapshot.activeBookmark = activeBookmarkName(snapshot.bookmarks);
        snapshot.paths =
            mercurial::parsePaths(runMercurial(MercurialTool::pathsCommand(), repositoryPath).standardOutput);
        snapshot.defaultBranch = u"default"_s;
        snapshot.currentBranchIsPublished = true;
    } catch (...) {
        rethrowInOrder(files);
    }
    snapshot.files = files.get();
    snapshot.shelves = shelves;
    mercurial::markUnresolved(snapshot.files, unresolved);
    mercurial::addUnlistedUnresolved(snapshot.files, unresolved);
    return snapshot;
}

} // namespace tillery
