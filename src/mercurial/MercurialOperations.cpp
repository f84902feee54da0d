#include "mercurial/MercurialOperations.h"

#include "mercurial/MercurialCommands.h"
#include "mercurial/MercurialConfigFile.h"
#include "mercurial/MercurialFileArguments.h"
#include "process/CommitMessage.h"
#include "process/Failure.h"
#include "process/OptionLike.h"
#include "process/RemoteAddress.h"
#include "process/RepositoryDetection.h"
#include "process/ToolRunner.h"
#include "records/TextDecoding.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace tillery::mercurial {

namespace {

void run(const ToolCommand &command, const std::optional<QString> &directory)
{
    runMercurial(command, directory);
}

const QString bookmarkName = u"a bookmark name"_s;

} // namespace

void commit(const QStringList &files, const QString &summary, const QString &description,
            const QString &userName, const QString &repositoryPath)
{
    run(commitCommand(files, composeCommitMessage(summary, description), userName), repositoryPath);
}

void add(const QStringList &files, const QString &repositoryPath)
{
    if (!files.isEmpty())
        run(addCommand(files), repositoryPath);
}

void discard(const QStringList &files, const QString &repositoryPath)
{
    if (!files.isEmpty())
        run(revertCommand(files), repositoryPath);
}

void discardAll(const QString &repositoryPath)
{
    run(revertAllCommand(), repositoryPath);
}

void shelve(const QString &name, const QString &repositoryPath)
{
    refuseOptionLike(name, u"a shelf name"_s);
    run(shelveCommand(name), repositoryPath);
}

void update(const QString &target, const QString &repositoryPath)
{
    refuseOptionLike(target, bookmarkName);
    run(updateCommand(target), repositoryPath);
}

void merge(const QString &target, const QString &repositoryPath)
{
    refuseOptionLike(target, bookmarkName);
    run(mergeCommand(target), repositoryPath);
}

void squashMerge(const QString &, const QString &)
{
    throw RefusedInput(u"Mercurial has no squash merge; merge the bookmark or rebase onto it instead."_s);
}

void rebase(const QString &destination, const QString &repositoryPath)
{
    refuseOptionLike(destination, bookmarkName);
    run(rebaseCommand(destination), repositoryPath);
}

void createBookmark(const QString &name, const QString &repositoryPath)
{
    refuseOptionLike(name, bookmarkName);
    run(createBookmarkCommand(name), repositoryPath);
}

void renameBookmark(const QString &oldName, const QString &newName, const QString &repositoryPath)
{
    refuseOptionLike(oldName, bookmarkName);
    refuseOptionLike(newName, bookmarkName);
    run(renameBookmarkCommand(oldName, newName), repositoryPath);
}

void deleteBookmark(const QString &name, const QString &repositoryPath)
{
    refuseOptionLike(name, bookmarkName);
    run(deleteBookmarkCommand(name), repositoryPath);
}

void fetch(const QString &repositoryPath, const RunControl &control)
{
    runMercurial(pullCommand(), repositoryPath, control);
}

void pullAndUpdate(const QString &repositoryPath, const RunControl &control)
{
    runMercurial(pullAndUpdateCommand(), repositoryPath, control);
}

void push(const QString &repositoryPath, const RunControl &control)
{
    runMercurial(pushCommand(), repositoryPath, control);
}

void clone(const QString &source, const QString &destination, const RunControl &control)
{
    refuseOptionLike(source, u"a clone source"_s);
    refuseOptionLike(destination, u"a clone destination"_s);
    runMercurial(cloneCommand(source, destination), std::nullopt, control);
}

Repository createRepository(const QString &path)
{
    refuseOptionLike(path, u"a repository folder"_s);
    if (!QDir().mkpath(path))
        throw PlatformFailure(u"The folder %1 could not be created."_s.arg(path));
    run(initCommand(path), std::nullopt);
    return Repository{mercurialRoot(path), RepositoryKind::mercurial};
}

void setDefaultRemote(const QString &address, const QString &repositoryPath)
{
    const QString stored = addressToStore(address, [&] {
        return decodeUtf8OrEmpty(runMercurial(storedDefaultPathCommand(), repositoryPath).standardOutput).trimmed();
    });
    writeDefaultPath(repositoryPath, stored);
}

} // namespace tillery::mercurial
