#pragma once

#include "records/OperationInProgress.h"
#include "records/WorkingFile.h"

#include <QCoreApplication>
#include <QList>
#include <QString>

namespace tillery {

struct ActionContext;

// The operation the working copy is in the middle of (a merge, rebase,
// graft or restore stopped for conflicts) and its conflicted files: taking
// a side, marking, the merge tool, going on and abandoning it. Each runs
// through perform() and refreshes.
class ConflictActions {
    Q_DECLARE_TR_FUNCTIONS(tillery::ConflictActions)

public:
    explicit ConflictActions(const ActionContext &context)
        : m_context(context)
    {
    }

    OperationInProgress operation() const;
    QList<WorkingFile> unresolvedFiles() const;
    // In the middle of an operation with nothing unresolved, and not busy.
    bool canContinue() const;
    // A merge is committed with the commit box's message, or "Merge".
    void continueOperation();
    // After asking.
    void abortOperation();

    // For the Changes list's selected files that are unresolved (or, for
    // marking unresolved, resolved).
    void takeSide(ConflictSide side);
    void markSelected(bool resolved);
    // The first selected unresolved file.
    void openInMergeTool();

private:
    QStringList selectedPaths(bool unresolved) const;

    const ActionContext &m_context;
};

} // namespace tillery
