#pragma once

#include <QString>
#include <QStringView>

namespace tillery::git {

// Git reads "*", "?", "[" and "\" in a path argument as a wildcard and a
// leading ":" as pathspec magic; such names are passed as ":(literal)" + name
// so that they match exactly that file. Other names are passed as they stand.
bool needsLiteralPathspec(QStringView path);
QString fileArgument(const QString &path);

} // namespace tillery::git
