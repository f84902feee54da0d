#include "mercurial/MercurialDiffs.h"

#include "mercurial/MercurialCommands.h"
#include "mercurial/MercurialParsers.h"
#include "mercurial/MercurialFileArguments.h"
#include "process/Failure.h"
#include "process/OptionLike.h"
#include "process/NewFileDiff.h"
#include "process/ToolRunner.h"
#include "records/TextDecoding.h"

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

const QString &checkedNode(const Changeset &changeset)
{
    refuseOptionLike(changeset.node, u"a changeset id"_s);
    return changeset.node;
}

} // namespace

QString mercurialWorkingDiff(const QString &path, FileState state, const QString &repositoryPath,
                             const CancellationCheck &isCancelled)
{
    if (isCancelled())
        throw CancellationFailure();
    if (state == FileState::untracked)
        return newFileDiff(repositoryPath, path, isCancelled);

    return decodeUtf8OrEmpty(
        runMercurial(mercurial::workingDiffCommand(path), repositoryPath, RunControl{isCancelled, {}}).standardOutput);
}

QList<WorkingFile> mercurialChangesetFiles(const Changeset &changeset, const QString &repositoryPath)
{
    return parseMercurialStatus(
        runMercurial(mercurial::changesetFilesCommand(checkedNode(changeset)), repositoryPath).standardOutput);
}

QString mercurialChangesetDiff(const QString &path, const Changeset &changeset, const QString &repositoryPath,
                               const CancellationCheck &isCancelled)
{
    return decodeUtf8OrEmpty(runMercurial(mercurial::changesetDiffCommand(checkedNode(changeset), path),
                                          repositoryPath, {isCancelled, {}})
                                 .standardOutput);
}

QByteArray mercurialFileContents(const QString &path, FileState state, const Changeset &changeset,
                                 const QString &repositoryPath)
{
    const QString node = checkedNode(changeset);
    const QString revision = state == FileState::removed ? u"p1("_s + node + u')' : node;
    return runMercurial(mercurial::fileContentsCommand(revision, path), repositoryPath).standardOutput;
}

QByteArray mercurialParentContents(const QString &path, const QString &repositoryPath)
{
    return runMercurial(mercurial::fileContentsCommand(u"."_s, path), repositoryPath).standardOutput;
}

QString mercurialCompareDiff(const QString &target, const QString &repositoryPath)
{
    refuseOptionLike(target, u"a bookmark name"_s);
    return decodeUtf8OrEmpty(
        runMercurial(mercurial::compareDiffCommand(target), repositoryPath).standardOutput);
}

} // namespace tillery
