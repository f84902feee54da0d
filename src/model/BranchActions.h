#pragma once

#include "records/Bookmark.h"
#include "records/RepositoryKind.h"

#include <QCoreApplication>
#include <QString>

#include <optional>

namespace tillery {

struct ActionContext;

// The operations on bookmarks (Mercurial) or branches (Git) and on remotes,
// and cloning and creating repositories. Each asks first where it needs a
// choice or a confirmation, runs through perform() and refreshes on
// success; the wording follows the repository's kind.
class BranchActions {
    Q_DECLARE_TR_FUNCTIONS(tillery::BranchActions)

public:
    explicit BranchActions(const ActionContext &context)
        : m_context(context)
    {
    }

    void createBookmark(const QString &name);
    void renameBookmark(const Bookmark &bookmark);
    void deleteBookmark(const Bookmark &bookmark);
    void switchTo(const Bookmark &bookmark, const QString &activity);
    void updateFromDefaultBranch();
    // These three ask which other bookmark or branch to use first; a kind
    // without squash merges ignores squashMerge().
    void merge();
    void squashMerge();
    void rebase();
    // Shows the diff from another bookmark or branch in the diff pane.
    void compare();
    void pull();
    void fetch();
    void push();
    void saveRemotePath(const QString &address);
    // Clones into `destination` (the new repository's folder) and adds the
    // clone; cancelling stops it and removes what it made.
    void clone(const QString &source, const QString &destination, RepositoryKind kind);
    // Asks for the kind and the folder, makes the repository and adds it.
    void createRepository();

private:
    std::optional<QString> chooseOtherBranch(const QString &title, const QString &button);

    const ActionContext &m_context;
};

} // namespace tillery
