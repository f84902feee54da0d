#pragma once

#include "model/ActivityState.h"
#include "model/Background.h"
#include "model/FolderWatcher.h"
#include "model/WatchPlan.h"
#include "records/Repository.h"

#include <QObject>
#include <QSet>
#include <QTimer>

#include <memory>
#include <optional>

namespace tillery {

// Watches the selected repository's state and working folders and asks for
// a refresh when something changed outside Tillery: 300 ms after the last
// change of a burst, and every 2 s while a burst goes on.
//
// Changes while Tillery's own operation runs are dropped (its refresh covers
// them); while a refresh this watcher asked for runs, a working folder's
// change is kept for after it. A change among the tool's own folders counts
// only when a state file's stamp differs from the one taken when Tillery's
// last work ended, so that a read that rewrites the dirstate or the index
// does not cause another refresh.
//
// When the system (or `folderLimit`, counted in working folders) allows no
// more watches, the state stays watched, no more folders are added, and the
// activity row says so once.
class RepositoryWatcher final : public QObject {
    Q_OBJECT

public:
    static constexpr int quietMilliseconds = 300;
    static constexpr int longestWaitMilliseconds = 2000;

    RepositoryWatcher(BackgroundPool &pool, ActivityState &activity, std::optional<int> folderLimit = std::nullopt,
                      QObject *parent = nullptr);
    ~RepositoryWatcher() override;

    // Moves the watch to this repository (none stops it).
    void watch(const std::optional<Repository> &repository);

    // A change waits to be judged, or folders to be added.
    bool isPending() const;
    bool isLimited() const { return m_limited; }
    qsizetype watchedFolderCount() const;
    static QString limitNote();

Q_SIGNALS:
    void refreshNeeded();
    // The watch of the repository is in place.
    void ready();
    // A watched folder changed (before any judging).
    void changeSeen(const QString &folder);

private:
    struct Discovery {
        QStringList working;
        QStringList refs;
    };

    void install(const WatchPlan &plan);
    void addWorkingFolders(const QStringList &folders);
    void addRefFolders(const QStringList &folders);
    void folderChanged(const QString &folder);
    void schedule();
    void judge();
    void busyChanged(bool busy);
    void discover();
    void announceLimit();
    bool operationRuns() const { return m_activity.isBusy() && !m_ownRefreshRuns; }

    BackgroundPool &m_pool;
    ActivityState &m_activity;
    std::optional<int> m_folderLimit;
    std::optional<Repository> m_repository;
    std::unique_ptr<FolderWatcher> m_watcher;
    quint64 m_generation = 0;
    bool m_settingUp = false;
    WatchPlan m_plan;
    QSet<QString> m_stateFolders;
    QSet<QString> m_refFolders;
    QSet<QString> m_workingFolders;
    FileStamps m_stamps;

    QTimer m_quiet;
    QTimer m_longest;
    QTimer m_afterBusy;
    bool m_workingChanged = false;
    bool m_stateTouched = false;
    bool m_judgeAfterRefresh = false;
    bool m_ownRefreshRuns = false;

    QTimer m_discoverTimer;
    QSet<QString> m_changedWorking;
    QSet<QString> m_changedRefs;
    bool m_discovering = false;

    bool m_limited = false;
    bool m_limitAnnounced = false;
};

} // namespace tillery
