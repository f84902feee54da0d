#pragma once

#include <QString>

#include <optional>

namespace tillery {

// The desktop's store of secrets (the Secret Service on Linux), where a
// password is kept only when the person asks for it; never the settings.
// Called on the main thread.
class SecretStore {
public:
    virtual ~SecretStore() = default;

    // Why nothing can be kept now, in a sentence; nothing when it can.
    virtual std::optional<QString> unavailableReason() = 0;
    virtual std::optional<QString> read(const QString &key) = 0;
    virtual void write(const QString &key, const QString &secret) = 0;
    virtual void forget(const QString &key) = 0;
};

// The secret store of the desktop session, through QtKeychain.
class DesktopSecretStore final : public SecretStore {
public:
    std::optional<QString> unavailableReason() override;
    std::optional<QString> read(const QString &key) override;
    void write(const QString &key, const QString &secret) override;
    void forget(const QString &key) override;
};

} // namespace tillery
