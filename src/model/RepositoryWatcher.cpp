#include "model/RepositoryWatcher.h"

#include "process/Failure.h"

#include <QFileInfo>

namespace tillery {

namespace {

QStringList existingFolders(const QStringList &paths)
{
    QStringList found;
    for (const QString &path : paths) {
        if (QFileInfo(path).isDir())
            found << path;
    }
    return found;
}

} // namespace

RepositoryWatcher::RepositoryWatcher(BackgroundPool &pool, ActivityState &activity, std::optional<int> folderLimit,
                                     QObject *parent)
    : QObject(parent)
    , m_pool(pool)
    , m_activity(activity)
    , m_folderLimit(folderLimit)
{
    for (QTimer *timer : {&m_quiet, &m_longest, &m_afterBusy, &m_discoverTimer})
        timer->setSingleShot(true);
    m_quiet.setInterval(quietMilliseconds);
    m_longest.setInterval(longestWaitMilliseconds);
    m_afterBusy.setInterval(0);
    m_discoverTimer.setInterval(quietMilliseconds);
    connect(&m_quiet, &QTimer::timeout, this, &RepositoryWatcher::judge);
    connect(&m_longest, &QTimer::timeout, this, &RepositoryWatcher::judge);
    connect(&m_discoverTimer, &QTimer::timeout, this, &RepositoryWatcher::discover);
    connect(&m_afterBusy, &QTimer::timeout, this, [this] {
        if (m_activity.isBusy())
            return;
        if (m_judgeAfterRefresh) {
            m_judgeAfterRefresh = false;
            judge();
        }
        announceLimit();
    });
    connect(&activity, &ActivityState::isBusyChanged, this, &RepositoryWatcher::busyChanged);
}

RepositoryWatcher::~RepositoryWatcher() = default;

QString RepositoryWatcher::limitNote()
{
    return tr("Live refresh is limited: the system allows no more folders to be watched, so changes in some "
              "folders show when you come back to Tillery.");
}

bool RepositoryWatcher::isPending() const
{
    return m_settingUp || m_quiet.isActive() || m_longest.isActive() || m_judgeAfterRefresh || m_afterBusy.isActive()
           || m_discoverTimer.isActive() || m_discovering;
}

qsizetype RepositoryWatcher::watchedFolderCount() const
{
    return m_workingFolders.size();
}

void RepositoryWatcher::watch(const std::optional<Repository> &repository)
{
    if (repository == m_repository)
        return;
    ++m_generation;
    m_watcher.reset();
    m_repository = repository;
    m_plan = {};
    m_stateFolders.clear();
    m_refFolders.clear();
    m_workingFolders.clear();
    m_stamps.clear();
    for (QTimer *timer : {&m_quiet, &m_longest, &m_discoverTimer})
        timer->stop();
    m_workingChanged = m_stateTouched = m_judgeAfterRefresh = false;
    m_changedWorking.clear();
    m_changedRefs.clear();
    m_discovering = false;
    m_limited = m_limitAnnounced = false;
    m_settingUp = repository.has_value();
    if (!repository)
        return;
    runInBackground(
        &m_pool, this,
        [repository = *repository] {
            WatchPlan plan = repositoryMetadataPlan(repository);
            try {
                plan.workingFolders = walkWorkingFolders(repository.path, {repository.path}, ignoredQuery(repository));
            } catch (const Failure &) {
                // A tool that cannot say what it ignores (a broken ignore file): the root alone.
                plan.workingFolders = {repository.path};
            }
            return plan;
        },
        [this, generation = m_generation](Outcome<WatchPlan> planned) {
            if (generation != m_generation)
                return;
            m_settingUp = false;
            // Without a plan the repository refreshes on activation only.
            if (planned.succeeded())
                install(*planned.value);
        });
}

void RepositoryWatcher::install(const WatchPlan &plan)
{
    m_plan = plan;
    m_watcher = std::make_unique<FolderWatcher>();
    connect(m_watcher.get(), &FolderWatcher::directoryChanged, this, &RepositoryWatcher::folderChanged);
    const QStringList stateFolders = existingFolders(plan.stateFolders);
    const QStringList unwatched = m_watcher->addPaths(stateFolders);
    for (const QString &folder : stateFolders) {
        if (!unwatched.contains(folder))
            m_stateFolders.insert(folder);
    }
    addRefFolders(walkAllFolders(existingFolders(plan.refFolders), {}));
    addWorkingFolders(plan.workingFolders);
    m_stamps = stampsOf(plan.stateFiles);
    Q_EMIT ready();
}

void RepositoryWatcher::addRefFolders(const QStringList &folders)
{
    if (folders.isEmpty())
        return;
    const QStringList unwatched = m_watcher->addPaths(folders);
    for (const QString &folder : folders) {
        if (!unwatched.contains(folder))
            m_refFolders.insert(folder);
    }
}

void RepositoryWatcher::addWorkingFolders(const QStringList &folders)
{
    if (m_limited || folders.isEmpty())
        return;
    QStringList tried = folders;
    QStringList unwatched;
    if (m_folderLimit) {
        const qsizetype room = std::max<qsizetype>(0, *m_folderLimit - m_workingFolders.size());
        if (tried.size() > room) {
            unwatched = tried.sliced(room);
            tried.resize(room);
        }
    }
    if (!tried.isEmpty())
        unwatched += m_watcher->addPaths(tried);
    for (const QString &folder : std::as_const(tried)) {
        if (!unwatched.contains(folder))
            m_workingFolders.insert(folder);
    }
    // A folder gone since the walk is no sign of a limit.
    if (existingFolders(unwatched).isEmpty())
        return;
    m_limited = true;
    announceLimit();
}

void RepositoryWatcher::folderChanged(const QString &folder)
{
    Q_EMIT changeSeen(folder);
    const bool working = m_workingFolders.contains(folder);
    const bool refs = m_refFolders.contains(folder);
    if (!QFileInfo(folder).isDir()) {
        m_workingFolders.remove(folder);
        m_refFolders.remove(folder);
    } else if (working) {
        m_changedWorking.insert(folder);
    } else if (refs) {
        m_changedRefs.insert(folder);
    } else {
        // Shelves and merge state have folders of their own, made when first needed.
        for (const QString &candidate : std::as_const(m_plan.refFolders)) {
            if (!m_refFolders.contains(candidate))
                m_changedRefs.insert(candidate);
        }
    }
    if (!m_changedWorking.isEmpty() || !m_changedRefs.isEmpty()) {
        if (!m_discoverTimer.isActive())
            m_discoverTimer.start();
    }
    if (operationRuns())
        return;
    if (working || refs)
        m_workingChanged = true;
    else
        m_stateTouched = true;
    schedule();
}

void RepositoryWatcher::schedule()
{
    m_quiet.start();
    if (!m_longest.isActive())
        m_longest.start();
}

void RepositoryWatcher::judge()
{
    m_quiet.stop();
    m_longest.stop();
    if (!m_workingChanged && !m_stateTouched)
        return;
    if (m_activity.isBusy()) {
        if (m_ownRefreshRuns) {
            m_judgeAfterRefresh = true;
            return;
        }
        m_workingChanged = m_stateTouched = false;
        return;
    }
    const bool needed = m_workingChanged || (m_stateTouched && stampsOf(m_plan.stateFiles) != m_stamps);
    m_workingChanged = m_stateTouched = false;
    if (!needed)
        return;
    Q_EMIT refreshNeeded();
    m_ownRefreshRuns = m_activity.isBusy();
}

void RepositoryWatcher::busyChanged(bool busy)
{
    if (busy) {
        // Tillery's own work starts: what changed before it is read by it, or
        // by the refresh that follows it.
        const FileStamps before = m_stamps;
        m_stamps = stampsOf(m_plan.stateFiles);
        for (const QString &file : std::as_const(m_plan.readTouchedFiles))
            m_stamps.insert(file, before.value(file));
        if (!m_ownRefreshRuns) {
            m_quiet.stop();
            m_longest.stop();
            m_workingChanged = m_stateTouched = m_judgeAfterRefresh = false;
        }
        return;
    }
    m_stamps.insert(stampsOf(m_plan.readTouchedFiles));
    m_ownRefreshRuns = false;
    if (m_judgeAfterRefresh || (m_limited && !m_limitAnnounced))
        m_afterBusy.start();
}

void RepositoryWatcher::discover()
{
    if (m_discovering || !m_repository || !m_watcher)
        return;
    const QStringList working = m_limited ? QStringList() : m_changedWorking.values();
    const QStringList refs = m_changedRefs.values();
    m_changedWorking.clear();
    m_changedRefs.clear();
    if (working.isEmpty() && refs.isEmpty())
        return;
    m_discovering = true;
    runInBackground(
        &m_pool, this,
        [repository = *m_repository, working, refs, known = m_workingFolders + m_refFolders] {
            QStringList starts;
            for (const QString &folder : working) {
                for (const QString &subfolder : workingSubfolders(folder)) {
                    if (!known.contains(subfolder))
                        starts << subfolder;
                }
            }
            return Discovery{walkWorkingFolders(repository.path, starts, ignoredQuery(repository), known),
                             walkAllFolders(refs, known)};
        },
        [this, generation = m_generation](Outcome<Discovery> found) {
            if (generation != m_generation)
                return;
            m_discovering = false;
            if (found.succeeded()) {
                addRefFolders(found.value->refs);
                const qsizetype before = m_workingFolders.size();
                addWorkingFolders(found.value->working);
                // Files may have been written into a new folder before it was watched.
                if (m_workingFolders.size() > before && !operationRuns()) {
                    m_workingChanged = true;
                    schedule();
                }
            }
            if (!m_changedWorking.isEmpty() || !m_changedRefs.isEmpty())
                m_discoverTimer.start();
        });
}

void RepositoryWatcher::announceLimit()
{
    if (!m_limited || m_limitAnnounced || m_activity.isBusy())
        return;
    m_limitAnnounced = true;
    m_activity.setActivity(limitNote());
}

} // namespace tillery
