#include "model/ShelfSelection.h"

#include "model/ActivityState.h"
#include "model/DiffSelection.h"
#include "model/VersionControl.h"
#include "model/Workspace.h"

using namespace Qt::StringLiterals;

namespace tillery {

ShelfSelection::ShelfSelection(Workspace &workspace, DiffSelection &diff, ActivityState &activity,
                               BackgroundPool &pool, QObject *parent)
    : QObject(parent)
    , m_workspace(workspace)
    , m_diff(diff)
    , m_activity(activity)
    , m_pool(pool)
{
}

void ShelfSelection::selectShelf(const Shelf &shelf)
{
    const std::optional<Repository> repository = m_workspace.selectedRepository();
    if (!repository)
        return;
    m_filesTask.cancel();
    m_diff.clearShownDiff();
    const bool sameShelf = m_selectedShelf == shelf;
    m_selectedShelf = shelf;
    if (!sameShelf) {
        Q_EMIT selectedShelfChanged();
        m_files.clear();
        Q_EMIT filesChanged();
    }
    const std::optional<WorkingFile> keep = sameShelf ? m_selectedFile : std::nullopt;
    setLoadingFiles(true);
    const VersionControl *backend = &versionControl(repository->kind);
    m_activity.setActivity(byKind(repository->kind, tr("Loading shelf files"), tr("Loading stash files")));
    m_filesTask = runInBackground(
        &m_pool, this, [backend, path = repository->path, shelf] { return backend->shelfFiles(path, shelf); },
        [this, shelf, keep](Outcome<QList<WorkingFile>> outcome) {
            if (m_selectedShelf != shelf)
                return;
            setLoadingFiles(false);
            m_activity.setActivity(QString());
            if (!outcome.succeeded()) {
                m_activity.present(tr("Loading files"), outcome.failure);
                return;
            }
            m_files = *outcome.value;
            Q_EMIT filesChanged();
            std::optional<WorkingFile> shown;
            for (const WorkingFile &file : std::as_const(m_files)) {
                if (keep && file.path == keep->path)
                    shown = file;
            }
            if (!shown && !m_files.isEmpty())
                shown = m_files.first();
            if (shown) {
                selectFile(*shown);
            } else {
                m_selectedFile.reset();
                Q_EMIT selectedFileChanged();
            }
        });
}

void ShelfSelection::selectFile(const WorkingFile &file)
{
    if (!m_selectedShelf)
        return;
    if (m_selectedFile != file) {
        m_selectedFile = file;
        Q_EMIT selectedFileChanged();
    }
    m_diff.showShelfFile(*m_selectedShelf, file);
}

void ShelfSelection::showPage()
{
    const QList<Shelf> &shelves = m_workspace.snapshot().shelves;
    std::optional<Shelf> kept;
    for (const Shelf &shelf : shelves) {
        if (m_selectedShelf && shelf.id == m_selectedShelf->id)
            kept = shelf;
    }
    if (!kept && !shelves.isEmpty())
        kept = shelves.first();
    if (kept) {
        selectShelf(*kept);
        return;
    }
    clear();
}

void ShelfSelection::clear()
{
    m_filesTask.cancel();
    setLoadingFiles(false);
    if (m_selectedShelf) {
        m_selectedShelf.reset();
        Q_EMIT selectedShelfChanged();
    }
    if (!m_files.isEmpty()) {
        m_files.clear();
        Q_EMIT filesChanged();
    }
    if (m_selectedFile) {
        m_selectedFile.reset();
        Q_EMIT selectedFileChanged();
    }
    if (m_workspace.tab() == WorkspaceTab::shelves)
        m_diff.clearShownDiff();
}

void ShelfSelection::setLoadingFiles(bool loading)
{
    if (m_isLoadingFiles == loading)
        return;
    m_isLoadingFiles = loading;
    Q_EMIT isLoadingFilesChanged(loading);
}

} // namespace tillery
