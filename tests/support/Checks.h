#pragma once

#include "process/Failure.h"

#include <QByteArray>
#include <QString>

namespace tillery::test {

// The description of the failure the call throws, or "(no failure)".
template <typename Call>
QString failureOf(Call call)
{
    try {
        call();
    } catch (const Failure &failure) {
        return failure.description();
    }
    return QStringLiteral("(no failure)");
}

// The bytes of a file, or "(missing)".
QByteArray readFile(const QString &path);

// Writes the file, making its folder, as a program when asked; throws
// std::runtime_error when it cannot.
void writeFile(const QString &path, const QByteArray &contents, bool executable = false);

} // namespace tillery::test
