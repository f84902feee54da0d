#include "model/Operations.h"

using namespace Qt::StringLiterals;

namespace tillery {

void Operations::cancel()
{
    if (m_cancelRequested && m_activity.isCancellable())
        m_cancelRequested->store(true);
}

std::function<void(const QString &)> Operations::progressReporter(const QString &activity)
{
    // Called on the worker; the activity state outlives every worker, since
    // the model waits for its pool before its parts go.
    ActivityState *state = &m_activity;
    return [state, activity](const QString &progress) {
        QMetaObject::invokeMethod(
            state,
            [state, activity, progress] {
                if (state->isBusy() && state->activity().startsWith(activity))
                    state->setActivity(activity + u" — "_s + progress);
            },
            Qt::QueuedConnection);
    };
}

} // namespace tillery
