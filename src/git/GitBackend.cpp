#include "git/GitBackend.h"

#include "diff/FilePatch.h"
#include "git/GitConflicts.h"
#include "git/GitHistoryPager.h"
#include "git/GitParsers.h"
#include "git/GitPatchText.h"
#include "git/GitShelves.h"
#include "git/GitSnapshot.h"
#include "git/GitTool.h"
#include "process/CommitMessage.h"
#include "process/Concurrently.h"
#include "process/RemoteAddress.h"
#include "process/RepositoryFile.h"
#include "process/ToolBackend.h"
#include "records/TextDecoding.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>
#include <QSet>
#include <QTemporaryDir>

#include <functional>
#include <future>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

using namespace git;
using Tool = GitTool;

constexpr int unbornHeadStatus = 128;

const auto outputOf = [](const ToolCommand &command, const QString &repositoryPath,
                        const RunControl &control = {}) { return GitTool::output(command, repositoryPath, control); };

bool hasCommits(const QString &repositoryPath)
{
    return Tool::run(Tool::verifyHeadCommand(), repositoryPath).status == 0;
}

QSet<QString> trackedFiles(const QString &repositoryPath)
{
    QSet<QString> tracked;
    if (!hasCommits(repositoryPath))
        return tracked;
    for (const QByteArray &piece : outputOf(Tool::trackedFilesCommand(), repositoryPath).split('\0')) {
        if (piece.isEmpty())
            continue;
        if (const std::optional<QString> path = decodeUtf8(piece))
            tracked.insert(*path);
    }
    return tracked;
}

bool hasOrigin(const QString &repositoryPath)
{
    return parseLines(outputOf(Tool::remotesCommand(), repositoryPath)).contains(u"origin"_s);
}

class GitBackend final : public ToolBackend<Tool> {
    Q_DECLARE_TR_FUNCTIONS(tillery::GitBackend)

public:
    KindTraits traits() const override
    {
        return {
            RepositoryKind::git,
            u"Git"_s,
            QCoreApplication::translate("tillery::KindTraits", "commit", "noun"),
            QCoreApplication::translate("tillery::KindTraits", "commits", "noun"),
            QCoreApplication::translate("tillery::KindTraits", "branch"),
            QCoreApplication::translate("tillery::KindTraits", "branches"),
            u"origin"_s,
            QCoreApplication::translate("tillery::KindTraits", "remote", "noun"),
            u"https://example.com/project.git"_s,
            QCoreApplication::translate("tillery::KindTraits",
                                        "Create and check out a Git branch at the current commit."),
            QCoreApplication::translate("tillery::KindTraits",
                                        "The branch will point to the current commit and be checked out."),
            QString(),
            true,
            QCoreApplication::translate("tillery::KindTraits", "stash", "noun"),
            QCoreApplication::translate("tillery::KindTraits", "stashes", "noun"),
        };
    }

    std::optional<QString> bookmarkNameProblem(const QString &name) const override
    {
        static const QString forbidden = u" ~^:?*[\\"_s;
        if (std::any_of(name.cbegin(), name.cend(), [](QChar character) { return forbidden.contains(character); }))
            return tr("A branch name cannot contain spaces or any of ~ ^ : ? * [ \\.");
        if (name.contains(u".."_s))
            return tr("A branch name cannot contain “..”.");
        if (name.contains(u"@{"_s) || name == u"@")
            return tr("A branch name cannot be “@” or contain “@{”.");
        if (name.startsWith(u'/') || name.endsWith(u'/') || name.contains(u"//"_s))
            return tr("A branch name cannot begin or end with “/” or hold “//”.");
        if (name.endsWith(u'.') || name.endsWith(u".lock"_s))
            return tr("A branch name cannot end with “.” or “.lock”.");
        const QList<QStringView> parts = QStringView(name).split(u'/');
        if (std::any_of(parts.cbegin(), parts.cend(), [](QStringView part) { return part.startsWith(u'.'); }))
            return tr("No part of a branch name can begin with “.”.");
        if (name == u"HEAD")
            return tr("“HEAD” is a name Git keeps for itself.");
        return std::nullopt;
    }

    RepositorySnapshot loadSnapshot(const QString &repositoryPath) const override
    {
        return loadGitSnapshot(repositoryPath);
    }

    std::unique_ptr<HistoryPager> historyPager(const QString &repositoryPath, const HistoryFilter &filter,
                                               const std::optional<Changeset> &lastShown,
                                               qsizetype shownCount) const override
    {
        const bool afterSnapshot = filter.isEmpty() && lastShown && shownCount > 0;
        return makeHistoryPager(repositoryPath, filter, afterSnapshot ? shownCount : 0,
                                afterSnapshot ? lastShown->revision - 1 : 0);
    }

    // The chosen hunks alone, far smaller than the whole file for git to
    // read, where they make exactly the chosen version.
    static QString chosenFilePatch(const ChosenChanges &changes, const ChosenVersion &version, bool isNew,
                                   bool executable)
    {
        const QString &path = changes.file.path;
        const QString patch = filePatch(path, chosenHunksText(version.shown, changes.lines), isNew, executable);
        const std::optional<FilePatch> made = parseFilePatch(patch);
        if (made && applyChosenChanges(version.parent, PatchSide::old, *made, made->changedLineIds()) == version.committed)
            return patch;
        return wholeFilePatch(path, version.parent, version.committed, isNew, executable);
    }

    // Whether the patch in the control's input applied to the index; an empty one never does.
    static bool applies(const QString &repositoryPath, const RunControl &control)
    {
        try {
            return Tool::run(Tool::applyToIndexCommand(), repositoryPath, control).status == 0;
        } catch (const GitFailure &) {
            return false;
        }
    }

    static void applyToIndex(const QString &repositoryPath, const QString &patch, RunControl control,
                             const QList<ChosenChanges> &chosen)
    {
        control.input = patch.toUtf8();
        if (!applies(repositoryPath, control))
            refuseAsChanged(chosen);
    }

    // The paths staged for the next commit, nothing without a commit yet.
    static std::optional<QSet<QString>> stagedPathsOf(const CommandOutput &stagedNames)
    {
        if (stagedNames.status != 0)
            return std::nullopt;
        QSet<QString> paths;
        for (const QByteArray &name : stagedNames.standardOutput.split('\0')) {
            if (!name.isEmpty())
                paths.insert(decodeUtf8OrEmpty(name));
        }
        return paths;
    }

    QString metadataFolder(const QString &repositoryPath) const override
    {
        return decodeUtf8OrEmpty(outputOf(Tool::gitFolderCommand(), repositoryPath)).trimmed();
    }

    QString trackedFileDiff(const QString &repositoryPath, const QString &path, const RunControl &control,
                            WhitespaceChanges whitespace) const override
    {
        ToolCommand command = Tool::workingDiffCommand(path, whitespace);
        command.acceptedStatuses.insert(unbornHeadStatus);
        const CommandOutput output = Tool::run(command, repositoryPath, control);
        // Without a commit HEAD does not resolve; the index is all there is to compare with.
        if (output.status == unbornHeadStatus)
            return text(Tool::stagedDiffCommand(path, whitespace), repositoryPath, control);
        return decodeUtf8OrEmpty(output.standardOutput);
    }

    QList<WorkingFile> changesetFiles(const QString &repositoryPath, const Changeset &changeset) const override
    {
        return parseCommitFiles(outputOf(Tool::changesetFilesCommand(checkedChangesetId(changeset)), repositoryPath));
    }

    FileAnnotation annotateFile(const QString &repositoryPath, const std::optional<QString> &node, const QString &path,
                                const CancellationCheck &isCancelled) const override
    {
        const ToolCommand command = Tool::annotateCommand(annotatedRevision(node), path);
        return parseBlame(ToolBackend::outputOf(command, repositoryPath, RunControl{isCancelled, {}}));
    }

    void commit(const QString &repositoryPath, const QList<WorkingFile> &files,
                const CommitRequest &request) const override
    {
        if (request.amend)
            refuseRewriteWhereNeeded(repositoryPath);
        else if (files.isEmpty())
            return;
        const QStringList paths = pathsOf(files);
        if (!paths.isEmpty())
            Tool::run(Tool::stageFilesCommand(paths), repositoryPath);
        Tool::run(Tool::commitCommand(paths, composeCommitMessage(request.summary, request.description),
                                      parseIdentity(request.userName), request.amend),
                  repositoryPath);
    }

    std::optional<QString> rewriteRefusal(const QString &repositoryPath) const override
    {
        const CommandOutput commits = Tool::run(Tool::headAndParentCommand(), repositoryPath);
        if (commits.status != 0)
            return tr("There is no commit yet.");
        if (Tool::run(Tool::headOnUpstreamCommand(), repositoryPath).status != 0)
            return std::nullopt;
        const QString upstream = decodeUtf8OrEmpty(outputOf(Tool::upstreamNameCommand(), repositoryPath)).trimmed();
        return tr("The last commit is already on “%1”, where others may have it; it can no longer be changed.")
            .arg(upstream);
    }

    void undoLastCommit(const QString &repositoryPath) const override
    {
        refuseRewriteWhereNeeded(repositoryPath);
        const QByteArray commits = outputOf(Tool::headAndParentCommand(), repositoryPath);
        if (commits.trimmed().split('\n').size() < 2)
            throw RefusedInput(tr("The first commit cannot be undone."));
        Tool::run(Tool::undoLastCommitCommand(), repositoryPath);
    }

    // Through an index of its own, so that nothing the person staged is
    // committed unless chosen, and the working files are never touched.
    // The chosen versions go into an index as a patch from HEAD's files: it
    // does not apply to a file that changed since its diff was shown. When
    // nothing else is staged that index is the person's own, which the commit
    // leaves as a commit of paths would; else it is one of Tillery's own, so
    // that nothing else staged is committed, and the person's index takes
    // the chosen versions only where nothing else was staged for them.
    void commitChosen(const QString &repositoryPath, const QList<WorkingFile> &wholeFiles,
                      const QList<ChosenChanges> &chosen, const CommitRequest &request) const override
    {
        if (request.amend)
            refuseRewriteWhereNeeded(repositoryPath);
        // A file changed outside the diff's hunks since it was shown has another parent than HEAD's.
        QList<std::optional<QString>> parentPaths;
        QStringList withParent;
        for (const ChosenChanges &changes : chosen) {
            parentPaths.append(comparedParentPath(changes));
            if (parentPaths.last())
                withParent.append(*parentPaths.last());
        }
        // The staged paths and HEAD's blobs are read while the chosen versions
        // are worked out, and git apply starts up on the person's own index
        // meanwhile: it is sent the patch when nothing else is staged, else
        // nothing, which it refuses.
        std::future<std::optional<QSet<QString>>> staged =
            startConcurrently([&] { return stagedPathsOf(Tool::run(Tool::stagedNamesCommand(), repositoryPath)); });
        std::promise<QByteArray> ownIndexPatch;
        std::shared_future<QByteArray> ownIndexInput = ownIndexPatch.get_future().share();
        std::future<bool> appliedToOwnIndex =
            startConcurrently([&] {
                RunControl control;
                control.lateInput = [&] { return ownIndexInput.get(); };
                return applies(repositoryPath, control);
            });
        bool inputSent = false;
        const auto sendNothingOnFailure = qScopeGuard([&] {
            if (!inputSent)
                ownIndexPatch.set_value(QByteArray());
        });
        std::shared_future<QHash<QString, QString>> headBlobs = startConcurrently([&] {
            return withParent.isEmpty()
                       ? QHash<QString, QString>()
                       : parseTreeBlobs(outputOf(Tool::headEntriesCommand(withParent), repositoryPath));
        }).share();
        // Each file's patch, worked out on two threads.
        const QStringList filePatches = mappedInTwo(chosen.size(), [&](qsizetype index) {
            const WorkingFile &file = chosen[index].file;
            const ChosenVersion version = committedVersions(repositoryPath, {chosen[index]}).constFirst();
            const bool isNew = !parentPaths[index];
            const QString head = isNew ? QString() : headBlobs.get().value(*parentPaths[index]);
            if (!head.isEmpty() && blobId(version.parent.toUtf8(), head.size()) != head)
                refuseAsChanged({chosen[index]});
            if (!isNew && version.parent == version.committed)
                return QString();
            return chosenFilePatch(chosen[index], version, isNew,
                                   QFileInfo(QDir(repositoryPath).filePath(file.path)).isExecutable());
        });
        const QString patch = filePatches.join(QString());
        const std::optional<QSet<QString>> stagedPaths = staged.get();
        const bool nothingElseStaged = stagedPaths && stagedPaths->isEmpty();
        ownIndexPatch.set_value(nothingElseStaged ? patch.toUtf8() : QByteArray());
        inputSent = true;
        const bool applied = appliedToOwnIndex.get();
        const QString message = composeCommitMessage(request.summary, request.description);
        const std::optional<git::GitIdentity> identity = parseIdentity(request.userName);
        if (nothingElseStaged) {
            if (!applied)
                refuseAsChanged(chosen);
            if (!wholeFiles.isEmpty())
                Tool::run(Tool::stageFilesCommand(pathsOf(wholeFiles)), repositoryPath);
            Tool::run(Tool::commitIndexCommand(message, identity, request.amend), repositoryPath);
            return;
        }
        const bool hasHead = stagedPaths.has_value();
        QString followingPatch;
        for (qsizetype index = 0; index < chosen.size(); ++index) {
            const WorkingFile &file = chosen[index].file;
            if (file.state == FileState::untracked || (hasHead && !stagedPaths->contains(file.path)))
                followingPatch += filePatches[index];
        }
        const QTemporaryDir scratch(metadataFolder(repositoryPath) + u"/tillery-commit-XXXXXX"_s);
        if (!scratch.isValid())
            throw PlatformFailure::temporaryFolderNotMade(scratch.errorString());
        const RunControl ownIndex{{}, {}, false, {{u"GIT_INDEX_FILE"_s, scratch.filePath(u"index"_s)}}};
        Tool::run(Tool::readHeadTreeCommand(hasHead), repositoryPath, ownIndex);
        if (!wholeFiles.isEmpty())
            Tool::run(Tool::stageFilesCommand(pathsOf(wholeFiles)), repositoryPath, ownIndex);
        applyToIndex(repositoryPath, patch, ownIndex, chosen);
        Tool::run(Tool::commitIndexCommand(message, identity, request.amend), repositoryPath, ownIndex);
        if (!wholeFiles.isEmpty())
            Tool::run(Tool::stageFilesCommand(pathsOf(wholeFiles)), repositoryPath);
        if (!followingPatch.isEmpty())
            applyToIndex(repositoryPath, followingPatch, {}, chosen);
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
            Tool::run(Tool::restoreCommand(restored), repositoryPath);
        if (!added.isEmpty())
            Tool::run(Tool::forgetNewFilesCommand(added), repositoryPath);
    }

    void discardAll(const QString &repositoryPath) const override
    {
        QStringList paths;
        for (const WorkingFile &file : parseStatus(outputOf(Tool::statusCommand(), repositoryPath))) {
            if (file.state != FileState::untracked)
                paths.append(file.path);
        }
        discard(repositoryPath, paths);
    }

    void stash(const QString &repositoryPath, const QString &name) const override
    {
        Tool::run(Tool::stashCommand(name), repositoryPath);
    }

    QList<WorkingFile> shelfFiles(const QString &repositoryPath, const Shelf &shelf) const override
    {
        return stashFiles(repositoryPath, shelf);
    }
    QString shelfDiff(const QString &repositoryPath, const Shelf &shelf, const QString &path,
                      const CancellationCheck &isCancelled) const override
    {
        return stashDiff(repositoryPath, shelf, path, isCancelled);
    }
    void restoreShelf(const QString &repositoryPath, const Shelf &shelf, bool keep) const override
    {
        restoreStash(repositoryPath, shelf, keep);
    }
    void deleteShelf(const QString &repositoryPath, const Shelf &shelf) const override
    {
        dropStash(repositoryPath, shelf);
    }
    void shelveFiles(const QString &repositoryPath, const QString &name, const QList<WorkingFile> &files) const override
    {
        pushStash(repositoryPath, name, files);
    }

    void resolveWithSide(const QString &repositoryPath, const QStringList &paths, ConflictSide side) const override
    {
        git::resolveWithSide(repositoryPath, paths, side);
    }
    void markResolved(const QString &repositoryPath, const QStringList &paths, bool resolved) const override
    {
        git::markResolved(repositoryPath, paths, resolved);
    }
    void openInMergeTool(const QString &repositoryPath, const QString &path) const override
    {
        git::openInMergeTool(repositoryPath, path);
    }
    void continueOperation(const QString &repositoryPath, OperationInProgress operation,
                           const QString &message) const override
    {
        git::continueOperation(repositoryPath, operation, message);
    }
    void abortOperation(const QString &repositoryPath, OperationInProgress operation) const override
    {
        git::abortOperation(repositoryPath, operation);
    }

    void deleteBookmark(const QString &repositoryPath, const QString &name) const override
    {
        refuseName(name);
        // Git refuses to delete the branch that is checked out.
        if (currentBranch(repositoryPath) == name)
            Tool::run(Tool::detachCommand(), repositoryPath);
        ToolBackend::deleteBookmark(repositoryPath, name);
    }

    void squashMerge(const QString &repositoryPath, const QString &target) const override
    {
        runNamed(Tool::squashMergeCommand, target, repositoryPath);
    }

    void push(const QString &repositoryPath, const RunControl &control) const override
    {
        // A branch without an upstream is published to origin, when there is one.
        const bool hasUpstream = Tool::run(Tool::upstreamCommand(), repositoryPath).status == 0;
        const std::optional<QString> branch = hasUpstream ? std::nullopt : currentBranch(repositoryPath);
        if (branch && hasOrigin(repositoryPath)) {
            refuseName(*branch);
            Tool::run(Tool::publishCommand(*branch), repositoryPath, control);
        } else {
            Tool::run(Tool::pushCommand(), repositoryPath, control);
        }
    }

    void setRemoteAddress(const QString &repositoryPath, const QString &address) const override
    {
        const QString stored =
            addressToStore(address, [&] { return text(Tool::originUrlCommand(), repositoryPath).trimmed(); });
        Tool::run(hasOrigin(repositoryPath) ? Tool::setOriginCommand(stored) : Tool::addOriginCommand(stored),
                  repositoryPath);
    }
};

} // namespace

const VersionControl &gitBackend()
{
    static const GitBackend backend;
    return backend;
}

} // namespace tillery
