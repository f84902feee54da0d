#include "git/GitOperations.h"

#include "git/GitArguments.h"
#include "git/GitParsers.h"
#include "git/GitSnapshot.h"
#include "process/CommitMessage.h"
#include "process/Failure.h"
#include "process/OptionLike.h"
#include "process/RemoteAddress.h"
#include "process/RepositoryDetection.h"
#include "process/ToolRunner.h"
#include "records/TextDecoding.h"
#include "records/TextSplitting.h"

#include <QDir>
#include <QSet>

using namespace Qt::StringLiterals;

namespace tillery::git {

namespace {

const QString branchName = u"a branch name"_s;

CommandOutput run(const ToolCommand &command, const std::optional<QString> &directory)
{
    return runGit(command, directory);
}

QSet<QString> trackedFiles(const QString &repositoryPath)
{
    QSet<QString> tracked;
    if (run(verifyHeadCommand(), repositoryPath).status != 0)
        return tracked;
    const QByteArray output = run(trackedFilesCommand(), repositoryPath).standardOutput;
    for (const QByteArray &piece : output.split('\0')) {
        if (piece.isEmpty())
            continue;
        if (const std::optional<QString> path = decodeUtf8(piece))
            tracked.insert(*path);
    }
    return tracked;
}

} // namespace

std::optional<GitIdentity> parseIdentity(const QString &text)
{
    const QString trimmed = text.trimmed();
    const qsizetype open = trimmed.lastIndexOf(u'<');
    const qsizetype close = trimmed.lastIndexOf(u'>');
    if (open < 0 || close < 0 || close < open)
        return std::nullopt;
    const QString name = trimmedSpacesAndTabs(QStringView(trimmed).first(open)).toString();
    const QString email = trimmedSpacesAndTabs(QStringView(trimmed).sliced(open + 1, close - open - 1)).toString();
    if (name.isEmpty() || email.isEmpty())
        return std::nullopt;
    return GitIdentity{name, email};
}

void commit(const QString &repositoryPath, const QStringList &paths, const QString &summary,
            const QString &description, const QString &identity)
{
    if (paths.isEmpty())
        return;
    run(addAllCommand(paths), repositoryPath);
    run(commitCommand(paths, composeCommitMessage(summary, description), parseIdentity(identity)), repositoryPath);
}

void discard(const QString &repositoryPath, const QStringList &paths)
{
    if (paths.isEmpty())
        return;
    const QSet<QString> tracked = trackedFiles(repositoryPath);
    QStringList restored;
    QStringList added;
    for (const QString &path : paths)
        (tracked.contains(path) ? restored : added).append(path);
    if (!restored.isEmpty())
        run(restoreCommand(restored), repositoryPath);
    if (!added.isEmpty())
        run(forgetNewFilesCommand(added), repositoryPath);
}

void discardAll(const QString &repositoryPath)
{
    QStringList paths;
    for (const WorkingFile &file : parseStatus(run(statusCommand(), repositoryPath).standardOutput)) {
        if (file.state != FileState::untracked)
            paths.append(file.path);
    }
    discard(repositoryPath, paths);
}

void stash(const QString &repositoryPath, const QString &message)
{
    run(stashCommand(message), repositoryPath);
}

void createBranch(const QString &repositoryPath, const QString &name)
{
    refuseOptionLike(name, branchName);
    run(createBranchCommand(name), repositoryPath);
}

void renameBranch(const QString &repositoryPath, const QString &oldName, const QString &newName)
{
    refuseOptionLike(oldName, branchName);
    refuseOptionLike(newName, branchName);
    run(renameBranchCommand(oldName, newName), repositoryPath);
}

void deleteBranch(const QString &repositoryPath, const QString &name)
{
    refuseOptionLike(name, branchName);
    if (currentBranch(repositoryPath) == name)
        run(detachCommand(), repositoryPath);
    run(deleteBranchCommand(name), repositoryPath);
}

void switchTo(const QString &repositoryPath, const QString &target)
{
    refuseOptionLike(target, branchName);
    run(switchCommand(target), repositoryPath);
}

void merge(const QString &repositoryPath, const QString &name)
{
    refuseOptionLike(name, branchName);
    run(mergeCommand(name), repositoryPath);
}

void squashMerge(const QString &repositoryPath, const QString &name)
{
    refuseOptionLike(name, branchName);
    run(squashMergeCommand(name), repositoryPath);
}

void rebase(const QString &repositoryPath, const QString &name)
{
    refuseOptionLike(name, branchName);
    run(rebaseCommand(name), repositoryPath);
}

void fetch(const QString &repositoryPath, const RunControl &control)
{
    runGit(fetchCommand(), repositoryPath, control);
}

void pull(const QString &repositoryPath, const RunControl &control)
{
    runGit(pullCommand(), repositoryPath, control);
}

void push(const QString &repositoryPath, const RunControl &control)
{
    if (run(upstreamCommand(), repositoryPath).status == 0) {
        runGit(pushCommand(), repositoryPath, control);
        return;
    }
    const QStringList remotes = parseLines(run(remotesCommand(), repositoryPath).standardOutput);
    const QString branch = currentBranch(repositoryPath);
    if (remotes.contains(u"origin"_s) && branch != u"detached") {
        refuseOptionLike(branch, branchName);
        runGit(publishCommand(branch), repositoryPath, control);
    } else {
        runGit(pushCommand(), repositoryPath, control);
    }
}

void clone(const QString &source, const QString &destination, const RunControl &control)
{
    refuseOptionLike(source, u"a clone source"_s);
    refuseOptionLike(destination, u"a clone destination"_s);
    runGit(cloneCommand(source, destination), std::nullopt, control);
}

Repository createRepository(const QString &path)
{
    refuseOptionLike(path, u"a repository folder"_s);
    if (!QDir().mkpath(path))
        throw PlatformFailure(u"The folder %1 could not be created."_s.arg(path));
    run(initCommand(path), std::nullopt);
    return Repository{gitRoot(path), RepositoryKind::git};
}

void setRemoteAddress(const QString &repositoryPath, const QString &address)
{
    const QString stored = addressToStore(address, [&] {
        return decodeUtf8OrEmpty(run(originUrlCommand(), repositoryPath).standardOutput).trimmed();
    });
    const QStringList remotes = parseLines(run(remotesCommand(), repositoryPath).standardOutput);
    run(remotes.contains(u"origin"_s) ? setOriginCommand(stored) : addOriginCommand(stored), repositoryPath);
}

} // namespace tillery::git
