#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace tillery {

// The order of the cases is the order in which choices are offered.
enum class RepositoryKind { mercurial, git };

QList<RepositoryKind> allRepositoryKinds();

// The persisted raw value ("mercurial", "git").
QString rawValue(RepositoryKind kind);

// Exact, case-sensitive match of a raw value.
std::optional<RepositoryKind> repositoryKindFromRawValue(QStringView raw);

} // namespace tillery
