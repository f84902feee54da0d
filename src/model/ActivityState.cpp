#include "model/ActivityState.h"

namespace tillery {

void ActivityState::begin(const QString &activity, bool showsBusy)
{
    if (showsBusy)
        setBusy(true);
    setActivity(activity);
}

void ActivityState::end(bool showsBusy)
{
    if (showsBusy)
        setBusy(false);
    setActivity(QString());
}

void ActivityState::setBusy(bool busy)
{
    if (m_isBusy == busy)
        return;
    m_isBusy = busy;
    Q_EMIT isBusyChanged(busy);
}

void ActivityState::setActivity(const QString &activity)
{
    if (m_activity == activity)
        return;
    m_activity = activity;
    Q_EMIT activityChanged(activity);
}

void ActivityState::present(const QString &title, const QString &message)
{
    m_presentedError = PresentedError::make(title, message);
    Q_EMIT presentedErrorChanged();
}

void ActivityState::setCancellable(bool cancellable)
{
    if (m_isCancellable == cancellable)
        return;
    m_isCancellable = cancellable;
    Q_EMIT isCancellableChanged(cancellable);
}

void ActivityState::dismissError()
{
    if (!m_presentedError)
        return;
    m_presentedError.reset();
    Q_EMIT presentedErrorChanged();
}

} // namespace tillery
