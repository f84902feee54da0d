#pragma once

#include <QString>

namespace tillery::bench {

// A unified diff of one file with about `lineCount` lines of about 50
// characters: hunks of sixty lines of context, deletions and additions.
// The same count always gives the same text.
QString generatedDiff(qsizetype lineCount);

} // namespace tillery::bench
