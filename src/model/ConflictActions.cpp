#include "model/ConflictActions.h"

#include "model/ActionContext.h"
#include "model/DiffSelection.h"
#include "model/Prompts.h"
#include "model/Workspace.h"
#include "process/CommitMessage.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace tillery {

OperationInProgress ConflictActions::operation() const
{
    return m_context.workspace.snapshot().operation;
}

QList<WorkingFile> ConflictActions::unresolvedFiles() const
{
    QList<WorkingFile> files;
    for (const WorkingFile &file : m_context.workspace.snapshot().files) {
        if (file.state == FileState::unresolved)
            files.append(file);
    }
    return files;
}

bool ConflictActions::canContinue() const
{
    return operation() != OperationInProgress::none && unresolvedFiles().isEmpty()
           && !m_context.operations.activity().isBusy();
}

void ConflictActions::continueOperation()
{
    const std::optional<ActionContext::Selected> target = m_context.selected();
    if (!target || !canContinue())
        return;
    const OperationInProgress current = operation();
    const Workspace &workspace = m_context.workspace;
    const bool usesCommitBox = current == OperationInProgress::merge && !workspace.commitSummary().trimmed().isEmpty();
    // The message is the repository's, like the tools' own merge messages: never translated.
    const QString message = usesCommitBox
                                ? composeCommitMessage(workspace.commitSummary(), workspace.commitDescription())
                                : u"Merge"_s;
    m_context.operations.perform(
        tr("Continuing %1").arg(operationNoun(current, target->repository.kind)),
        [backend = &target->backend, path = target->repository.path, current, message] {
            backend->continueOperation(path, current, message);
        },
        [this, usesCommitBox](Done) {
            if (usesCommitBox) {
                m_context.workspace.setCommitSummary(QString());
                m_context.workspace.setCommitDescription(QString());
            }
            m_context.refresh();
        },
        [this] { m_context.refresh(); });
}

void ConflictActions::abortOperation()
{
    const std::optional<ActionContext::Selected> target = m_context.selected();
    const OperationInProgress current = operation();
    if (!target || current == OperationInProgress::none)
        return;
    const QString noun = operationNoun(current, target->repository.kind);
    const AlertRequest request{
        tr("Abort the %1?").arg(noun),
        tr("The working copy goes back to how it was before the %1; what was resolved so far is lost.").arg(noun),
        {QCoreApplication::translate("tillery::AlertButtons", "Abort %1")
             .arg(operationTitle(current, target->repository.kind)),
         QCoreApplication::translate("tillery::AlertButtons", "Cancel")}};
    if (m_context.prompts.alert(request) != 0)
        return;
    m_context.runAndRefresh(tr("Aborting %1").arg(noun), [current](const VersionControl &backend, const QString &path) {
        backend.abortOperation(path, current);
    });
}

QStringList ConflictActions::selectedPaths(bool unresolved) const
{
    const QStringList &resolved = m_context.workspace.snapshot().resolvedFiles;
    QStringList paths;
    for (const WorkingFile &file : m_context.workspace.snapshot().files) {
        if (!m_context.selection.selectedChangeFiles().contains(file))
            continue;
        if (unresolved ? file.state == FileState::unresolved : resolved.contains(file.path))
            paths.append(file.path);
    }
    return paths;
}

void ConflictActions::takeSide(ConflictSide side)
{
    const QStringList paths = selectedPaths(true);
    if (paths.isEmpty())
        return;
    m_context.runAndRefresh(side == ConflictSide::mine ? tr("Using mine") : tr("Using theirs"),
                            [paths, side](const VersionControl &backend, const QString &path) {
                                backend.resolveWithSide(path, paths, side);
                            });
}

void ConflictActions::markSelected(bool resolved)
{
    const QStringList paths = selectedPaths(resolved);
    if (paths.isEmpty())
        return;
    m_context.runAndRefresh(resolved ? tr("Marking as resolved") : tr("Marking as unresolved"),
                            [paths, resolved](const VersionControl &backend, const QString &path) {
                                backend.markResolved(path, paths, resolved);
                            });
}

void ConflictActions::openInMergeTool()
{
    const QStringList paths = selectedPaths(true);
    if (paths.isEmpty())
        return;
    m_context.runAndRefresh(tr("Merging “%1” in the merge tool").arg(paths.first()),
                            [file = paths.first()](const VersionControl &backend, const QString &path) {
                                backend.openInMergeTool(path, file);
                            });
}

} // namespace tillery
