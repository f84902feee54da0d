#pragma once

#include <QString>
#include <QStringView>

namespace tillery::mercurial {

// Mercurial reads a file argument such as "re:x" or "set:..." as a pattern
// and one that begins with "-" as an option, even after other arguments.
// Such names are passed as "path:" + name, which matches exactly that file;
// every other name is passed as it stands.
bool needsLiteralPathPrefix(QStringView path);
QString fileArgument(const QString &path);

} // namespace tillery::mercurial
