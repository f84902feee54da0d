#pragma once

#include "records/RepositoryKind.h"

#include <QHashFunctions>
#include <QJsonObject>
#include <QString>

#include <optional>

namespace tillery {

// One repository known to the application. Its identity is the path alone;
// equality takes the kind into account too.
struct Repository {
    QString path;
    RepositoryKind kind = RepositoryKind::mercurial;

    const QString &id() const { return path; }
    friend bool operator==(const Repository &, const Repository &) = default;
};

size_t qHash(const Repository &repository, size_t seed = 0) noexcept;

// The persisted form: {"path": ..., "kind": ...}; both keys are always written.
QJsonObject encodeRepository(const Repository &repository);

// Reading is tolerant of a missing "kind": a repository with a ".git" entry
// (file or folder) is Git, anything else Mercurial. A missing "path" or an
// unknown kind gives no repository.
std::optional<Repository> decodeRepository(const QJsonObject &object);

} // namespace tillery
