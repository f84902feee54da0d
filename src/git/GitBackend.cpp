#include "git/GitBackend.h"

#include "git/GitCommands.h"
#include "git/GitParsers.h"
#include "git/GitSnapshot.h"
#include "process/BackendSteps.h"
#include "process/CommitMessage.h"
#include "process/OptionLike.h"
#include "process/RemoteAddress.h"
#include "process/RepositoryDetection.h"
#include "records/TextDecoding.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

using namespace git;

const QString branchName = u"a branch name"_s;
constexpr int unbornHeadStatus = 128;

QByteArray outputOf(const ToolCommand &command, const QString &repositoryPath, const RunControl &control = {})
{
    return runGit(command, repositoryPath, control).standardOutput;
}

// Runs the command with the named branch, after refusing a name that would
// be read as an option.
void runNamed(ToolCommand (*command)(const QString &), const QString &name, const QString &repositoryPath)
{
    refuseOptionLike(name, branchName);
    runGit(command(name), repositoryPath);
}

bool hasCommits(const QString &repositoryPath)
{
    return runGit(verifyHeadCommand(), repositoryPath).status == 0;
}

QSet<QString> trackedFiles(const QString &repositoryPath)
{
    QSet<QString> tracked;
    if (!hasCommits(repositoryPath))
        return tracked;
    for (const QByteArray &piece : outputOf(trackedFilesCommand(), repositoryPath).split('\0')) {
        if (piece.isEmpty())
            continue;
        if (const std::optional<QString> path = decodeUtf8(piece))
            tracked.insert(*path);
    }
    return tracked;
}

bool hasOrigin(const QString &repositoryPath)
{
    return parseLines(outputOf(remotesCommand(), repositoryPath)).contains(u"origin"_s);
}

class GitBackend final : public VersionControl {
public:
    const KindTraits &traits() const override
    {
        static const KindTraits traits{
            RepositoryKind::git,
            u"Git"_s,
            u"commit"_s,
            u"commits"_s,
            u"branch"_s,
            u"branches"_s,
            u"origin"_s,
            u"remote"_s,
            u"https://example.com/project.git"_s,
            u"Create and check out a Git branch at the current commit."_s,
            u"The branch will point to the current commit and be checked out."_s,
            QString(),
            true,
        };
        return traits;
    }

    std::optional<QString> bookmarkNameProblem(const QString &name) const override
    {
        static const QString forbidden = u" ~^:?*[\\"_s;
        if (std::any_of(name.cbegin(), name.cend(), [](QChar character) { return forbidden.contains(character); }))
            return u"A branch name cannot contain spaces or any of ~ ^ : ? * [ \\."_s;
        if (name.contains(u".."_s))
            return u"A branch name cannot contain “..”."_s;
        if (name.contains(u"@{"_s) || name == u"@")
            return u"A branch name cannot be “@” or contain “@{”."_s;
        if (name.startsWith(u'/') || name.endsWith(u'/') || name.contains(u"//"_s))
            return u"A branch name cannot begin or end with “/” or hold “//”."_s;
        if (name.endsWith(u'.') || name.endsWith(u".lock"_s))
            return u"A branch name cannot end with “.” or “.lock”."_s;
        const QList<QStringView> parts = QStringView(name).split(u'/');
        if (std::any_of(parts.cbegin(), parts.cend(), [](QStringView part) { return part.startsWith(u'.'); }))
            return u"No part of a branch name can begin with “.”."_s;
        if (name == u"HEAD")
            return u"“HEAD” is a name Git keeps for itself."_s;
        return std::nullopt;
    }

    RepositorySnapshot loadSnapshot(const QString &repositoryPath) const override
    {
        return loadGitSnapshot(repositoryPath);
    }

    QString workingDiff(const QString &repositoryPath, const WorkingFile &file,
                        const CancellationCheck &isCancelled) const override
    {
        if (std::optional<QString> diff = diffWithoutTool(repositoryPath, file, isCancelled))
            return *diff;
        const RunControl control{isCancelled, {}};
        ToolCommand command = workingDiffCommand(file.path);
        command.acceptedStatuses.insert(unbornHeadStatus);
        CommandOutput output = runGit(command, repositoryPath, control);
        // Without a commit HEAD does not resolve; the index is all there is to compare with.
        if (output.status == unbornHeadStatus)
            output = runGit(stagedDiffCommand(file.path), repositoryPath, control);
        return decodeUtf8OrEmpty(output.standardOutput);
    }

    QList<WorkingFile> changesetFiles(const QString &repositoryPath, const Changeset &changeset) const override
    {
        return parseCommitFiles(outputOf(commitFilesCommand(checkedChangesetId(changeset)), repositoryPath));
    }

    QString changesetDiff(const QString &repositoryPath, const Changeset &changeset, const QString &path,
                          const CancellationCheck &isCancelled) const override
    {
        return decodeUtf8OrEmpty(
            outputOf(commitDiffCommand(checkedChangesetId(changeset), path), repositoryPath, {isCancelled, {}}));
    }

    QByteArray fileContents(const QString &repositoryPath, const Changeset &changeset,
                            const WorkingFile &file) const override
    {
        const QString revision =
            checkedChangesetId(changeset) + (file.state == FileState::removed ? u"^"_s : QString());
        return outputOf(fileContentsCommand(revision, file.path), repositoryPath);
    }

    QByteArray parentContents(const QString &repositoryPath, const QString &path) const override
    {
        return outputOf(fileContentsCommand(u"HEAD"_s, path), repositoryPath);
    }

    QString compareDiff(const QString &repositoryPath, const QString &target) const override
    {
        refuseOptionLike(target, branchName);
        return decodeUtf8OrEmpty(outputOf(compareDiffCommand(target), repositoryPath));
    }

    void commit(const QString &repositoryPath, const QList<WorkingFile> &files, const QString &summary,
                const QString &description, const QString &userName) const override
    {
        if (files.isEmpty())
            return;
        const QStringList paths = pathsOf(files);
        runGit(addAllCommand(paths), repositoryPath);
        runGit(commitCommand(paths, composeCommitMessage(summary, description), parseIdentity(userName)),
               repositoryPath);
    }

    void discard(const QString &repositoryPath, const QStringList &paths) const override
    {
        if (paths.isEmpty())
            return;
        const QSet<QString> tracked = trackedFiles(repositoryPath);
        QStringList restored;
        QStringList added;
        for (const QString &path : paths)
            (tracked.contains(path) ? restored : added).append(path);
        if (!restored.isEmpty())
            runGit(restoreCommand(restored), repositoryPath);
        if (!added.isEmpty())
            runGit(forgetNewFilesCommand(added), repositoryPath);
    }

    void discardAll(const QString &repositoryPath) const override
    {
        QStringList paths;
        for (const WorkingFile &file : parseStatus(outputOf(statusCommand(), repositoryPath))) {
            if (file.state != FileState::untracked)
                paths.append(file.path);
        }
        discard(repositoryPath, paths);
    }

    void stash(const QString &repositoryPath, const QString &name) const override
    {
        runGit(stashCommand(name), repositoryPath);
    }

    void createBookmark(const QString &repositoryPath, const QString &name) const override
    {
        runNamed(createBranchCommand, name, repositoryPath);
    }

    void renameBookmark(const QString &repositoryPath, const QString &oldName, const QString &newName) const override
    {
        refuseOptionLike(oldName, branchName);
        refuseOptionLike(newName, branchName);
        runGit(renameBranchCommand(oldName, newName), repositoryPath);
    }

    void deleteBookmark(const QString &repositoryPath, const QString &name) const override
    {
        refuseOptionLike(name, branchName);
        // Git refuses to delete the branch that is checked out.
        if (currentBranch(repositoryPath) == name)
            runGit(detachCommand(), repositoryPath);
        runGit(deleteBranchCommand(name), repositoryPath);
    }

    void switchTo(const QString &repositoryPath, const QString &target) const override
    {
        runNamed(switchCommand, target, repositoryPath);
    }

    void merge(const QString &repositoryPath, const QString &target) const override
    {
        runNamed(mergeCommand, target, repositoryPath);
    }

    void squashMerge(const QString &repositoryPath, const QString &target) const override
    {
        runNamed(squashMergeCommand, target, repositoryPath);
    }

    void rebase(const QString &repositoryPath, const QString &destination) const override
    {
        runNamed(rebaseCommand, destination, repositoryPath);
    }

    void fetch(const QString &repositoryPath, const RunControl &control) const override
    {
        runGit(fetchCommand(), repositoryPath, control);
    }

    void pull(const QString &repositoryPath, const RunControl &control) const override
    {
        runGit(pullCommand(), repositoryPath, control);
    }

    void push(const QString &repositoryPath, const RunControl &control) const override
    {
        // A branch without an upstream is published to origin, when there is one.
        const bool hasUpstream = runGit(upstreamCommand(), repositoryPath).status == 0;
        const std::optional<QString> branch = hasUpstream ? std::nullopt : currentBranch(repositoryPath);
        if (branch && hasOrigin(repositoryPath)) {
            refuseOptionLike(*branch, branchName);
            runGit(publishCommand(*branch), repositoryPath, control);
        } else {
            runGit(pushCommand(), repositoryPath, control);
        }
    }

    void clone(const QString &source, const QString &destination, const RunControl &control) const override
    {
        refuseCloneArguments(source, destination);
        runGit(cloneCommand(source, destination), std::nullopt, control);
    }

    Repository createRepository(const QString &path) const override
    {
        makeRepositoryFolder(path);
        runGit(initCommand(path), std::nullopt);
        return Repository{gitRoot(path), RepositoryKind::git};
    }

    void setRemoteAddress(const QString &repositoryPath, const QString &address) const override
    {
        const QString stored = addressToStore(
            address, [&] { return decodeUtf8OrEmpty(outputOf(originUrlCommand(), repositoryPath)).trimmed(); });
        runGit(hasOrigin(repositoryPath) ? setOriginCommand(stored) : addOriginCommand(stored), repositoryPath);
    }
};

} // namespace

const VersionControl &gitBackend()
{
    static const GitBackend backend;
    return backend;
}

} // namespace tillery
