#include "git/GitDiffs.h"

#include "git/GitArguments.h"
#include "git/GitCommands.h"
#include "git/GitParsers.h"
#include "process/Failure.h"
#include "process/OptionLike.h"
#include "process/NewFileDiff.h"
#include "process/ToolRunner.h"
#include "records/TextDecoding.h"

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

constexpr int unbornHeadStatus = 128;

QString revisionArgument(const QString &hash)
{
    refuseOptionLike(hash, u"a revision"_s);
    return hash;
}

} // namespace

QString gitWorkingDiff(const QString &repositoryPath, const WorkingFile &file,
                       const CancellationCheck &isCancelled)
{
    if (isCancelled())
        throw CancellationFailure();
    if (file.state == FileState::untracked)
        return newFileDiff(repositoryPath, file.path, isCancelled);

    const RunControl control{isCancelled, {}};
    ToolCommand command = git::workingDiffCommand(file.path);
    command.acceptedStatuses.insert(unbornHeadStatus);
    CommandOutput output = runGit(command, repositoryPath, control);
    // Without a commit HEAD does not resolve; the index is all there is to compare with.
    if (output.status == unbornHeadStatus)
        output = runGit(git::stagedDiffCommand(file.path), repositoryPath, control);
    return decodeUtf8OrEmpty(output.standardOutput);
}

QList<WorkingFile> gitCommitFiles(const QString &repositoryPath, const QString &hash)
{
    return git::parseCommitFiles(
        runGit(git::commitFilesCommand(revisionArgument(hash)), repositoryPath).standardOutput);
}

QString gitCommitDiff(const QString &repositoryPath, const QString &hash, const QString &path,
                      const CancellationCheck &isCancelled)
{
    return decodeUtf8OrEmpty(
        runGit(git::commitDiffCommand(revisionArgument(hash), path), repositoryPath, {isCancelled, {}})
            .standardOutput);
}

QByteArray gitFileContents(const QString &repositoryPath, const QString &hash, const WorkingFile &file)
{
    const QString revision = revisionArgument(hash) + (file.state == FileState::removed ? u"^"_s : QString());
    return runGit(git::fileContentsCommand(revision, file.path), repositoryPath).standardOutput;
}

QByteArray gitHeadContents(const QString &repositoryPath, const QString &path)
{
    return runGit(git::fileContentsCommand(u"HEAD"_s, path), repositoryPath).standardOutput;
}

QString gitCompareDiff(const QString &repositoryPath, const QString &branch)
{
    refuseOptionLike(branch, u"a branch name"_s);
    return decodeUtf8OrEmpty(runGit(git::compareDiffCommand(branch), repositoryPath).standardOutput);
}

} // namespace tillery
