#pragma once

#include <QCoreApplication>
#include <QString>

namespace tillery {

struct ActionContext;

// Amending and undoing the working copy's parent. Ticking "Amend Last
// Commit" fills an empty commit box with the last commit's message, and
// unticking it takes that message out again while it is unchanged.
class LastCommitActions {
    Q_DECLARE_TR_FUNCTIONS(tillery::LastCommitActions)

public:
    explicit LastCommitActions(const ActionContext &context)
        : m_context(context)
    {
    }

    void setAmending(bool amending);
    // Stops amending, as after an amend or on another repository.
    void stopAmending() { setAmending(false); }
    bool canUndoLastCommit() const;
    // Asks first; the undone commit's message goes back into an empty
    // commit box.
    void undoLastCommit();

private:
    const ActionContext &m_context;
    QString m_filledSummary;
    QString m_filledDescription;
};

} // namespace tillery
