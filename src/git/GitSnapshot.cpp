#include "git/GitSnapshot.h"

#include "git/CommitLogCache.h"
#include "git/GitConflicts.h"
#include "git/GitParsers.h"
#include "git/GitShelves.h"
#include "git/GitTool.h"
#include "process/BackendSteps.h"
#include "process/Concurrently.h"
#include "process/ToolRunner.h"
#include "records/TextDecoding.h"

#include <QDir>
#include <QFile>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tillery {

namespace git {

namespace {

const auto outputOf = [](const ToolCommand &command, const QString &repositoryPath,
                        const RunControl &control = {}) { return GitTool::output(command, repositoryPath, control); };

bool needsPush(const LocalBranchRecord &branch, const QStringList &remoteBranchList, const QString &repositoryPath)
{
    if (!branch.upstream.isEmpty())
        return trackingNeedsPush(branch.tracking);
    const std::optional<QString> counterpart = remoteCounterpart(branch.name, remoteBranchList);
    if (!counterpart)
        return true;
    const QByteArray output = outputOf(GitTool::unpushedCountCommand(*counterpart, branch.name), repositoryPath);
    return parseCount(output).value_or(0) > 0;
}

QList<Bookmark> branches(const QList<LocalBranchRecord> &records, const std::optional<QString> &current,
                         const QStringList &remoteBranchList, const QString &repositoryPath)
{
    QList<Bookmark> branchList;
    branchList.reserve(records.size() + 1);
    for (const LocalBranchRecord &record : records) {
        branchList.append(Bookmark{record.name, 0, record.hash, record.active, record.date,
                                   needsPush(record, remoteBranchList, repositoryPath)});
    }
    // A repository without commits has a current branch that no ref names yet.
    const bool listed = current
                        && std::any_of(branchList.cbegin(), branchList.cend(),
                                       [&current](const Bookmark &branch) { return branch.name == *current; });
    if (current && !listed)
        branchList.append(Bookmark{*current, 0, QString(), true, std::nullopt, true});
    sortBranches(branchList);
    return branchList;
}

// The refs, HEAD and a shallow clone's cut-off: the log and the count read
// the same while none of them moves.
QByteArray commitLogKey(const QByteArray &head, const QString &repositoryPath)
{
    QByteArray key = head + outputOf(GitTool::allRefsCommand(), repositoryPath);
    const QString shallowPath = decodeUtf8OrEmpty(outputOf(GitTool::shallowFileCommand(), repositoryPath)).trimmed();
    QFile shallow(QDir(repositoryPath).filePath(shallowPath));
    if (!shallowPath.isEmpty() && shallow.open(QIODevice::ReadOnly))
        key += '\0' + shallow.readAll();
    return key;
}

// Nothing when there is no commit yet. The refs read for the key tell
// whether there is a stash.
std::optional<CommitLogOutputs> readCommitLog(const QString &repositoryPath, bool &hasStash)
{
    const CommandOutput head = runGit(GitTool::verifyHeadCommand(), repositoryPath);
    if (head.status != 0)
        return std::nullopt;
    const QByteArray key = commitLogKey(head.standardOutput, repositoryPath);
    hasStash = key.contains(" refs/stash\n");
    if (std::optional<CommitLogOutputs> cached = cachedCommitLog(repositoryPath, key))
        return cached;
    CommitLogOutputs outputs;
    outputs.head = decodeUtf8OrEmpty(head.standardOutput).trimmed();
    std::future<QByteArray> count =
        startConcurrently([&repositoryPath] { return outputOf(GitTool::commitCountCommand(), repositoryPath); });
    outputs.log = outputOf(GitTool::historyCommand(), repositoryPath);
    outputs.count = count.get();
    storeCommitLog(repositoryPath, key, outputs);
    return outputs;
}

QList<Changeset> history(const QList<LocalBranchRecord> &branchRecords, const QHash<QString, QStringList> &tags,
                         const std::optional<CommitLogOutputs> &outputs)
{
    if (!outputs)
        return {};
    QHash<QString, QStringList> branchesByCommit;
    for (const LocalBranchRecord &record : branchRecords)
        branchesByCommit[record.hash].append(record.name);
    return parseHistory(outputs->log, parseCount(outputs->count).value_or(0), branchesByCommit, tags);
}

QMap<QString, QString> remotes(const QString &repositoryPath)
{
    QMap<QString, QString> urls;
    for (const QString &remote : parseLines(outputOf(GitTool::remotesCommand(), repositoryPath))) {
        const QString url = decodeUtf8OrEmpty(outputOf(GitTool::remoteUrlCommand(remote), repositoryPath)).trimmed();
        if (!url.isEmpty())
            urls.insert(remote, url);
    }
    if (const auto origin = urls.constFind(u"origin"_s); origin != urls.cend())
        urls.insert(u"default"_s, *origin);
    return urls;
}

bool isPublished(const std::optional<QString> &branch, const QStringList &remoteBranchList,
                 const QString &repositoryPath)
{
    if (!branch)
        return true;
    if (runGit(GitTool::upstreamCommand(), repositoryPath).status == 0)
        return true;
    const QString suffix = u'/' + *branch;
    return std::any_of(remoteBranchList.cbegin(), remoteBranchList.cend(),
                       [&suffix](const QString &remoteBranch) { return remoteBranch.endsWith(suffix); });
}

QList<WorkingFile> workingFiles(const QString &repositoryPath)
{
    // A repository's own configuration must not make every refresh run a
    // program of its choosing; the person's choice of monitor stands.
    const bool monitorChosenByPerson =
        personEnablesFilesystemMonitor(outputOf(GitTool::filesystemMonitorScopeCommand(), repositoryPath));
    const ToolCommand status = GitTool::statusCommand();
    return parseStatus(
        outputOf(monitorChosenByPerson ? status : GitTool::withoutFilesystemMonitor(status), repositoryPath));
}

} // namespace

std::optional<QString> currentBranch(const QString &repositoryPath)
{
    return parseCurrentBranch(outputOf(GitTool::currentBranchCommand(), repositoryPath));
}

} // namespace git

RepositorySnapshot loadGitSnapshot(const QString &repositoryPath)
{
    using namespace git;
    // Status takes longest on a large working copy, the log and the count of
    // commits next; the other queries run beside them.
    std::future<QList<WorkingFile>> files =
        startConcurrently([&repositoryPath] { return workingFiles(repositoryPath); });
    // The stash entries follow the log, only where there is a stash.
    QList<Shelf> stashes;
    std::future<std::optional<CommitLogOutputs>> commitLog = startConcurrently([&repositoryPath, &stashes] {
        bool hasStash = false;
        std::optional<CommitLogOutputs> log = readCommitLog(repositoryPath, hasStash);
        if (hasStash)
            stashes = listStashes(repositoryPath);
        return log;
    });
    RepositorySnapshot snapshot;
    try {
        const QList<LocalBranchRecord> branchRecords =
            parseLocalBranches(outputOf(GitTool::localBranchesCommand(), repositoryPath));
        const QStringList remoteBranchList = parseLines(outputOf(GitTool::remoteBranchesCommand(), repositoryPath));
        const std::optional<QString> current = currentBranch(repositoryPath);
        snapshot.bookmarks = branches(branchRecords, current, remoteBranchList, repositoryPath);
        snapshot.branch = current.value_or(u"detached"_s);
        snapshot.paths = remotes(repositoryPath);
        snapshot.activeBookmark = activeBookmarkName(snapshot.bookmarks);
        snapshot.defaultBranch = chooseDefaultBranch(
            parseOriginHead(outputOf(GitTool::originHeadCommand(), repositoryPath)), snapshot.bookmarks, current);
        snapshot.currentBranchIsPublished = isPublished(current, remoteBranchList, repositoryPath);
        const QHash<QString, QStringList> tags = parseRefTargets(outputOf(GitTool::tagTargetsCommand(), repositoryPath));
        // Last: everything above runs while the log is still being read.
        const std::optional<CommitLogOutputs> log = commitLog.get();
        snapshot.history = history(branchRecords, tags, log);
        snapshot.workingParent = log ? log->head : QString();
    } catch (...) {
        rethrowInOrder(files);
    }
    snapshot.files = files.get();
    snapshot.shelves = stashes;
    // Told by files in the git folder; only an operation has resolved files to read.
    snapshot.operation = operationInProgress(workingGitFolder(repositoryPath), snapshot.files);
    if (snapshot.operation != OperationInProgress::none)
        snapshot.resolvedFiles = resolvedFiles(repositoryPath, snapshot.files);
    return snapshot;
}

} // namespace tillery
