#pragma once

#include "records/PresentedError.h"

#include <QObject>
#include <QString>

#include <optional>

namespace tillery {

// Whether a long operation runs, its status text, and the error to show.
class ActivityState final : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    bool isBusy() const { return m_isBusy; }
    // Whether the running operation can be stopped (a clone can).
    bool isCancellable() const { return m_isCancellable; }
    const QString &activity() const { return m_activity; }
    const std::optional<PresentedError> &presentedError() const { return m_presentedError; }

    void begin(const QString &activity, bool showsBusy);
    void end(bool showsBusy);
    void setActivity(const QString &activity);
    // A new error with a fresh identity replaces any shown one.
    void present(const QString &title, const QString &message);
    void dismissError();
    void setCancellable(bool cancellable);

Q_SIGNALS:
    void isBusyChanged(bool isBusy);
    void activityChanged(const QString &activity);
    void presentedErrorChanged();
    void isCancellableChanged(bool cancellable);

private:
    void setBusy(bool busy);

    bool m_isBusy = false;
    bool m_isCancellable = false;
    QString m_activity;
    std::optional<PresentedError> m_presentedError;
};

} // namespace tillery
