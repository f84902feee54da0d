#include "model/WorkingCopyActions.h"

#include "integrations/IgnoreFile.h"
#include "model/ActionContext.h"
#include "model/ChosenLines.h"
#include "model/Desktop.h"
#include "model/DiffSelection.h"
#include "model/Prompts.h"
#include "model/Workspace.h"
#include "process/WorkingFileRead.h"

#include <QCoreApplication>
#include <QDateTime>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

QString discardExplanation(qsizetype tracked, qsizetype untracked)
{
    const bool one = tracked + untracked == 1;
    if (tracked > 0 && untracked > 0)
        return QCoreApplication::translate("tillery::WorkingCopyActions",
                                           "Tracked files will be restored to their last committed state. Untracked "
                                           "files will be moved to the Trash.");
    if (tracked > 0)
        return one ? QCoreApplication::translate("tillery::WorkingCopyActions",
                                                 "The file will be restored to its last committed state.")
                   : QCoreApplication::translate("tillery::WorkingCopyActions",
                                                 "The files will be restored to their last committed state.");
    return one ? QCoreApplication::translate("tillery::WorkingCopyActions",
                                             "The untracked file will be moved to the Trash.")
               : QCoreApplication::translate("tillery::WorkingCopyActions",
                                             "The untracked files will be moved to the Trash.");
}

} // namespace

bool WorkingCopyActions::canCommit() const
{
    if (m_context.operations.activity().isBusy() || m_context.workspace.commitSummary().trimmed().isEmpty())
        return false;
    // An amend with no files changes the message alone.
    if (m_context.workspace.amendsLastCommit())
        return true;
    const QSet<QString> &marked = m_context.selection.selectedFilePaths();
    const QList<WorkingFile> &files = m_context.workspace.snapshot().files;
    return std::any_of(files.cbegin(), files.cend(), [&marked](const WorkingFile &file) {
        return marked.contains(file.path);
    }) || !m_context.chosen.partlyChosen(files).isEmpty();
}

void WorkingCopyActions::commit()
{
    if (!canCommit())
        return;
    const Workspace &workspace = m_context.workspace;
    QList<WorkingFile> files;
    for (const WorkingFile &file : workspace.snapshot().files) {
        if (m_context.selection.selectedFilePaths().contains(file.path))
            files.append(file);
    }
    const QList<ChosenChanges> chosen = m_context.chosen.partlyChosen(workspace.snapshot().files);
    const std::optional<ActionContext::Selected> target = m_context.selected();
    if (!target)
        return;
    const CommitRequest request{workspace.commitSummary(), workspace.commitDescription(), workspace.commitUsername(),
                                workspace.amendsLastCommit()};
    m_context.operations.perform(
        request.amend ? tr("Amending the last commit") : tr("Committing changes"),
        [backend = &target->backend, path = target->repository.path, files, chosen, request] {
            if (chosen.isEmpty())
                backend->commit(path, files, request);
            else
                backend->commitChosen(path, files, chosen, request);
        },
        [this](Done) {
            m_context.workspace.setAmendsLastCommit(false);
            m_context.workspace.setCommitSummary(QString());
            m_context.workspace.setCommitDescription(QString());
            m_context.chosen.clear();
            m_context.refresh();
        });
}

void WorkingCopyActions::discardShownLines(qsizetype first, qsizetype last)
{
    const std::optional<ChosenChanges> changes = m_context.chosen.shownChanges(first, last);
    const std::optional<ActionContext::Selected> target = m_context.selected();
    if (!changes || !target)
        return;
    const qsizetype count = changes->lines.size();
    const QString message =
        count == 1 ? tr("Discard this changed line?") : tr("Discard these %n changed lines?", nullptr, int(count));
    const QString explanation =
        tr("They will be undone in “%1”. A copy of the file as it is now is kept in the folder “%2” "
           "of the repository's %3 folder.")
            .arg(changes->file.path, u"tillery/discarded"_s,
                 target->backend.traits().kind == RepositoryKind::git ? u".git"_s : u".hg"_s);
    if (m_context.prompts.alert({message,
                                 explanation,
                                 {QCoreApplication::translate("tillery::AlertButtons", "Discard"),
                                  QCoreApplication::translate("tillery::AlertButtons", "Cancel")}})
        != 0)
        return;
    m_context.runAndRefresh(tr("Discarding lines"),
                            [changes = *changes](const VersionControl &backend, const QString &path) {
                                backend.discardChosen(path, changes);
                            });
}

void WorkingCopyActions::discardSelected()
{
    if (!m_context.selected())
        return;
    QStringList tracked;
    QStringList untracked;
    for (const WorkingFile &file : m_context.workspace.snapshot().files) {
        if (m_context.selection.selectedChangeFiles().contains(file))
            (file.state == FileState::untracked ? untracked : tracked).append(file.path);
    }
    const qsizetype count = tracked.size() + untracked.size();
    if (count == 0)
        return;
    const QString message = count == 1 ? tr("Discard changes to “%1”?").arg((tracked + untracked).first())
                                       : tr("Discard changes to %n selected files?", nullptr, int(count));
    if (m_context.prompts.alert({message,
                                 discardExplanation(tracked.size(), untracked.size()),
                                 {QCoreApplication::translate("tillery::AlertButtons", "Discard"),
                                  QCoreApplication::translate("tillery::AlertButtons", "Cancel")}})
        != 0)
        return;

    m_context.runAndRefresh(tr("Discarding changes"), [desktop = &m_context.desktop, tracked,
                                                       untracked](const VersionControl &backend, const QString &path) {
        backend.discard(path, tracked);
        QStringList refused;
        for (const QString &file : untracked) {
            // A path a tool reports is not trusted to stay in the repository.
            const std::optional<QString> inside = pathInsideRepository(path, file);
            if (!inside)
                refused.append(tr("“%1” is not inside the repository; it was not moved to the Trash.").arg(file));
            else if (const std::optional<QString> reason = desktop->moveToTrash(*inside))
                refused.append(*reason);
        }
        if (!refused.isEmpty())
            throw PlatformFailure(refused.join(u'\n'));
    });
}

void WorkingCopyActions::discardAll()
{
    if (!m_context.selected())
        return;
    const AlertRequest request{
        tr("Discard All Changes?"),
        tr("All tracked working-copy changes will be permanently reverted. Untracked files will be left untouched."),
        {QCoreApplication::translate("tillery::AlertButtons", "Discard Changes"),
         QCoreApplication::translate("tillery::AlertButtons", "Cancel")}};
    if (m_context.prompts.alert(request) != 0)
        return;
    m_context.runAndRefresh(tr("Discarding all changes"),
                            [](const VersionControl &backend, const QString &path) { backend.discardAll(path); });
}

void WorkingCopyActions::stashAll()
{
    if (m_context.workspace.snapshot().files.isEmpty())
        return;
    const QString name = u"wharf-"_s + QDateTime::currentDateTime().toString(u"yyyy-MM-dd-HHmmss"_s);
    m_context.runAndRefresh(tr("Stashing all changes"),
                            [name](const VersionControl &backend, const QString &path) { backend.stash(path, name); });
}

void WorkingCopyActions::addIgnoreEntry(const QString &pattern)
{
    const std::optional<ActionContext::Selected> target = m_context.selected();
    if (!target)
        return;
    const RepositoryKind kind = target->repository.kind;
    m_context.runAndRefresh(
        tr("Updating %1").arg(ignoreFileName(kind)),
        [pattern, kind](const VersionControl &, const QString &path) { tillery::addIgnoreEntry(pattern, path, kind); });
}

} // namespace tillery
