#pragma once

#include <QCoreApplication>

namespace tillery {

struct ActionContext;

// Shelves (Mercurial) or stash entries (Git): setting the selected files
// aside under a name, and restoring or deleting the shelf selected on the
// Shelves page. Each runs through perform() and refreshes.
class ShelfActions {
    Q_DECLARE_TR_FUNCTIONS(tillery::ShelfActions)

public:
    explicit ShelfActions(const ActionContext &context)
        : m_context(context)
    {
    }

    // Asks for a name, then shelves the Changes list's selected files.
    void shelveSelectedFiles();
    // Puts the selected shelf's changes back, keeping the shelf or not; the
    // Changes page comes on screen once they are back.
    void restore(bool keep);
    // After asking.
    void deleteSelected();

private:
    const ActionContext &m_context;
};

} // namespace tillery
