#include "model/LastCommitActions.h"

#include "model/ActionContext.h"
#include "model/Prompts.h"
#include "model/Workspace.h"

#include <QCoreApplication>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

std::optional<Changeset> workingParentOf(const RepositorySnapshot &snapshot)
{
    const auto found = std::find_if(snapshot.history.cbegin(), snapshot.history.cend(), [&](const Changeset &entry) {
        return entry.node == snapshot.workingParent;
    });
    return found == snapshot.history.cend() ? std::nullopt : std::optional(*found);
}

// A history entry's description is the whole message; the box has the
// summary on its own line above the rest.
QString bodyOf(const Changeset &changeset)
{
    QString body = changeset.description;
    if (body.startsWith(changeset.summary))
        body.remove(0, changeset.summary.size());
    while (body.startsWith(u'\n') || body.startsWith(u'\r'))
        body.remove(0, 1);
    return body;
}

bool isCommitBoxEmpty(const Workspace &workspace)
{
    return workspace.commitSummary().trimmed().isEmpty() && workspace.commitDescription().trimmed().isEmpty();
}

} // namespace

void LastCommitActions::setAmending(bool amending)
{
    Workspace &workspace = m_context.workspace;
    if (workspace.amendsLastCommit() == amending)
        return;
    workspace.setAmendsLastCommit(amending);
    if (amending) {
        m_filledSummary.clear();
        m_filledDescription.clear();
        const std::optional<Changeset> last = workingParentOf(workspace.snapshot());
        if (!last || !isCommitBoxEmpty(workspace))
            return;
        m_filledSummary = last->summary;
        m_filledDescription = bodyOf(*last);
        workspace.setCommitSummary(m_filledSummary);
        workspace.setCommitDescription(m_filledDescription);
        return;
    }
    // The message is taken out only as it was put in; an edited one stays.
    if (!m_filledSummary.isEmpty() && workspace.commitSummary() == m_filledSummary
        && workspace.commitDescription() == m_filledDescription) {
        workspace.setCommitSummary(QString());
        workspace.setCommitDescription(QString());
    }
    m_filledSummary.clear();
    m_filledDescription.clear();
}

bool LastCommitActions::canUndoLastCommit() const
{
    const RepositorySnapshot &snapshot = m_context.workspace.snapshot();
    return m_context.selected() && !m_context.operations.activity().isBusy() && !snapshot.workingParent.isEmpty()
           && snapshot.operation == OperationInProgress::none;
}

void LastCommitActions::undoLastCommit()
{
    if (!canUndoLastCommit())
        return;
    const std::optional<Changeset> last = workingParentOf(m_context.workspace.snapshot());
    const QString explanation =
        last ? tr("“%1” will be taken back. Its changes return to the working copy, beside the changes already there.")
                   .arg(last->summary)
             : tr("The last commit will be taken back. Its changes return to the working copy, beside the changes "
                  "already there.");
    const AlertRequest request{tr("Undo the last commit?"),
                               explanation,
                               {QCoreApplication::translate("tillery::AlertButtons", "Undo Commit"),
                                QCoreApplication::translate("tillery::AlertButtons", "Cancel")}};
    if (m_context.prompts.alert(request) != 0)
        return;
    const ActionContext::Selected target = *m_context.selected();
    m_context.operations.perform(
        tr("Undoing the last commit"),
        [backend = &target.backend, path = target.repository.path] { backend->undoLastCommit(path); },
        [this, last](Done) {
            Workspace &workspace = m_context.workspace;
            if (last && isCommitBoxEmpty(workspace) && !workspace.amendsLastCommit()) {
                workspace.setCommitSummary(last->summary);
                workspace.setCommitDescription(bodyOf(*last));
            }
            m_context.refresh();
        });
}

} // namespace tillery
