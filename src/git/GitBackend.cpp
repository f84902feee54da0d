#include "git/GitBackend.h"

#include "git/GitHistoryPager.h"
#include "git/GitParsers.h"
#include "git/GitSnapshot.h"
#include "git/GitTool.h"
#include "process/CommitMessage.h"
#include "process/RemoteAddress.h"
#include "process/RepositoryFile.h"
#include "process/ToolBackend.h"
#include "records/TextDecoding.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

using namespace git;
using Tool = GitTool;

constexpr int unbornHeadStatus = 128;

QByteArray outputOf(const ToolCommand &command, const QString &repositoryPath)
{
    return Tool::run(command, repositoryPath).standardOutput;
}

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

    std::unique_ptr<HistoryPager> historyPager(const QString &repositoryPath, const HistoryFilter &filter,
                                               const std::optional<Changeset> &lastShown,
                                               qsizetype shownCount) const override
    {
        const bool afterSnapshot = filter.isEmpty() && lastShown && shownCount > 0;
        return makeHistoryPager(repositoryPath, filter, afterSnapshot ? shownCount : 0,
                                afterSnapshot ? lastShown->revision - 1 : 0);
    }

    QList<QByteArray> parentContentsOfFiles(const QString &repositoryPath, const QStringList &paths) const override
    {
        RunControl names;
        for (const QString &path : paths) {
            // One name a line: a path with a line feed is read on its own.
            if (path.contains(u'\n'))
                return mapped(paths, [&](const QString &each) { return parentContents(repositoryPath, each); });
            names.input += "HEAD:" + path.toUtf8() + '\n';
        }
        const std::optional<QList<QByteArray>> objects =
            parseObjects(outputOf(Tool::objectsCommand(), repositoryPath, names), paths.size());
        if (!objects)
            throw PlatformFailure(u"Git printed the files of HEAD in a form Tillery cannot read."_s);
        return *objects;
    }

    QStringList trackedFileDiffs(const QString &repositoryPath, const QStringList &paths) const override
    {
        // Without a commit each file is compared with the index on its own.
        if (!hasCommits(repositoryPath))
            return mapped(paths, [&](const QString &path) { return trackedFileDiff(repositoryPath, path, {}); });
        return ToolBackend::trackedFileDiffs(repositoryPath, paths);
    }

    QString metadataFolder(const QString &repositoryPath) const override
    {
        return decodeUtf8OrEmpty(outputOf(Tool::gitFolderCommand(), repositoryPath)).trimmed();
    }

    QString trackedFileDiff(const QString &repositoryPath, const QString &path,
                            const RunControl &control) const override
    {
        ToolCommand command = Tool::workingDiffCommand(path);
        command.acceptedStatuses.insert(unbornHeadStatus);
        const CommandOutput output = Tool::run(command, repositoryPath, control);
        // Without a commit HEAD does not resolve; the index is all there is to compare with.
        if (output.status == unbornHeadStatus)
            return text(Tool::stagedDiffCommand(path), repositoryPath, control);
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

    void commit(const QString &repositoryPath, const QList<WorkingFile> &files, const QString &summary,
                const QString &description, const QString &userName) const override
    {
        if (files.isEmpty())
            return;
        const QStringList paths = pathsOf(files);
        Tool::run(Tool::addAllCommand(paths), repositoryPath);
        Tool::run(Tool::commitCommand(paths, composeCommitMessage(summary, description), parseIdentity(userName)),
                  repositoryPath);
    }

    // Through an index of its own, so that nothing the person staged is
    // committed unless chosen, and the working files are never touched.
    void commitChosen(const QString &repositoryPath, const QList<WorkingFile> &wholeFiles,
                      const QList<ChosenChanges> &chosen, const QString &summary, const QString &description,
                      const QString &userName) const override
    {
        const QList<QByteArray> versions = committedVersions(*this, repositoryPath, chosen);
        const QTemporaryDir scratch(metadataFolder(repositoryPath) + u"/tillery-commit-XXXXXX"_s);
        if (!scratch.isValid())
            throw PlatformFailure(u"A temporary folder could not be made: %1"_s.arg(scratch.errorString()));
        const QStringList paths = mappedPaths(chosen, [](const ChosenChanges &changes) { return changes.file.path; });
        // Where the person's index holds what HEAD does, nothing else is staged.
        const bool hasHead = hasCommits(repositoryPath);
        const QHash<QString, QString> staged =
            parseEntryBlobs(outputOf(Tool::indexEntriesCommand(paths), repositoryPath), 1);
        const QHash<QString, QString> committed =
            hasHead ? parseEntryBlobs(outputOf(Tool::headEntriesCommand(paths), repositoryPath), 2)
                    : QHash<QString, QString>();

        const RunControl ownIndex{{}, {}, false, {{u"GIT_INDEX_FILE"_s, scratch.filePath(u"index"_s)}}};
        Tool::run(Tool::readHeadTreeCommand(hasHead), repositoryPath, ownIndex);
        if (!wholeFiles.isEmpty())
            Tool::run(Tool::addAllCommand(pathsOf(wholeFiles)), repositoryPath, ownIndex);
        QStringList versionFiles;
        for (qsizetype index = 0; index < versions.size(); ++index) {
            versionFiles.append(scratch.filePath(QString::number(index)));
            if (const std::optional<QString> reason = overwriteFile(versionFiles.last(), versions[index]))
                throw PlatformFailure(*reason);
        }
        const QStringList blobs = parseLines(outputOf(Tool::storeBlobsCommand(versionFiles), repositoryPath));
        if (blobs.size() != paths.size())
            throw PlatformFailure(u"Git did not store the chosen versions."_s);
        QStringList entries;
        QStringList following;
        for (qsizetype index = 0; index < paths.size(); ++index) {
            const bool executable = QFileInfo(QDir(repositoryPath).filePath(paths[index])).isExecutable();
            entries.append((executable ? u"100755,"_s : u"100644,"_s) + blobs[index] + u',' + paths[index]);
            if (staged.value(paths[index]) == committed.value(paths[index]))
                following.append(entries.last());
        }
        Tool::run(Tool::setIndexEntriesCommand(entries), repositoryPath, ownIndex);
        Tool::run(Tool::commitIndexCommand(composeCommitMessage(summary, description), parseIdentity(userName)),
                  repositoryPath, ownIndex);
        // The person's index follows the commit: whole files as a commit of
        // paths stages them, chosen versions where nothing else was staged.
        if (!wholeFiles.isEmpty())
            Tool::run(Tool::addAllCommand(pathsOf(wholeFiles)), repositoryPath);
        if (!following.isEmpty())
            Tool::run(Tool::setIndexEntriesCommand(following), repositoryPath);
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
