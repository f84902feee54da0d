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
    const QString message = usesCommitBox
                                ? composeCommitMessage(workspace.commitSummary(), workspace.commitDescription())
                                : u"Merge"_s;
    m_context.operations.perform(
        u"Continuing %1"_s.arg(operationTitle(current, target->repository.kind).toLower()),
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
    const QString title = operationTitle(current, target->repository.kind);
    const AlertRequest request{
        QCoreApplication::translate("tillery::ConflictActions", "Abort the %1?").arg(title.toLower()),
        u"The working copy goes back to how it was before the %1; what was resolved so far "
        "is lost."_s.arg(title.toLower()),
        {QCoreApplication::translate("tillery::AlertButtons", "Abort %1").arg(title),
         QCoreApplication::translate("tillery::AlertButtons", "Cancel")}};
    if (m_context.prompts.alert(request) != 0)
        return;
    m_context.runAndRefresh(u"Aborting %1"_s.arg(title.toLower()),
                            [current](const VersionControl &backend, const QString &path) {
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
    m_context.runAndRefresh(side == ConflictSide::mine ? u"Using mine"_s : u"Using theirs"_s,
                            [paths, side](const VersionControl &backend, const QString &path) {
                                backend.resolveWithSide(path, paths, side);
                            });
}

void ConflictActions::markSelected(bool resolved)
{
    const QStringList paths = selectedPaths(resolved);
    if (paths.isEmpty())
        return;
    m_context.runAndRefresh(resolved ? u"Marking as resolved"_s : u"Marking as unresolved"_s,
                            [paths, resolved](const VersionControl &backend, const QString &path) {
                                backend.markResolved(path, paths, resolved);
                            });
}

void ConflictActions::openInMergeTool()
{
    const QStringList paths = selectedPaths(true);
    if (paths.isEmpty())
        return;
    m_context.runAndRefresh(u"Merging “%1” in the merge tool"_s.arg(paths.first()),
                            [file = paths.first()](const VersionControl &backend, const QString &path) {
                                backend.openInMergeTool(path, file);
                            });
}

} // namespace tillery
