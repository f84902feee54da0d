#pragma once

#include <QString>

#include <optional>

namespace tillery {

// Sets `key = value` in a section of configuration text, changing as little
// as possible: the first line of that key in the first section of that name
// (both ignoring letter case) is replaced, together with any indented lines
// that would continue its value; otherwise the line goes at the section's
// end, or a new section is appended. Nothing comes back when the section,
// key or value holds a line break, which could open a new section or an
// "%include" in the file.
std::optional<QString> setIniValue(const QString &text, const QString &section, const QString &key,
                                   const QString &value);

} // namespace tillery
