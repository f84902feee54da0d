#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace tillery::test {

// The "diff --git" lines of a diff: which files it speaks of.
QStringList diffHeaders(const QString &diff);

// The added and removed lines of a diff, file headers left out.
QStringList changedLines(const QString &diff);

// A literal with its embedded zero bytes.
template <size_t size>
QByteArray bytes(const char (&literal)[size])
{
    return QByteArray(literal, size - 1);
}

} // namespace tillery::test
