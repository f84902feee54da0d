#include "git/GitShelves.h"

#include "git/GitParsers.h"
#include "git/GitShelfParsers.h"
#include "git/GitTool.h"
#include "process/BackendSteps.h"
#include "process/Concurrently.h"
#include "process/RepositoryFile.h"
#include "records/LocalizedOrder.h"
#include "records/TextDecoding.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

using namespace Qt::StringLiterals;

namespace tillery::git {

namespace {

using Tool = GitTool;

const QString &checkedStashId(const Shelf &stash)
{
    if (!isFullCommitId(stash.id))
        throw RefusedInput(
            QCoreApplication::translate("tillery::GitShelves", "“%1” is not the id of a stash entry.").arg(stash.id));
    return stash.id;
}

// The entry's "stash@{n}" now, looked up by its id; nothing when it is gone.
std::optional<QString> referenceOf(const QString &repositoryPath, const QString &id)
{
    const QList<QByteArray> ids = Tool::output(Tool::stashIdsCommand(), repositoryPath).split('\n');
    const qsizetype index = ids.indexOf(id.toLatin1());
    return index < 0 ? std::nullopt : std::optional(u"stash@{%1}"_s.arg(index));
}

QString currentReference(const QString &repositoryPath, const Shelf &stash)
{
    if (std::optional<QString> reference = referenceOf(repositoryPath, checkedStashId(stash)))
        return *reference;
    throw RefusedInput(
        QCoreApplication::translate("tillery::GitShelves", "The stash “%1” no longer exists.").arg(stash.title));
}

bool hasUnmergedFiles(const QString &repositoryPath)
{
    return !Tool::output(Tool::unmergedFilesCommand(), repositoryPath).isEmpty();
}

QString pendingDropPath(const QString &repositoryPath)
{
    return pendingStashDropPath(decodeUtf8OrEmpty(Tool::output(Tool::gitFolderCommand(), repositoryPath)).trimmed());
}

void rememberPendingDrop(const QString &path, const QString &id)
{
    const QString folder = QFileInfo(path).path();
    if (QFileInfo(folder).isSymLink() || !QDir().mkpath(folder))
        throw PlatformFailure::folderNotCreated(folder);
    if (const std::optional<QString> reason = replaceFile(path, id.toLatin1() + '\n'))
        throw PlatformFailure(*reason);
}

} // namespace

QList<Shelf> listStashes(const QString &repositoryPath)
{
    return parseStashList(Tool::output(Tool::stashListCommand(), repositoryPath));
}

QList<WorkingFile> stashFiles(const QString &repositoryPath, const Shelf &stash)
{
    const QString &id = checkedStashId(stash);
    std::future<CommandOutput> untracked =
        startConcurrently([&] { return Tool::run(Tool::stashUntrackedFilesCommand(id), repositoryPath); });
    QList<WorkingFile> files = parseCommitFiles(Tool::output(Tool::stashFilesCommand(id), repositoryPath));
    const CommandOutput untrackedFiles = untracked.get();
    if (untrackedFiles.status != 0)
        return files;
    const QStringList trackedPaths = pathsOf(files);
    const QSet<QString> listed(trackedPaths.cbegin(), trackedPaths.cend());
    for (const WorkingFile &file : parseCommitFiles(untrackedFiles.standardOutput)) {
        if (!listed.contains(file.path))
            files.append(file);
    }
    sortLocalized(files, [](const WorkingFile &file) { return file.path; });
    return files;
}

QString stashDiff(const QString &repositoryPath, const Shelf &stash, const QString &path,
                  const CancellationCheck &isCancelled)
{
    const QString &id = checkedStashId(stash);
    const RunControl control{isCancelled, {}};
    const QString diff = decodeUtf8OrEmpty(Tool::output(Tool::stashDiffCommand(id, path), repositoryPath, control));
    if (!diff.isEmpty())
        return diff;
    // Not among the entry's own changes: one of its untracked files, if it has any.
    const CommandOutput untracked = Tool::run(Tool::stashUntrackedDiffCommand(id, path), repositoryPath, control);
    return untracked.status == 0 ? decodeUtf8OrEmpty(untracked.standardOutput) : QString();
}

void restoreStash(const QString &repositoryPath, const Shelf &stash, bool keep)
{
    const QString &id = checkedStashId(stash);
    currentReference(repositoryPath, stash);
    if (hasUnmergedFiles(repositoryPath))
        throw RefusedInput(QCoreApplication::translate(
            "tillery::GitShelves", "Resolve the conflicts in the working copy before restoring a stash."));
    const QString pending = pendingDropPath(repositoryPath);
    try {
        // Applied by its id; dropped (below) by its place in the list at that time.
        Tool::run(Tool::stashApplyCommand(id), repositoryPath);
    } catch (const GitFailure &) {
        if (hasUnmergedFiles(repositoryPath)) {
            if (keep)
                QFile::remove(pending);
            else
                rememberPendingDrop(pending, id);
        }
        throw;
    }
    QFile::remove(pending);
    if (!keep)
        Tool::run(Tool::stashDropCommand(currentReference(repositoryPath, stash)), repositoryPath);
}

void dropStash(const QString &repositoryPath, const Shelf &stash)
{
    Tool::run(Tool::stashDropCommand(currentReference(repositoryPath, stash)), repositoryPath);
}

void pushStash(const QString &repositoryPath, const QString &message, const QList<WorkingFile> &files)
{
    if (files.isEmpty())
        return;
    // A removal already staged is in neither the index nor the working
    // copy, where "stash push" would not find it: it goes back to a removal
    // of the working file alone.
    QList<WorkingFile> removed = files;
    removed.removeIf([](const WorkingFile &file) { return file.state != FileState::removed; });
    if (!removed.isEmpty())
        Tool::run(Tool::unstageCommand(pathsOf(removed)), repositoryPath);
    Tool::run(Tool::stashFilesPushCommand(message, pathsOf(files)), repositoryPath);
}

QString pendingStashDropPath(const QString &gitFolder)
{
    return gitFolder + u"/tillery/stash-to-drop"_s;
}

void finishStashRestore(const QString &repositoryPath)
{
    const QString pending = pendingDropPath(repositoryPath);
    QFile file(pending);
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QString id = QString::fromLatin1(file.readAll().trimmed());
    file.close();
    if (isFullCommitId(id)) {
        if (const std::optional<QString> reference = referenceOf(repositoryPath, id))
            Tool::run(Tool::stashDropCommand(*reference), repositoryPath);
    }
    QFile::remove(pending);
}

void forgetStashRestore(const QString &repositoryPath)
{
    QFile::remove(pendingDropPath(repositoryPath));
}

} // namespace tillery::git
