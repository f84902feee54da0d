#include "model/ActionContext.h"

#include "model/Workspace.h"

namespace tillery {

std::optional<ActionContext::Selected> ActionContext::selected() const
{
    const std::optional<Repository> &repository = workspace.selectedRepository();
    if (!repository)
        return std::nullopt;
    return Selected{*repository, versionControl(repository->kind)};
}

void ActionContext::runAndRefresh(const QString &activity, Work work) const
{
    const std::optional<Selected> target = selected();
    if (!target)
        return;
    operations.perform(
        activity,
        [work = std::move(work), backend = &target->backend, path = target->repository.path] { work(*backend, path); },
        [refresh = refresh](Done) { refresh(); });
}

void ActionContext::runRemoteAndRefresh(const QString &activity, RemoteWork work) const
{
    const std::optional<Selected> target = selected();
    if (!target)
        return;
    operations.performRemote(
        activity,
        [work = std::move(work), backend = &target->backend,
         path = target->repository.path](const RunControl &control) { work(*backend, path, control); },
        [refresh = refresh](Done) { refresh(); },
        workspace.snapshot().paths.value(target->backend.traits().remoteName));
}

} // namespace tillery
