#include "model/Annotation.h"

#include "model/DiffSelection.h"
#include "model/VersionControl.h"
#include "model/Workspace.h"

namespace tillery {

Annotation::Annotation(const Workspace &workspace, const DiffSelection &selection, BackgroundPool &pool,
                       QObject *parent)
    : QObject(parent)
    , m_workspace(workspace)
    , m_selection(selection)
    , m_pool(pool)
{
    connect(&workspace, &Workspace::selectedRepositoryChanged, this, &Annotation::close);
}

Annotation::~Annotation()
{
    m_task.cancel();
}

void Annotation::annotate(const QString &path)
{
    const std::optional<Repository> &repository = m_workspace.selectedRepository();
    if (!repository)
        return;
    if (m_workspace.tab() == WorkspaceTab::changes) {
        open(*repository, {path, std::nullopt, WorkspaceTab::changes});
    } else if (const std::optional<Changeset> &changeset = m_selection.selectedChangeset()) {
        open(*repository, {path, changeset->node, WorkspaceTab::history});
    }
}

void Annotation::open(const Repository &repository, const Subject &subject)
{
    m_task.cancel();
    show(State::loading, subject);
    const VersionControl *backend = &versionControl(repository.kind);
    m_task = runCancellableInBackground(
        &m_pool, this,
        [backend, path = repository.path, subject](const CancellationCheck &isCancelled) {
            return backend->annotateFile(path, subject.node, subject.path, isCancelled);
        },
        [this, subject](Outcome<FileAnnotation> outcome) {
            if (outcome.succeeded())
                show(State::loaded, subject, *outcome.value);
            else
                show(State::failed, subject, {}, outcome.failure);
        });
}

void Annotation::close()
{
    m_task.cancel();
    if (m_state != State::closed)
        show(State::closed, std::nullopt);
}

void Annotation::show(State state, const std::optional<Subject> &subject, const FileAnnotation &lines,
                      const QString &failure)
{
    m_state = state;
    m_subject = subject;
    m_lines = lines;
    m_failure = failure;
    Q_EMIT changed();
}

} // namespace tillery
