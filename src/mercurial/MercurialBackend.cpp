#include "mercurial/MercurialBackend.h"

#include "mercurial/MercurialConfigFile.h"
#include "mercurial/MercurialConflicts.h"
#include "mercurial/MercurialHistoryPager.h"
#include "mercurial/MercurialParsers.h"
#include "mercurial/MercurialShelves.h"
#include "mercurial/MercurialSnapshot.h"
#include "mercurial/MercurialTool.h"
#include "process/CommitMessage.h"
#include "process/RemoteAddress.h"
#include "process/ToolBackend.h"
#include "process/WorkingFileJournal.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

using Tool = MercurialTool;

class MercurialBackend final : public ToolBackend<Tool> {
    Q_DECLARE_TR_FUNCTIONS(tillery::MercurialBackend)

public:
    KindTraits traits() const override
    {
        return {
            RepositoryKind::mercurial,
            u"Mercurial"_s,
            QCoreApplication::translate("tillery::KindTraits", "changeset"),
            QCoreApplication::translate("tillery::KindTraits", "changesets"),
            QCoreApplication::translate("tillery::KindTraits", "bookmark"),
            QCoreApplication::translate("tillery::KindTraits", "bookmarks"),
            u"default"_s,
            QCoreApplication::translate("tillery::KindTraits", "path", "where Mercurial pulls from and pushes to"),
            u"https://example.com/project"_s,
            QCoreApplication::translate("tillery::KindTraits", "Create a Mercurial bookmark at the current changeset."),
            QCoreApplication::translate("tillery::KindTraits",
                                        "The bookmark will point to the current changeset and become active."),
            u"default"_s,
            false,
            QCoreApplication::translate("tillery::KindTraits", "shelf"),
            QCoreApplication::translate("tillery::KindTraits", "shelves"),
        };
    }

    std::optional<QString> bookmarkNameProblem(const QString &name) const override
    {
        if (name.contains(u':'))
            return tr("A bookmark name cannot contain “:”.");
        bool number = false;
        name.toLongLong(&number);
        if (number)
            return tr("A bookmark name cannot be a number.");
        if (name == u"." || name == u"null" || name == u"tip")
            return tr("“%1” is a name Mercurial keeps for itself.").arg(name);
        return std::nullopt;
    }

    RepositorySnapshot loadSnapshot(const QString &repositoryPath) const override
    {
        // Files a commit of chosen changes set aside when Tillery died during it.
        const QStringList restored = workingFileJournal::restore(repositoryPath, metadataFolder(repositoryPath));
        RepositorySnapshot snapshot = loadMercurialSnapshot(repositoryPath);
        snapshot.restoredWorkingFiles = restored;
        return snapshot;
    }

    std::unique_ptr<HistoryPager> historyPager(const QString &repositoryPath, const HistoryFilter &filter,
                                               const std::optional<Changeset> &lastShown,
                                               qsizetype shownCount) const override
    {
        const bool afterSnapshot = filter.isEmpty() && lastShown && shownCount > 0;
        return mercurial::makeHistoryPager(repositoryPath, filter,
                                afterSnapshot ? std::optional(lastShown->revision) : std::nullopt);
    }

    QList<WorkingFile> changesetFiles(const QString &repositoryPath, const Changeset &changeset) const override
    {
        return parseMercurialStatus(
            outputOf(Tool::changesetFilesCommand(checkedChangesetId(changeset)), repositoryPath));
    }

    FileAnnotation annotateFile(const QString &repositoryPath, const std::optional<QString> &node, const QString &path,
                                const CancellationCheck &isCancelled) const override
    {
        const ToolCommand command = Tool::annotateCommand(annotatedRevision(node), path);
        return mercurial::parseAnnotation(outputOf(command, repositoryPath, RunControl{isCancelled, {}}), path);
    }

    // hg has no staging: untracked files are added, then exactly the chosen
    // files are committed.
    void commit(const QString &repositoryPath, const QList<WorkingFile> &files,
                const CommitRequest &request) const override
    {
        if (request.amend)
            refuseRewriteWhereNeeded(repositoryPath);
        else if (files.isEmpty())
            return;
        addUntracked(repositoryPath, files);
        Tool::run(Tool::commitCommand(pathsOf(files), composeCommitMessage(request.summary, request.description),
                                      request.userName, request.amend),
                  repositoryPath);
    }

    std::optional<QString> rewriteRefusal(const QString &repositoryPath) const override
    {
        const QStringList parent = decodeUtf8OrEmpty(outputOf(Tool::parentPhaseCommand(), repositoryPath)).split(u'\n');
        if (parent.value(0).isEmpty() || parent.value(0).count(u'0') == parent.value(0).size())
            return tr("There is no changeset yet.");
        if (parent.value(1) == u"public")
            return tr("The last changeset is public, so others may have it; it can no longer be changed.");
        return std::nullopt;
    }

    void undoLastCommit(const QString &repositoryPath) const override
    {
        refuseRewriteWhereNeeded(repositoryPath);
        Tool::run(Tool::undoLastCommitCommand(), repositoryPath);
    }

    // hg has no index: the chosen versions are written over the working
    // files for the commit, and the working versions, set aside first, are
    // put back after it (or, should Tillery die meanwhile, at the next load).
    void commitChosen(const QString &repositoryPath, const QList<WorkingFile> &wholeFiles,
                      const QList<ChosenChanges> &chosen, const CommitRequest &request) const override
    {
        if (request.amend)
            refuseRewriteWhereNeeded(repositoryPath);
        const QList<ChosenVersion> versions = committedVersions(repositoryPath, chosen);
        checkParents(chosen, versions,
                     [&](const QStringList &paths) { return parentContentsOfFiles(repositoryPath, paths); });
        QStringList chosenPaths;
        QList<WorkingFile> files = wholeFiles;
        for (const ChosenChanges &changes : chosen) {
            chosenPaths.append(changes.file.path);
            files.append(changes.file);
        }
        addUntracked(repositoryPath, files);
        const QString metadata = metadataFolder(repositoryPath);
        workingFileJournal::save(repositoryPath, metadata, chosenPaths);
        try {
            for (qsizetype index = 0; index < chosenPaths.size(); ++index)
                writeWorkingFile(repositoryPath, chosenPaths[index], versions[index].committed.toUtf8());
            Tool::run(Tool::commitCommand(pathsOf(files), composeCommitMessage(request.summary, request.description),
                                          request.userName, request.amend),
                      repositoryPath);
        } catch (...) {
            workingFileJournal::restore(repositoryPath, metadata);
            throw;
        }
        workingFileJournal::restore(repositoryPath, metadata);
    }

    void discard(const QString &repositoryPath, const QStringList &paths) const override
    {
        if (!paths.isEmpty())
            Tool::run(Tool::revertCommand(paths), repositoryPath);
    }

    void discardAll(const QString &repositoryPath) const override
    {
        Tool::run(Tool::revertAllCommand(), repositoryPath);
    }

    void stash(const QString &repositoryPath, const QString &name) const override
    {
        refuseOptionLike(name, QT_TRANSLATE_NOOP("tillery::OptionLike", "A shelf name cannot begin with “-”."));
        Tool::run(Tool::shelveCommand(name), repositoryPath);
    }

    QList<WorkingFile> shelfFiles(const QString &repositoryPath, const Shelf &shelf) const override
    {
        return mercurial::shelfFiles(repositoryPath, shelf);
    }
    QString shelfDiff(const QString &repositoryPath, const Shelf &shelf, const QString &path,
                      const CancellationCheck &isCancelled) const override
    {
        return mercurial::shelfDiff(repositoryPath, shelf, path, isCancelled);
    }
    void restoreShelf(const QString &repositoryPath, const Shelf &shelf, bool keep) const override
    {
        mercurial::unshelve(repositoryPath, shelf, keep);
    }
    void deleteShelf(const QString &repositoryPath, const Shelf &shelf) const override
    {
        mercurial::deleteShelf(repositoryPath, shelf);
    }
    void shelveFiles(const QString &repositoryPath, const QString &name, const QList<WorkingFile> &files) const override
    {
        mercurial::shelveFiles(repositoryPath, name, files);
    }

    void resolveWithSide(const QString &repositoryPath, const QStringList &paths, ConflictSide side) const override
    {
        mercurial::resolveWithSide(repositoryPath, paths, side);
    }
    void markResolved(const QString &repositoryPath, const QStringList &paths, bool resolved) const override
    {
        mercurial::markResolved(repositoryPath, paths, resolved);
    }
    void openInMergeTool(const QString &repositoryPath, const QString &path) const override
    {
        mercurial::openInMergeTool(repositoryPath, path);
    }
    void continueOperation(const QString &repositoryPath, OperationInProgress operation,
                           const QString &message) const override
    {
        mercurial::continueOperation(repositoryPath, operation, message);
    }
    void abortOperation(const QString &repositoryPath, OperationInProgress operation) const override
    {
        mercurial::abortOperation(repositoryPath, operation);
    }

    void squashMerge(const QString &, const QString &) const override
    {
        throw RefusedInput(tr("Mercurial has no squash merge; merge the bookmark or rebase onto it instead."));
    }

    void push(const QString &repositoryPath, const RunControl &control) const override
    {
        Tool::run(Tool::pushCommand(), repositoryPath, control);
    }

    void setRemoteAddress(const QString &repositoryPath, const QString &address) const override
    {
        // hg has no command that sets a path: the file is edited in place.
        mercurial::writeDefaultPath(repositoryPath, addressToStore(address, [&] {
                                        return text(Tool::storedDefaultPathCommand(), repositoryPath).trimmed();
                                    }));
    }

    // The files as the working copy's parent has them, read in one run.
    QList<QByteArray> parentContentsOfFiles(const QString &repositoryPath, const QStringList &paths) const
    {
        const QTemporaryDir folder(metadataFolder(repositoryPath) + u"/tillery-parents-XXXXXX"_s);
        if (!folder.isValid())
            throw PlatformFailure::temporaryFolderNotMade(folder.errorString());
        Tool::run(Tool::parentFilesCommand(folder.path(), paths), repositoryPath);
        return mapped(paths, [&folder](const QString &path) {
            QFile file(folder.filePath(path));
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        });
    }

protected:
    QString metadataFolder(const QString &repositoryPath) const override
    {
        return QDir(repositoryPath).filePath(u".hg"_s);
    }

private:
    static void addUntracked(const QString &repositoryPath, const QList<WorkingFile> &files)
    {
        QList<WorkingFile> untracked;
        std::copy_if(files.cbegin(), files.cend(), std::back_inserter(untracked),
                     [](const WorkingFile &file) { return file.state == FileState::untracked; });
        if (!untracked.isEmpty())
            Tool::run(Tool::addCommand(pathsOf(untracked)), repositoryPath);
    }
};

} // namespace

const VersionControl &mercurialBackend()
{
    static const MercurialBackend backend;
    return backend;
}

} // namespace tillery
