#pragma once

#include "model/ActivityState.h"
#include "model/Background.h"
#include "model/CredentialBroker.h"
#include "process/ToolRunner.h"

#include <QObject>
#include <QString>

#include <atomic>
#include <functional>
#include <memory>

namespace tillery {

// Runs the model's long work off the main thread. While it runs the busy
// flag is set and the activity text says what runs; its result comes back on
// the main thread, and a failure is presented titled with the activity text.
class Operations {
public:
    Operations(BackgroundPool &pool, ActivityState &activity, QObject &context)
        : m_pool(pool)
        , m_activity(activity)
        , m_context(context)
    {
    }

    // Sets the busy flag and the activity text, runs `work` on a worker (it
    // must only use value copies), and on the main thread clears them and
    // calls `onSuccess` with the result, or `onFailure` and presents the
    // error. A failure that `wasCancelled` confirms is not presented.
    template <typename Work, typename OnSuccess>
    void perform(const QString &activity, Work work, OnSuccess onSuccess, std::function<void()> onFailure = {},
                 bool showsBusy = true, std::function<bool()> wasCancelled = {})
    {
        m_activity.begin(activity, showsBusy);
        runInBackground(&m_pool, &m_context, std::move(work),
                        [this, activity, showsBusy, onSuccess = std::move(onSuccess), onFailure = std::move(onFailure),
                         wasCancelled = std::move(wasCancelled)](auto outcome) mutable {
                            m_activity.end(showsBusy);
                            if (outcome.succeeded()) {
                                onSuccess(std::move(*outcome.value));
                                return;
                            }
                            if (onFailure)
                                onFailure();
                            if (!wasCancelled || !wasCancelled())
                                m_activity.present(activity, outcome.failure);
                        });
    }

    // Like perform, for work that talks to a remote: `work` receives a
    // RunControl whose progress phrases appear in the activity text ("Cloning
    // repository — Receiving objects: 45%"), and which stops the tool when
    // cancel() is called. The tool asks for credentials through the broker
    // (the remote's address names the host in the question). A cancelled
    // operation ends quietly, and so does one whose question the person
    // cancelled.
    template <typename Work, typename OnSuccess>
    void performRemote(const QString &activity, Work work, OnSuccess onSuccess, const QString &remoteAddress = {})
    {
        auto cancelRequested = std::make_shared<std::atomic<bool>>(false);
        m_cancelRequested = cancelRequested;
        m_activity.setCancellable(true);
        RunControl control;
        control.isCancelled = [cancelRequested] { return cancelRequested->load(); };
        control.progress = progressReporter(activity);
        std::shared_ptr<CredentialRun> credentials = m_credentials ? m_credentials->beginRun(remoteAddress) : nullptr;
        if (credentials)
            control.credentials = credentials->channel();
        perform(
            activity,
            [work = std::move(work), control, credentials] {
                try {
                    return work(control);
                } catch (const Failure &failure) {
                    if (credentials)
                        credentials->noteFailure(failure);
                    throw;
                }
            },
            [this, onSuccess = std::move(onSuccess)](auto value) mutable {
                m_activity.setCancellable(false);
                onSuccess(std::move(value));
            },
            [this, credentials] {
                m_activity.setCancellable(false);
                if (credentials && m_credentials)
                    m_credentials->finishRun(*credentials);
            },
            true,
            [cancelRequested, credentials] {
                return cancelRequested->load() || (credentials && credentials->cancelledByPerson());
            });
    }

    // Where remote commands ask for credentials; without one they never ask.
    void setCredentialBroker(CredentialBroker *broker) { m_credentials = broker; }

    // Runs `work` off the main thread without the busy flag and hands its
    // result to `done` on the main thread; a failure is dropped.
    template <typename Work, typename OnDone>
    void runQuietly(Work work, OnDone done)
    {
        runInBackground(&m_pool, &m_context, std::move(work), [done = std::move(done)](auto outcome) mutable {
            if (outcome.succeeded())
                done(*outcome.value);
        });
    }

    // Stops the running cancellable operation, if there is one.
    void cancel();
    void presentError(const QString &title, const QString &message) { m_activity.present(title, message); }
    const ActivityState &activity() const { return m_activity; }

private:
    std::function<void(const QString &)> progressReporter(const QString &activity);

    BackgroundPool &m_pool;
    ActivityState &m_activity;
    QObject &m_context;
    std::shared_ptr<std::atomic<bool>> m_cancelRequested;
    CredentialBroker *m_credentials = nullptr;
};

} // namespace tillery
