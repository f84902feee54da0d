#pragma once

#include "records/FileState.h"

#include <QHashFunctions>
#include <QString>

namespace tillery {

// One file with a state: a working-copy change or a file of a changeset.
// The path is relative to the repository root, as the tool printed it.
struct WorkingFile {
    QString path;
    FileState state = FileState::modified;

    const QString &id() const { return path; }
    friend bool operator==(const WorkingFile &, const WorkingFile &) = default;
};

inline size_t qHash(const WorkingFile &file, size_t seed = 0) noexcept
{
    return qHashMulti(seed, file.path, static_cast<int>(file.state));
}

} // namespace tillery
