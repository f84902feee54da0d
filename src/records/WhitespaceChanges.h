#pragma once

namespace tillery {

// Whether a diff shows changes in the amount of white space (indentation,
// spaces between words, at the ends of lines) or leaves them out.
enum class WhitespaceChanges { shown, ignored };

} // namespace tillery
