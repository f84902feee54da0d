#include "git/GitConflicts.h"

#include "git/GitConflictParsers.h"
#include "git/GitParsers.h"
#include "git/GitShelves.h"
#include "git/GitTool.h"
#include "process/Failure.h"
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

QString pendingStashDrop(const QString &gitFolder)
{
    QFile file(pendingStashDropPath(gitFolder));
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    const QString id = QString::fromLatin1(file.read(128).trimmed());
    const bool isCommitId =
        (id.size() == 40 || id.size() == 64) && std::all_of(id.cbegin(), id.cend(), [](QChar digit) {
            return digit.isDigit() || (digit >= u'a' && digit <= u'f');
        });
    return isCommitId ? id : QString();
}

QSet<QString> pathSet(const QList<ConflictEntry> &entries)
{
    QSet<QString> paths;
    for (const ConflictEntry &entry : entries)
        paths.insert(entry.path);
    return paths;
}

// The conflicting entries of the files, those of resolved ones put back in
// the index first; refused for a file with neither.
QList<ConflictEntry> reopenedConflicts(const QString &repositoryPath, const QStringList &paths)
{
    QList<ConflictEntry> entries = parseConflictEntries(Tool::output(Tool::unmergedEntriesCommand(paths), repositoryPath));
    const QSet<QString> unmerged = pathSet(entries);
    QStringList resolved;
    for (const QString &path : paths) {
        if (!unmerged.contains(path))
            resolved.append(path);
    }
    if (resolved.isEmpty())
        return entries;
    QList<ConflictEntry> kept = parseConflictEntries(Tool::output(Tool::resolveUndoCommand(resolved), repositoryPath));
    kept.removeIf([&unmerged](const ConflictEntry &entry) { return unmerged.contains(entry.path); });
    const QSet<QString> reopened = pathSet(kept);
    for (const QString &path : resolved) {
        if (!reopened.contains(path))
            throw RefusedInput(
                QCoreApplication::translate("tillery::GitConflicts", "“%1” has no conflict that Git still knows of.")
                    .arg(path));
    }
    RunControl control;
    control.input = conflictRestoringIndexInfo(kept);
    Tool::run(Tool::indexInfoCommand(), repositoryPath, control);
    return entries + kept;
}

void refuseWhileUnresolved(const QString &repositoryPath)
{
    if (!Tool::output(Tool::unmergedEntriesCommand({}), repositoryPath).isEmpty())
        throw RefusedInput(QCoreApplication::translate("tillery::GitConflicts",
                                                       "Some files still have conflicts; resolve them first."));
}

// The newest stash entry whose version of every conflicted file is the one
// the restore merged in ("theirs").
QString stashOfConflicts(const QString &repositoryPath, const QList<ConflictEntry> &unmerged)
{
    QHash<QString, QString> theirs;
    for (const QString &path : pathSet(unmerged))
        theirs.insert(path, QString());
    for (const ConflictEntry &entry : unmerged) {
        if (entry.stage == 3)
            theirs.insert(entry.path, entry.id);
    }
    const QStringList paths = theirs.keys();
    for (const QString &id : parseLines(Tool::output(Tool::stashCommitIdsCommand(), repositoryPath))) {
        const QHash<QString, QString> blobs =
            parseTreeBlobs(Tool::output(Tool::treeEntriesCommand(id, paths), repositoryPath));
        const bool matches = std::all_of(paths.cbegin(), paths.cend(),
                                         [&](const QString &path) { return blobs.value(path) == theirs.value(path); });
        if (matches && !paths.isEmpty())
            return id;
    }
    throw RefusedInput(QCoreApplication::translate(
        "tillery::GitConflicts",
        "Tillery cannot tell which stash was being restored; the working copy was left as it is."));
}

// The stash's untracked files that the restore wrote and that are still as
// it wrote them.
QStringList untouchedUntrackedFiles(const QString &repositoryPath, const QString &stash)
{
    if (Tool::run(Tool::untrackedPartCommand(stash), repositoryPath).status != 0)
        return {};
    QStringList untouched;
    const QHash<QString, QString> blobs =
        parseTreeBlobs(Tool::output(Tool::treeEntriesCommand(stash + u"^3"_s), repositoryPath));
    for (auto entry = blobs.cbegin(); entry != blobs.cend(); ++entry) {
        QFile file(repositoryPath + u'/' + entry.key());
        if (!QFileInfo(file).isSymLink() && file.open(QIODevice::ReadOnly)
            && blobId(file.readAll(), entry.value().size()) == entry.value())
            untouched.append(entry.key());
    }
    return untouched;
}

// Puts the working copy back as it was before the restore, the entry kept:
// a file that conflicted (resolved since or not) gets the version it had
// ("ours", which is what the index held), or goes when it had none; the
// entry's other changes, which the restore staged, are taken off the index
// and the working files by applying them in reverse; its untracked files
// go where they are unchanged. Whatever else was changed or staged before
// stays.
void abortStashRestore(const QString &repositoryPath, const QString &gitFolder)
{
    const QList<ConflictEntry> unmerged =
        parseConflictEntries(Tool::output(Tool::unmergedEntriesCommand({}), repositoryPath));
    const QSet<QString> unmergedPaths = pathSet(unmerged);
    QList<ConflictEntry> resolved = parseConflictEntries(Tool::output(Tool::resolveUndoCommand(), repositoryPath));
    resolved.removeIf([&unmergedPaths](const ConflictEntry &entry) { return unmergedPaths.contains(entry.path); });
    const QList<ConflictEntry> conflicts = unmerged + resolved;
    const QSet<QString> conflicted = pathSet(conflicts);
    QString stash = pendingStashDrop(gitFolder);
    if (stash.isEmpty())
        stash = stashOfConflicts(repositoryPath, conflicts);
    const QStringList staged = parseNames(Tool::output(Tool::stagedNamesCommand(), repositoryPath));
    QStringList restored;
    for (const QString &path : parseNames(Tool::output(Tool::changedPathsCommand(stash), repositoryPath))) {
        if (staged.contains(path) && !conflicted.contains(path))
            restored.append(path);
    }
    RunControl patch;
    if (!restored.isEmpty()) {
        patch.input = Tool::output(Tool::changesPatchCommand(stash, restored), repositoryPath);
        if (Tool::run(Tool::reverseApplyCommand(true), repositoryPath, patch).status != 0)
            throw RefusedInput(QCoreApplication::translate("tillery::GitConflicts",
                                                           "Files the stash changed were changed again since it was "
                                                           "restored; the restore was not undone."));
    }
    const QStringList untracked = untouchedUntrackedFiles(repositoryPath, stash);

    if (!resolved.isEmpty()) {
        RunControl reopening;
        reopening.input = conflictRestoringIndexInfo(resolved);
        Tool::run(Tool::indexInfoCommand(), repositoryPath, reopening);
    }
    QStringList withOurs;
    QStringList withoutOurs;
    for (const QString &path : conflicted) {
        const bool hasOurs = std::any_of(conflicts.cbegin(), conflicts.cend(), [&path](const ConflictEntry &entry) {
            return entry.path == path && entry.stage == 2;
        });
        (hasOurs ? withOurs : withoutOurs).append(path);
    }
    if (!withOurs.isEmpty()) {
        Tool::run(Tool::checkoutSideCommand(withOurs, true), repositoryPath);
        Tool::run(Tool::stageFilesCommand(withOurs), repositoryPath);
    }
    if (!withoutOurs.isEmpty())
        Tool::run(Tool::removeFilesCommand(withoutOurs), repositoryPath);
    if (!restored.isEmpty())
        Tool::run(Tool::reverseApplyCommand(false), repositoryPath, patch);
    for (const QString &path : untracked)
        QFile::remove(repositoryPath + u'/' + path);
    QFile::remove(pendingStashDropPath(gitFolder));
}

} // namespace

QString workingGitFolder(const QString &repositoryPath)
{
    const QString dotGit = repositoryPath + u"/.git"_s;
    const QFileInfo info(dotGit);
    if (info.isDir())
        return dotGit;
    QFile file(dotGit);
    if (info.isFile() && file.open(QIODevice::ReadOnly)) {
        const QByteArray line = file.readLine(4096).trimmed();
        const QString target = line.startsWith("gitdir: ") ? decodeUtf8OrEmpty(line.sliced(8)) : QString();
        if (!target.isEmpty())
            return QDir::cleanPath(QDir(repositoryPath).absoluteFilePath(target));
    }
    return decodeUtf8OrEmpty(Tool::output(Tool::gitFolderCommand(), repositoryPath)).trimmed();
}

OperationInProgress operationInProgress(const QString &gitFolder, const QList<WorkingFile> &files)
{
    const auto has = [&gitFolder](const QString &name) { return QFileInfo::exists(gitFolder + u'/' + name); };
    if (has(u"rebase-merge"_s))
        return OperationInProgress::rebase;
    if (has(u"rebase-apply"_s))
        return has(u"rebase-apply/applying"_s) ? OperationInProgress::none : OperationInProgress::rebase;
    if (has(u"CHERRY_PICK_HEAD"_s))
        return OperationInProgress::graft;
    if (has(u"MERGE_HEAD"_s))
        return OperationInProgress::merge;
    if (has(u"REVERT_HEAD"_s))
        return OperationInProgress::none;
    const bool conflicted = std::any_of(files.cbegin(), files.cend(),
                                        [](const WorkingFile &file) { return file.state == FileState::unresolved; });
    return conflicted || QFileInfo::exists(pendingStashDropPath(gitFolder)) ? OperationInProgress::unshelve
                                                                            : OperationInProgress::none;
}

QStringList resolvedFiles(const QString &repositoryPath, const QList<WorkingFile> &files)
{
    QSet<QString> unresolved;
    for (const WorkingFile &file : files) {
        if (file.state == FileState::unresolved)
            unresolved.insert(file.path);
    }
    QStringList resolved;
    for (const QString &path : pathSet(parseConflictEntries(Tool::output(Tool::resolveUndoCommand(), repositoryPath)))) {
        if (!unresolved.contains(path))
            resolved.append(path);
    }
    sortLocalized(resolved, [](const QString &path) { return path; });
    return resolved;
}

void resolveWithSide(const QString &repositoryPath, const QStringList &paths, ConflictSide side)
{
    if (paths.isEmpty())
        return;
    const int stage = side == ConflictSide::mine ? 2 : 3;
    const QList<ConflictEntry> entries = reopenedConflicts(repositoryPath, paths);
    QStringList taken;
    QStringList deleted;
    for (const QString &path : paths) {
        const bool hasSide = std::any_of(entries.cbegin(), entries.cend(), [&](const ConflictEntry &entry) {
            return entry.path == path && entry.stage == stage;
        });
        (hasSide ? taken : deleted).append(path);
    }
    if (!taken.isEmpty()) {
        Tool::run(Tool::checkoutSideCommand(taken, side == ConflictSide::mine), repositoryPath);
        Tool::run(Tool::stageFilesCommand(taken), repositoryPath);
    }
    if (!deleted.isEmpty())
        Tool::run(Tool::removeFilesCommand(deleted), repositoryPath);
}

void markResolved(const QString &repositoryPath, const QStringList &paths, bool resolved)
{
    if (paths.isEmpty())
        return;
    if (resolved)
        Tool::run(Tool::stageFilesCommand(paths), repositoryPath);
    else
        reopenedConflicts(repositoryPath, paths);
}

void openInMergeTool(const QString &repositoryPath, const QString &path)
{
    const MergeToolSettings settings =
        parseMergeToolSettings(Tool::output(Tool::mergeToolSettingsCommand(), repositoryPath));
    if (!settings.repositoryKeys.isEmpty())
        throw RefusedInput(QCoreApplication::translate("tillery::GitConflicts",
                                                       "This repository's own configuration sets a merge tool (%1); "
                                                       "Tillery runs only one that you set in your own Git "
                                                       "configuration.")
                               .arg(settings.repositoryKeys.join(u", "_s)));
    if (!settings.toolChosen)
        throw RefusedInput(QCoreApplication::translate("tillery::GitConflicts",
                                                       "No merge tool is set in your Git configuration (merge.tool)."));
    reopenedConflicts(repositoryPath, {path});
    Tool::run(Tool::mergeToolCommand(path), repositoryPath);
}

void continueOperation(const QString &repositoryPath, OperationInProgress operation, const QString &message)
{
    if (operation == OperationInProgress::none)
        return;
    refuseWhileUnresolved(repositoryPath);
    if (operation == OperationInProgress::unshelve)
        finishStashRestore(repositoryPath);
    else
        Tool::run(Tool::continueCommand(operation, message), repositoryPath);
}

void abortOperation(const QString &repositoryPath, OperationInProgress operation)
{
    if (operation == OperationInProgress::unshelve)
        abortStashRestore(repositoryPath, workingGitFolder(repositoryPath));
    else if (operation != OperationInProgress::none)
        Tool::run(Tool::abortCommand(operation), repositoryPath);
}

} // namespace tillery::git
