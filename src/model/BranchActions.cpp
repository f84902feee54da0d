#include "model/BranchActions.h"

#include "model/ActionContext.h"
#include "model/DiffSelection.h"
#include "model/Prompts.h"
#include "model/Workspace.h"
#include "process/RepositoryDetection.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

enum class Destination { absent, emptyFolder, other };

Destination destinationState(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink())
        return Destination::absent;
    if (info.isDir() && !info.isSymLink()
        && QDir(path).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot))
        return Destination::emptyFolder;
    return Destination::other;
}

// What a stopped clone leaves behind goes: a folder it made is removed, an
// empty folder that was there before is emptied again, anything else that
// was there before is left alone.
void removeCloneRemains(const QString &destination, Destination before)
{
    QDir folder(destination);
    if (before == Destination::other)
        return;
    if (before == Destination::absent) {
        folder.removeRecursively();
        return;
    }
    const QFileInfoList entries =
        folder.entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QFileInfo &entry : entries) {
        if (entry.isDir() && !entry.isSymLink())
            QDir(entry.filePath()).removeRecursively();
        else
            QFile::remove(entry.filePath());
    }
}

} // namespace

void BranchActions::createBookmark(const QString &name)
{
    m_context.runAndRefresh(tr("Creating branch"), [name](const VersionControl &backend, const QString &path) {
        backend.createBookmark(path, name);
    });
}

void BranchActions::renameBookmark(const Bookmark &bookmark)
{
    if (!m_context.selected())
        return;
    const std::optional<QString> entered =
        m_context.prompts.enterText({tr("Rename Branch"), QString(), bookmark.name,
                                     QCoreApplication::translate("tillery::AlertButtons", "Rename")});
    if (!entered || entered->trimmed().isEmpty() || *entered == bookmark.name)
        return;
    m_context.runAndRefresh(tr("Renaming branch"), [oldName = bookmark.name, newName = *entered](
                                                       const VersionControl &backend, const QString &path) {
        backend.renameBookmark(path, oldName, newName);
    });
}

void BranchActions::deleteBookmark(const Bookmark &bookmark)
{
    const std::optional<ActionContext::Selected> target = m_context.selected();
    if (!target)
        return;
    const AlertRequest request{
        tr("Delete Branch?"),
        byKind(target->backend.kind(),
               tr("The bookmark “%1” will be deleted. Its changesets will remain in the repository."),
               tr("The branch “%1” will be deleted. Its commits will remain in the repository."))
            .arg(bookmark.name),
        {QCoreApplication::translate("tillery::AlertButtons", "Delete"),
         QCoreApplication::translate("tillery::AlertButtons", "Cancel")}};
    if (m_context.prompts.alert(request) != 0)
        return;
    m_context.runAndRefresh(tr("Deleting branch"),
                            [name = bookmark.name](const VersionControl &backend, const QString &path) {
                                backend.deleteBookmark(path, name);
                            });
}

void BranchActions::switchTo(const Bookmark &bookmark, const QString &activity)
{
    m_context.runAndRefresh(activity, [name = bookmark.name](const VersionControl &backend, const QString &path) {
        backend.switchTo(path, name);
    });
}

void BranchActions::updateFromDefaultBranch()
{
    const QString target = m_context.workspace.snapshot().defaultBranch;
    m_context.runAndRefresh(
        tr("Updating from %1").arg(target),
        [target](const VersionControl &backend, const QString &path) { backend.merge(path, target); });
}

std::optional<QString> BranchActions::chooseOtherBranch(const QString &title, const QString &button)
{
    const std::optional<ActionContext::Selected> target = m_context.selected();
    if (!target)
        return std::nullopt;
    const RepositorySnapshot &snapshot = m_context.workspace.snapshot();
    QStringList candidates;
    for (const Bookmark &bookmark : snapshot.bookmarks) {
        if (!bookmark.active && bookmark.name != snapshot.activeBookmark)
            candidates.append(bookmark.name);
    }
    if (candidates.isEmpty()) {
        m_context.prompts.alert({title,
                                 tr("There are no other branches to choose from."),
                                 {QCoreApplication::translate("tillery::AlertButtons", "OK")}});
        return std::nullopt;
    }
    const std::optional<int> chosen = m_context.prompts.choose(
        {title, byKind(target->backend.kind(), tr("Choose a Mercurial bookmark."), tr("Choose a Git branch.")),
         candidates, button});
    if (!chosen || *chosen < 0 || *chosen >= candidates.size())
        return std::nullopt;
    return candidates[*chosen];
}

void BranchActions::merge()
{
    const std::optional<QString> target = chooseOtherBranch(
        tr("Merge into Current Branch"), QCoreApplication::translate("tillery::AlertButtons", "Merge"));
    if (!target)
        return;
    m_context.runAndRefresh(
        tr("Merging %1").arg(*target),
        [target = *target](const VersionControl &backend, const QString &path) { backend.merge(path, target); });
}

void BranchActions::squashMerge()
{
    const std::optional<ActionContext::Selected> selected = m_context.selected();
    if (!selected || !selected->backend.traits().hasSquashMerge)
        return;
    const std::optional<QString> target =
        chooseOtherBranch(tr("Squash and Merge into Current Branch"),
                          QCoreApplication::translate("tillery::AlertButtons", "Squash and Merge"));
    if (!target)
        return;
    m_context.runAndRefresh(
        tr("Squash merging %1").arg(*target),
        [target = *target](const VersionControl &backend, const QString &path) { backend.squashMerge(path, target); });
}

void BranchActions::rebase()
{
    const std::optional<QString> target =
        chooseOtherBranch(tr("Rebase Current Branch"), QCoreApplication::translate("tillery::AlertButtons", "Rebase"));
    if (!target)
        return;
    const RepositorySnapshot &snapshot = m_context.workspace.snapshot();
    const QString current = snapshot.activeBookmark.value_or(snapshot.branch);
    m_context.runAndRefresh(
        tr("Rebasing %1 onto %2").arg(current, *target),
        [target = *target](const VersionControl &backend, const QString &path) { backend.rebase(path, target); });
}

void BranchActions::compare()
{
    const std::optional<QString> target =
        chooseOtherBranch(tr("Compare to Branch"), QCoreApplication::translate("tillery::AlertButtons", "Compare"));
    if (!target)
        return;
    const ActionContext::Selected selected = *m_context.selected();
    const RepositorySnapshot &snapshot = m_context.workspace.snapshot();
    const QString title = tr("Changes on %1 since %2").arg(snapshot.activeBookmark.value_or(snapshot.branch), *target);
    m_context.operations.perform(
        tr("Comparing to %1").arg(*target),
        [backend = &selected.backend, path = selected.repository.path, target = *target] {
            const QString text = backend->compareDiff(path, target);
            return buildDiffDocument(text.isEmpty() ? tr("There are no differences from %1.").arg(target) : text);
        },
        [selection = &m_context.selection, title](const PresentedDiffDocument &document) {
            selection->showComparison(document, title);
        });
}

void BranchActions::pull()
{
    m_context.runRemoteAndRefresh(tr("Pulling and updating"),
                                  [](const VersionControl &backend, const QString &path, const RunControl &control) {
                                      backend.pull(path, control);
                                  });
}

void BranchActions::fetch()
{
    const std::optional<ActionContext::Selected> selected = m_context.selected();
    if (!selected)
        return;
    m_context.runRemoteAndRefresh(tr("Fetching %1").arg(selected->backend.traits().changesets),
                                  [](const VersionControl &backend, const QString &path, const RunControl &control) {
                                      backend.fetch(path, control);
                                  });
}

void BranchActions::push()
{
    const std::optional<ActionContext::Selected> selected = m_context.selected();
    if (!selected)
        return;
    m_context.runRemoteAndRefresh(tr("Pushing %1").arg(selected->backend.traits().changesets),
                                  [](const VersionControl &backend, const QString &path, const RunControl &control) {
                                      backend.push(path, control);
                                  });
}

void BranchActions::saveRemotePath(const QString &address)
{
    m_context.runAndRefresh(tr("Saving remote path"), [address](const VersionControl &backend, const QString &path) {
        backend.setRemoteAddress(path, address);
    });
}

void BranchActions::clone(const QString &source, const QString &destination, RepositoryKind kind)
{
    const VersionControl *backend = &versionControl(kind);
    const QString target = QDir::cleanPath(destination.trimmed());
    // A stopped clone removes what it made at the destination: an empty or
    // relative one would be the application's current folder.
    if (!target.startsWith(u'/') || target == u"/") {
        m_context.operations.presentError(tr("Cloning repository"), tr("Choose a folder to clone into."));
        return;
    }
    m_context.operations.performRemote(
        tr("Cloning repository"),
        [backend, source, target](const RunControl &control) {
            const Destination before = destinationState(target);
            try {
                backend->clone(source, target, control);
            } catch (const CancellationFailure &) {
                removeCloneRemains(target, before);
                throw;
            }
            return detectRepository(target);
        },
        m_context.adopt, source);
}

void BranchActions::createRepository()
{
    const std::optional<int> kindChoice = m_context.prompts.alert(
        {tr("Create a Repository"),
         tr("Choose the version control system for the new repository."),
         {u"Mercurial"_s, u"Git"_s, QCoreApplication::translate("tillery::AlertButtons", "Cancel")}});
    if (!kindChoice || (*kindChoice != 0 && *kindChoice != 1))
        return;
    const RepositoryKind kind = *kindChoice == 0 ? RepositoryKind::mercurial : RepositoryKind::git;
    const std::optional<QString> folder = m_context.prompts.chooseFolder(
        {tr("Choose a Folder for the New Repository"),
         QCoreApplication::translate("tillery::AlertButtons", "Create Repository"), true});
    if (!folder)
        return;
    const VersionControl *backend = &versionControl(kind);
    m_context.operations.perform(
        tr("Creating repository"),
        [backend, path = QDir::cleanPath(*folder)] { return backend->createRepository(path); }, m_context.adopt);
}

} // namespace tillery
