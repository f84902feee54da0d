#include "model/WorkingCopyActions.h"

#include "integrations/IgnoreFile.h"
#include "model/AppModel.h"
#include "process/WorkingFileRead.h"

#include <QDateTime>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

QString discardExplanation(qsizetype tracked, qsizetype untracked)
{
    const bool one = tracked + untracked == 1;
    if (tracked > 0 && untracked > 0)
        return u"Tracked files will be restored to their last committed state. Untracked files will be moved to the Trash."_s;
    if (tracked > 0)
        return one ? u"The file will be restored to its last committed state."_s
                   : u"The files will be restored to their last committed state."_s;
    return one ? u"The untracked file will be moved to the Trash."_s : u"The untracked files will be moved to the Trash."_s;
}

} // namespace

WorkingCopyActions::WorkingCopyActions(AppModel &model, Prompts &prompts, Desktop &desktop)
    : m_model(model)
    , m_prompts(prompts)
    , m_desktop(desktop)
{
}

bool WorkingCopyActions::canCommit() const
{
    if (m_model.activityState().isBusy() || m_model.workspace().commitSummary().trimmed().isEmpty())
        return false;
    const QSet<QString> &marked = m_model.diffSelection().selectedFilePaths();
    const QList<WorkingFile> &files = m_model.workspace().snapshot().files;
    return std::any_of(files.cbegin(), files.cend(), [&marked](const WorkingFile &file) { return marked.contains(file.path); });
}

void WorkingCopyActions::commit()
{
    const std::optional<Repository> repository = m_model.workspace().selectedRepository();
    if (!repository || !canCommit())
        return;
    QList<WorkingFile> files;
    for (const WorkingFile &file : m_model.workspace().snapshot().files) {
        if (m_model.diffSelection().selectedFilePaths().contains(file.path))
            files.append(file);
    }
    const QString summary = m_model.workspace().commitSummary();
    const QString description = m_model.workspace().commitDescription();
    const QString userName = m_model.workspace().commitUsername();
    const VersionControl *backend = &versionControl(repository->kind);
    m_model.perform(
        u"Committing changes"_s,
        [backend, path = repository->path, files, summary, description, userName] {
            backend->commit(path, files, summary, description, userName);
        },
        [this](Done) {
            m_model.setCommitSummary(QString());
            m_model.setCommitDescription(QString());
            m_model.refresh();
        });
}

void WorkingCopyActions::discardSelected()
{
    const std::optional<Repository> repository = m_model.workspace().selectedRepository();
    if (!repository)
        return;
    QStringList tracked;
    QStringList untracked;
    for (const WorkingFile &file : m_model.workspace().snapshot().files) {
        if (m_model.diffSelection().selectedChangeFiles().contains(file))
            (file.state == FileState::untracked ? untracked : tracked).append(file.path);
    }
    const qsizetype count = tracked.size() + untracked.size();
    if (count == 0)
        return;
    const QString message = count == 1 ? u"Discard changes to “"_s + (tracked + untracked).first() + u"”?"_s
                                        : u"Discard changes to "_s + QString::number(count) + u" selected files?"_s;
    if (m_prompts.alert({message, discardExplanation(tracked.size(), untracked.size()), {u"Discard"_s, u"Cancel"_s}}) != 0)
        return;

    const VersionControl *backend = &versionControl(repository->kind);
    Desktop *desktop = &m_desktop;
    m_model.perform(
        u"Discarding changes"_s,
        [backend, desktop, path = repository->path, tracked, untracked] {
            backend->discard(path, tracked);
            QStringList refused;
            for (const QString &file : untracked) {
                // A path a tool reports is not trusted to stay in the repository.
                const std::optional<QString> inside = pathInsideRepository(path, file);
                if (!inside)
                    refused.append(u"“"_s + file + u"” is not inside the repository; it was not moved to the Trash."_s);
                else if (const std::optional<QString> reason = desktop->moveToTrash(*inside))
                    refused.append(*reason);
            }
            if (!refused.isEmpty())
                throw PlatformFailure(refused.join(u'\n'));
        },
        [this](Done) { m_model.refresh(); });
}

void WorkingCopyActions::discardAll()
{
    const std::optional<Repository> repository = m_model.workspace().selectedRepository();
    if (!repository)
        return;
    const AlertRequest request{
        u"Discard All Changes?"_s,
        u"All tracked working-copy changes will be permanently reverted. Untracked files will be left untouched."_s,
        {u"Discard Changes"_s, u"Cancel"_s}};
    if (m_prompts.alert(request) != 0)
        return;
    const VersionControl *backend = &versionControl(repository->kind);
    m_model.perform(
        u"Discarding all changes"_s, [backend, path = repository->path] { backend->discardAll(path); },
        [this](Done) { m_model.refresh(); });
}

void WorkingCopyActions::stashAll()
{
    const std::optional<Repository> repository = m_model.workspace().selectedRepository();
    if (!repository || m_model.workspace().snapshot().files.isEmpty())
        return;
    const QString name = u"wharf-"_s + QDateTime::currentDateTime().toString(u"yyyy-MM-dd-HHmmss"_s);
    const VersionControl *backend = &versionControl(repository->kind);
    m_model.perform(
        u"Stashing all changes"_s, [backend, path = repository->path, name] { backend->stash(path, name); },
        [this](Done) { m_model.refresh(); });
}

void WorkingCopyActions::addIgnoreEntry(const QString &pattern)
{
    const std::optional<Repository> repository = m_model.workspace().selectedRepository();
    if (!repository)
        return;
    m_model.perform(
        u"Updating "_s + ignoreFileName(repository->kind),
        [pattern, repository = *repository] { tillery::addIgnoreEntry(pattern, repository.path, repository.kind); },
        [this](Done) { m_model.refresh(); });
}

} // namespace tillery
