#pragma once

#include <QString>

namespace tillery::git {

// A patch git apply takes for one file, of the given hunks' text. A new file
// is created with the mode; the path may hold any character.
QString filePatch(const QString &path, const QString &hunks, bool isNew, bool executable);

// One that turns the file's old text into the new one whole: a single hunk
// of every old line removed and every new line added.
QString wholeFilePatch(const QString &path, const QString &oldText, const QString &newText, bool isNew,
                       bool executable);

} // namespace tillery::git
