#include "model/ShelfActions.h"

#include "model/ActionContext.h"
#include "model/DiffSelection.h"
#include "model/Prompts.h"
#include "model/ShelfSelection.h"
#include "model/Workspace.h"

#include <QDateTime>

using namespace Qt::StringLiterals;

namespace tillery {

void ShelfActions::shelveSelectedFiles()
{
    const std::optional<ActionContext::Selected> target = m_context.selected();
    if (!target)
        return;
    QList<WorkingFile> files;
    for (const WorkingFile &file : m_context.workspace.snapshot().files) {
        if (m_context.selection.selectedChangeFiles().contains(file))
            files.append(file);
    }
    if (files.isEmpty())
        return;
    const RepositoryKind kind = target->backend.kind();
    const QString explanation =
        files.size() == 1
            ? tr("The changes to “%1” are set aside under this name and leave the working copy.")
                  .arg(files.first().path)
            : tr("The changes to the %n selected files are set aside under this name and leave the working copy.",
                 nullptr, int(files.size()));
    const std::optional<QString> name =
        m_context.prompts.enterText({byKind(kind, tr("Shelve Selected Files"), tr("Stash Selected Files")), explanation,
                                     u"wharf-"_s + QDateTime::currentDateTime().toString(u"yyyy-MM-dd-HHmmss"_s),
                                     byKind(kind, tr("Shelve"), tr("Stash", "verb"))});
    if (!name || name->trimmed().isEmpty())
        return;
    m_context.runAndRefresh(byKind(kind, tr("Shelving selected files"), tr("Stashing selected files")),
                            [files, name = name->trimmed()](const VersionControl &backend, const QString &path) {
                                backend.shelveFiles(path, name, files);
                            });
}

void ShelfActions::restore(bool keep)
{
    const std::optional<ActionContext::Selected> target = m_context.selected();
    const std::optional<Shelf> &shelf = m_context.shelves.selectedShelf();
    if (!target || !shelf)
        return;
    m_context.operations.perform(
        tr("Restoring %1").arg(target->backend.traits().shelf),
        [backend = &target->backend, path = target->repository.path, shelf = *shelf, keep] {
            backend->restoreShelf(path, shelf, keep);
        },
        [this](Done) {
            m_context.showTab(WorkspaceTab::changes);
            m_context.refresh();
        },
        // A restore that conflicts stops there: the Changes page shows the conflicts after the refresh.
        [this] { m_context.refresh(); });
}

void ShelfActions::deleteSelected()
{
    const std::optional<ActionContext::Selected> target = m_context.selected();
    const std::optional<Shelf> &shelf = m_context.shelves.selectedShelf();
    if (!target || !shelf)
        return;
    const KindTraits traits = target->backend.traits();
    const AlertRequest request{tr("Delete the %1 “%2”?").arg(traits.shelf, shelf->title),
                               tr("Its changes will be gone for good."),
                               {QCoreApplication::translate("tillery::AlertButtons", "Delete"),
                                QCoreApplication::translate("tillery::AlertButtons", "Cancel")}};
    if (m_context.prompts.alert(request) != 0)
        return;
    m_context.runAndRefresh(
        tr("Deleting %1").arg(traits.shelf),
        [shelf = *shelf](const VersionControl &backend, const QString &path) { backend.deleteShelf(path, shelf); });
}

} // namespace tillery
