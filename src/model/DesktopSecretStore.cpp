#include "model/SecretStore.h"

#include <QCoreApplication>
#include <QEventLoop>
#ifndef Q_OS_MACOS
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#endif

#include <qt6keychain/keychain.h>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

const QString serviceName = u"Tillery"_s;

// Runs a job to its end; the store answers over D-Bus within moments.
bool finish(QKeychain::Job &job)
{
    job.setAutoDelete(false);
    job.setInsecureFallback(false);
    QEventLoop loop;
    QObject::connect(&job, &QKeychain::Job::finished, &loop, &QEventLoop::quit);
    job.start();
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    return job.error() == QKeychain::NoError;
}

} // namespace

std::optional<QString> DesktopSecretStore::unavailableReason()
{
#ifdef Q_OS_MACOS
    // The login keychain is always there.
    return std::nullopt;
#else
    const QString secrets = u"org.freedesktop.secrets"_s;
    const QDBusConnection bus = QDBusConnection::sessionBus();
    const QDBusConnectionInterface *names = bus.isConnected() ? bus.interface() : nullptr;
    if (names
        && (names->isServiceRegistered(secrets).value() || names->activatableServiceNames().value().contains(secrets)))
        return std::nullopt;
    return QCoreApplication::translate(
        "SecretStore", "No secret store is running in this session, so passwords cannot be remembered.");
#endif
}

std::optional<QString> DesktopSecretStore::read(const QString &key)
{
    if (unavailableReason())
        return std::nullopt;
    QKeychain::ReadPasswordJob job(serviceName);
    job.setKey(key);
    if (!finish(job))
        return std::nullopt;
    return job.textData();
}

void DesktopSecretStore::write(const QString &key, const QString &secret)
{
    if (unavailableReason())
        return;
    QKeychain::WritePasswordJob job(serviceName);
    job.setKey(key);
    job.setTextData(secret);
    finish(job);
}

void DesktopSecretStore::forget(const QString &key)
{
    if (unavailableReason())
        return;
    QKeychain::DeletePasswordJob job(serviceName);
    job.setKey(key);
    finish(job);
}

} // namespace tillery
