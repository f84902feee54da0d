#pragma once

#include <QCoreApplication>
#include <QString>
#include <QtGlobal>

namespace tillery {

struct ActionContext;

// Commit, discard and stash: the operations that change the working copy of
// the selected repository. Each asks first where it destroys work, runs
// through perform() and refreshes on success.
class WorkingCopyActions {
    Q_DECLARE_TR_FUNCTIONS(tillery::WorkingCopyActions)

public:
    explicit WorkingCopyActions(const ActionContext &context)
        : m_context(context)
    {
    }

    bool canCommit() const;
    // Commits the files marked for commit (untracked ones are added first).
    // The summary and description are cleared only when it succeeds.
    void commit();
    // Undoes the added and removed lines among unified lines first to last of
    // the diff on screen, after asking; the file as it was is kept in a copy,
    // which the activity row names.
    void discardShownLines(qsizetype first, qsizetype last);
    // Restores the tracked files of the Changes list's selection and moves
    // its untracked files to the Trash, after asking.
    void discardSelected();
    void discardAll();
    // Shelves or stashes everything under the name "wharf-" + local time.
    void stashAll();
    // Adds an entry to the repository's ignore file.
    void addIgnoreEntry(const QString &pattern);

private:
    const ActionContext &m_context;
};

} // namespace tillery
