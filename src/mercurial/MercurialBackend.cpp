#include "mercurial/MercurialBackend.h"

#include "mercurial/MercurialCommands.h"
#include "mercurial/MercurialConfigFile.h"
#include "mercurial/MercurialParsers.h"
#include "mercurial/MercurialSnapshot.h"
#include "process/BackendSteps.h"
#include "process/CommitMessage.h"
#include "process/OptionLike.h"
#include "process/RemoteAddress.h"
#include "process/RepositoryDetection.h"
#include "records/TextDecoding.h"

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

using namespace mercurial;

const QString bookmarkName = u"a bookmark name"_s;

QByteArray outputOf(const ToolCommand &command, const QString &repositoryPath, const RunControl &control = {})
{
    return runMercurial(command, repositoryPath, control).standardOutput;
}

// Runs the command with the named bookmark, after refusing a name that would
// be read as an option.
void runNamed(ToolCommand (*command)(const QString &), const QString &name, const QString &repositoryPath)
{
    refuseOptionLike(name, bookmarkName);
    runMercurial(command(name), repositoryPath);
}

class MercurialBackend final : public VersionControl {
public:
    const KindTraits &traits() const override
    {
        static const KindTraits traits{
            RepositoryKind::mercurial,
            u"Mercurial"_s,
            u"changeset"_s,
            u"changesets"_s,
            u"bookmark"_s,
            u"bookmarks"_s,
            u"default"_s,
            u"path"_s,
            u"https://example.com/project"_s,
            u"Create a Mercurial bookmark at the current changeset."_s,
            u"The bookmark will point to the current changeset and become active."_s,
            u"default"_s,
            false,
        };
        return traits;
    }

    std::optional<QString> bookmarkNameProblem(const QString &name) const override
    {
        if (name.contains(u':'))
            return u"A bookmark name cannot contain “:”."_s;
        bool number = false;
        name.toLongLong(&number);
        if (number)
            return u"A bookmark name cannot be a number."_s;
        if (name == u"." || name == u"null" || name == u"tip")
            return u"“"_s + name + u"” is a name Mercurial keeps for itself."_s;
        return std::nullopt;
    }

    RepositorySnapshot loadSnapshot(const QString &repositoryPath) const override
    {
        return loadMercurialSnapshot(repositoryPath);
    }

    QString workingDiff(const QString &repositoryPath, const WorkingFile &file,
                        const CancellationCheck &isCancelled) const override
    {
        if (std::optional<QString> diff = diffWithoutTool(repositoryPath, file, isCancelled))
            return *diff;
        return decodeUtf8OrEmpty(outputOf(workingDiffCommand(file.path), repositoryPath, {isCancelled, {}}));
    }

    QList<WorkingFile> changesetFiles(const QString &repositoryPath, const Changeset &changeset) const override
    {
        return parseMercurialStatus(outputOf(changesetFilesCommand(checkedChangesetId(changeset)), repositoryPath));
    }

    QString changesetDiff(const QString &repositoryPath, const Changeset &changeset, const QString &path,
                          const CancellationCheck &isCancelled) const override
    {
        return decodeUtf8OrEmpty(
            outputOf(changesetDiffCommand(checkedChangesetId(changeset), path), repositoryPath, {isCancelled, {}}));
    }

    QByteArray fileContents(const QString &repositoryPath, const Changeset &changeset,
                            const WorkingFile &file) const override
    {
        const QString &node = checkedChangesetId(changeset);
        const QString revision = file.state == FileState::removed ? u"p1("_s + node + u')' : node;
        return outputOf(fileContentsCommand(revision, file.path), repositoryPath);
    }

    QByteArray parentContents(const QString &repositoryPath, const QString &path) const override
    {
        return outputOf(fileContentsCommand(u"."_s, path), repositoryPath);
    }

    QString compareDiff(const QString &repositoryPath, const QString &target) const override
    {
        refuseOptionLike(target, bookmarkName);
        return decodeUtf8OrEmpty(outputOf(compareDiffCommand(target), repositoryPath));
    }

    void commit(const QString &repositoryPath, const QList<WorkingFile> &files, const QString &summary,
                const QString &description, const QString &userName) const override
    {
        if (files.isEmpty())
            return;
        QList<WorkingFile> untracked;
        std::copy_if(files.cbegin(), files.cend(), std::back_inserter(untracked),
                     [](const WorkingFile &file) { return file.state == FileState::untracked; });
        if (!untracked.isEmpty())
            runMercurial(addCommand(pathsOf(untracked)), repositoryPath);
        runMercurial(commitCommand(pathsOf(files), composeCommitMessage(summary, description), userName),
                     repositoryPath);
    }

    void discard(const QString &repositoryPath, const QStringList &paths) const override
    {
        if (!paths.isEmpty())
            runMercurial(revertCommand(paths), repositoryPath);
    }

    void discardAll(const QString &repositoryPath) const override
    {
        runMercurial(revertAllCommand(), repositoryPath);
    }

    void stash(const QString &repositoryPath, const QString &name) const override
    {
        refuseOptionLike(name, u"a shelf name"_s);
        runMercurial(shelveCommand(name), repositoryPath);
    }

    void createBookmark(const QString &repositoryPath, const QString &name) const override
    {
        runNamed(createBookmarkCommand, name, repositoryPath);
    }

    void renameBookmark(const QString &repositoryPath, const QString &oldName, const QString &newName) const override
    {
        refuseOptionLike(oldName, bookmarkName);
        refuseOptionLike(newName, bookmarkName);
        runMercurial(renameBookmarkCommand(oldName, newName), repositoryPath);
    }

    void deleteBookmark(const QString &repositoryPath, const QString &name) const override
    {
        runNamed(deleteBookmarkCommand, name, repositoryPath);
    }

    void switchTo(const QString &repositoryPath, const QString &target) const override
    {
        runNamed(updateCommand, target, repositoryPath);
    }

    void merge(const QString &repositoryPath, const QString &target) const override
    {
        runNamed(mergeCommand, target, repositoryPath);
    }

    void squashMerge(const QString &, const QString &) const override
    {
        throw RefusedInput(u"Mercurial has no squash merge; merge the bookmark or rebase onto it instead."_s);
    }

    void rebase(const QString &repositoryPath, const QString &destination) const override
    {
        runNamed(rebaseCommand, destination, repositoryPath);
    }

    void fetch(const QString &repositoryPath, const RunControl &control) const override
    {
        runMercurial(pullCommand(), repositoryPath, control);
    }

    void pull(const QString &repositoryPath, const RunControl &control) const override
    {
        runMercurial(pullAndUpdateCommand(), repositoryPath, control);
    }

    void push(const QString &repositoryPath, const RunControl &control) const override
    {
        runMercurial(pushCommand(), repositoryPath, control);
    }

    void clone(const QString &source, const QString &destination, const RunControl &control) const override
    {
        refuseCloneArguments(source, destination);
        runMercurial(cloneCommand(source, destination), std::nullopt, control);
    }

    Repository createRepository(const QString &path) const override
    {
        makeRepositoryFolder(path);
        runMercurial(initCommand(path), std::nullopt);
        return Repository{mercurialRoot(path), RepositoryKind::mercurial};
    }

    void setRemoteAddress(const QString &repositoryPath, const QString &address) const override
    {
        const QString stored = addressToStore(
            address, [&] { return decodeUtf8OrEmpty(outputOf(storedDefaultPathCommand(), repositoryPath)).trimmed(); });
        writeDefaultPath(repositoryPath, stored);
    }
};

} // namespace

const VersionControl &mercurialBackend()
{
    static const MercurialBackend backend;
    return backend;
}

} // namespace tillery
