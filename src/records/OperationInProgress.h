#pragma once

#include "records/RepositoryKind.h"

#include <QString>

namespace tillery {

// A command the working copy is in the middle of, stopped for conflicts (or,
// for a merge, waiting for its commit). Git's stash has no state of its own:
// conflicts without another operation are a restore's.
enum class OperationInProgress { none, merge, rebase, graft, unshelve };

// "Merge", "Rebase", "Graft" or "Cherry-Pick", "Unshelve" or "Stash Restore",
// translated.
QString operationTitle(OperationInProgress operation, RepositoryKind kind);
// The same within a sentence: "merge", "stash restore"; a language whose
// nouns keep their capital says so in its translation.
QString operationNoun(OperationInProgress operation, RepositoryKind kind);

// Which side a conflicted file takes whole: the working copy's own
// ("mine": Mercurial :local, Git --ours) or the one merged in ("theirs").
enum class ConflictSide { mine, theirs };

} // namespace tillery
