#include "mercurial/MercurialDiffs.h"

#include "mercurial/MercurialCommands.h"
#include "mercurial/MercurialParsers.h"
#include "process/Executables.h"
#include "process/Failure.h"
#include "process/NewFileDiff.h"
#include "process/ToolRunner.h"
#include "records/TextDecoding.h"

using namespace Qt::StringLiterals;

namespace tillery {

QString mercurialWorkingDiff(const QString &path, FileState state, const QString &repositoryPath,
                             const CancellationCheck &isCancelled)
{
    if (isCancelled())
        throw CancellationFailure();
    if (state == FileState::untracked)
        return newFileDiff(repositoryPath, path, isCancelled);

    const std::optional<QString> hg = findMercurialExecutable();
    if (!hg)
        throw MercurialFailure::notInstalled();
    const ToolCommand command = mercurial::workingDiffCommand(path);
    const CommandOutput output =
        runCommand(*hg, QStringList{mercurialLeadingArgument()} + command.arguments, repositoryPath,
                   mercurialEnvironment(), isCancelled);
    if (!command.acceptedStatuses.contains(output.status))
        throw MercurialFailure::rejected(command.arguments, output);
    return decodeUtf8OrEmpty(output.standardOutput);
}

QList<WorkingFile> mercurialChangesetFiles(const Changeset &changeset, const QString &repositoryPath)
{
    return parseMercurialStatus(
        runMercurial(mercurial::changesetFilesCommand(changeset.node), repositoryPath).standardOutput);
}

QString mercurialChangesetDiff(const QString &path, const Changeset &changeset,
                               const QString &repositoryPath)
{
    return decodeUtf8OrEmpty(
        runMercurial(mercurial::changesetDiffCommand(changeset.node, path), repositoryPath).standardOutput);
}

QByteArray mercurialFileContents(const QString &path, FileState state, const Changeset &changeset,
                                 const QString &repositoryPath)
{
    const QString revision =
        state == FileState::removed ? u"p1("_s + changeset.node + u')' : changeset.node;
    return runMercurial(mercurial::fileContentsCommand(revision, path), repositoryPath).standardOutput;
}

QString mercurialCompareDiff(const QString &target, const QString &repositoryPath)
{
    return decodeUtf8OrEmpty(
        runMercurial(mercurial::compareDiffCommand(target), repositoryPath).standardOutput);
}

} // namespace tillery
