#pragma once

#include <QString>
#include <QStringView>

namespace tillery::git {

// Git reads "*", "?", "[" and "\" in a path argument as a wildcard and a
// leading ":" as pathspec magic; such names are passed as ":(literal)" + name
// so that they match exactly that file. Other names are passed as they stand.
bool needsLiteralPathspec(QStringView path);
QString fileArgument(const QString &path);

// A branch name or revision that reaches a command line must never be read
// as an option: one that begins with "-" is refused with GitFailure
// (malformedOutput) before anything runs. `what` names it in the message,
// for example "a branch name".
void refuseOptionLike(const QString &value, const QString &what);

} // namespace tillery::git
