#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace tillery::test {

// Gives the test process a private home, temporary folder and pinned tool
// configuration (user name, default branch "main", no system configuration),
// so that real hg and git behave the same on every machine. Call it first in
// initTestCase(); calling it again does nothing.
void pinTestEnvironment();

// The files in the temporary folder whose names start with the prefix.
QStringList temporaryFilesStartingWith(const QString &prefix);

// Sets an environment variable (or unsets it with nullopt) for one scope.
class ScopedEnvironmentVariable {
public:
    ScopedEnvironmentVariable(const char *name, const std::optional<QByteArray> &value);
    ~ScopedEnvironmentVariable();
    ScopedEnvironmentVariable(const ScopedEnvironmentVariable &) = delete;
    ScopedEnvironmentVariable &operator=(const ScopedEnvironmentVariable &) = delete;

private:
    QByteArray m_name;
    std::optional<QByteArray> m_previous;
};

} // namespace tillery::test
