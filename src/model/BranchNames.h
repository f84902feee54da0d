#pragma once

#include "records/Bookmark.h"
#include "records/RepositoryKind.h"

#include <QList>
#include <QString>

#include <optional>

namespace tillery {

// Why a new bookmark (Mercurial) or branch (Git) cannot have this name, in a
// sentence for the person; nothing when it can. Catches what the tool would
// refuse (Git's reference-name rules, Mercurial's reserved and numeric
// names), names that would read as an option, and names already taken.
std::optional<QString> branchNameProblem(const QString &name, RepositoryKind kind, const QList<Bookmark> &existing);

} // namespace tillery
