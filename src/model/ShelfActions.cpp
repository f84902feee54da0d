#include "model/ShelfActions.h"

#include "model/ActionContext.h"
#include "model/DiffSelection.h"
#include "model/Prompts.h"
#include "model/ShelfSelection.h"
#include "model/Workspace.h"

#include <QCoreApplication>
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
    const KindTraits &traits = target->backend.traits();
    const QString count = files.size() == 1 ? u"“%1”"_s.arg(files.first().path)
                                            : u"the %1 selected files"_s.arg(files.size());
    const std::optional<QString> name = m_context.prompts.enterText(
        {capitalized(traits.shelveVerb) + u" Selected Files"_s,
         u"The changes to %1 are set aside under this name and leave the working copy."_s.arg(count),
         u"wharf-"_s + QDateTime::currentDateTime().toString(u"yyyy-MM-dd-HHmmss"_s), capitalized(traits.shelveVerb)});
    if (!name || name->trimmed().isEmpty())
        return;
    // "Shelving", "Stashing".
    const QString verb = capitalized(traits.shelveVerb);
    m_context.runAndRefresh(verb.chopped(verb.endsWith(u'e') ? 1 : 0) + u"ing selected files"_s,
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
        u"Restoring "_s + target->backend.traits().shelf,
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
    const KindTraits &traits = target->backend.traits();
    const AlertRequest request{
        QCoreApplication::translate("tillery::ShelfActions", "Delete the %1 “%2”?").arg(traits.shelf, shelf->title),
        QCoreApplication::translate("tillery::ShelfActions", "Its changes will be gone for good."),
        {QCoreApplication::translate("tillery::AlertButtons", "Delete"),
         QCoreApplication::translate("tillery::AlertButtons", "Cancel")}};
    if (m_context.prompts.alert(request) != 0)
        return;
    m_context.runAndRefresh(u"Deleting "_s + traits.shelf,
                            [shelf = *shelf](const VersionControl &backend, const QString &path) {
                                backend.deleteShelf(path, shelf);
                            });
}

} // namespace tillery
