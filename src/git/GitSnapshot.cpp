#include "git/GitSnapshot.h"

#include "git/GitCommands.h"
#include "git/GitParsers.h"
#include "process/ToolRunner.h"
#include "records/TextDecoding.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tillery {

namespace git {

namespace {

QByteArray outputOf(const ToolCommand &command, const QString &repositoryPath)
{
    return runGit(command, repositoryPath).standardOutput;
}

bool needsPush(const LocalBranchRecord &branch, const QStringList &remoteBranchList,
               const QString &repositoryPath)
{
    if (!branch.upstream.isEmpty())
        return trackingNeedsPush(branch.tracking);
    const std::optional<QString> counterpart = remoteCounterpart(branch.name, remoteBranchList);
    if (!counterpart)
        return true;
    const QByteArray output = outputOf(unpushedCountCommand(*counterpart, branch.name), repositoryPath);
    return parseCount(output).value_or(0) > 0;
}

QList<Changeset> history(const QString &repositoryPath)
{
    if (runGit(verifyHeadCommand(), repositoryPath).status != 0)
        return {};
    const QByteArray log = outputOf(historyCommand(), repositoryPath);
    const QHash<QString, QStringList> branchesByCommit =
        parseRefTargets(outputOf(branchTargetsCommand(), repositoryPath));
    const QHash<QString, QStringList> tagsByCommit = parseRefTargets(outputOf(tagTargetsCommand(), repositoryPath));
    const qint64 total = parseCount(outputOf(commitCountCommand(), repositoryPath)).value_or(0);
    return parseHistory(log, total, branchesByCommit, tagsByCommit);
}

QMap<QString, QString> remotes(const QString &repositoryPath)
{
    QMap<QString, QString> urls;
    for (const QString &remote : parseLines(outputOf(remotesCommand(), repositoryPath))) {
        const QString url = decodeUtf8OrEmpty(outputOf(remoteUrlCommand(remote), repositoryPath)).trimmed();
        if (!url.isEmpty())
            urls.insert(remote, url);
    }
    if (const auto origin = urls.constFind(u"origin"_s); origin != urls.cend())
        urls.insert(u"default"_s, *origin);
    return urls;
}

bool isPublished(const QString &branch, const QString &repositoryPath)
{
    if (branch == u"detached")
        return true;
    if (runGit(upstreamCommand(), repositoryPath).status == 0)
        return true;
    const QString suffix = u'/' + branch;
    const QStringList remoteBranchList = remoteBranches(repositoryPath);
    return std::any_of(remoteBranchList.cbegin(), remoteBranchList.cend(),
                       [&suffix](const QString &remoteBranch) { return remoteBranch.endsWith(suffix); });
}

std::optional<QString> activeBranchOf(const QList<Bookmark> &branchList)
{
    for (const Bookmark &branch : branchList) {
        if (branch.active)
            return branch.name;
    }
    return std::nullopt;
}

} // namespace

QString currentBranch(const QString &repositoryPath)
{
    return parseCurrentBranch(outputOf(currentBranchCommand(), repositoryPath));
}

QStringList remoteBranches(const QString &repositoryPath)
{
    return parseLines(outputOf(remoteBranchesCommand(), repositoryPath));
}

QList<Bookmark> branches(const QString &repositoryPath)
{
    const QList<LocalBranchRecord> records = parseLocalBranches(outputOf(localBranchesCommand(), repositoryPath));
    const QStringList remoteBranchList = remoteBranches(repositoryPath);

    QList<Bookmark> branchList;
    branchList.reserve(records.size() + 1);
    for (const LocalBranchRecord &record : records) {
        branchList.append(Bookmark{record.name, 0, record.hash, record.active, record.date,
                                   needsPush(record, remoteBranchList, repositoryPath)});
    }
    // A repository without commits has a current branch that no ref names yet.
    const QString current = currentBranch(repositoryPath);
    const bool listed = std::any_of(branchList.cbegin(), branchList.cend(),
                                    [&current](const Bookmark &branch) { return branch.name == current; });
    if (current != u"detached" && !listed)
        branchList.append(Bookmark{current, 0, QString(), true, std::nullopt, true});
    sortBranches(branchList);
    return branchList;
}

} // namespace git

RepositorySnapshot loadGitSnapshot(const QString &repositoryPath)
{
    RepositorySnapshot snapshot;
    const bool monitorChosenByPerson =
        git::personEnablesFilesystemMonitor(git::outputOf(git::filesystemMonitorScopeCommand(), repositoryPath));
    const ToolCommand status = git::statusCommand();
    snapshot.files = git::parseStatus(
        git::outputOf(monitorChosenByPerson ? status : git::withoutFilesystemMonitor(status), repositoryPath));
    snapshot.bookmarks = git::branches(repositoryPath);
    snapshot.branch = git::currentBranch(repositoryPath);
    snapshot.history = git::history(repositoryPath);
    snapshot.paths = git::remotes(repositoryPath);
    snapshot.activeBookmark = git::activeBranchOf(snapshot.bookmarks);
    snapshot.defaultBranch = git::chooseDefaultBranch(
        git::parseOriginHead(git::outputOf(git::originHeadCommand(), repositoryPath)), snapshot.bookmarks,
        snapshot.branch);
    snapshot.currentBranchIsPublished = git::isPublished(snapshot.branch, repositoryPath);
    return snapshot;
}

} // namespace tillery
