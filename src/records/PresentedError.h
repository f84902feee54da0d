#pragma once

#include <QString>
#include <QUuid>

namespace tillery {

// An error ready for an alert; every new one has a fresh identity.
struct PresentedError {
    QUuid id;
    QString title;
    QString message;

    static PresentedError make(const QString &title, const QString &message)
    {
        return PresentedError{QUuid::createUuid(), title, message};
    }

    friend bool operator==(const PresentedError &, const PresentedError &) = default;
};

} // namespace tillery
