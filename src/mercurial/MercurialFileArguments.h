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

// A revset string holding exactly the text: every byte but letters and
// digits is written as an escape, so that nothing in it can end the string
// or mean anything else.
QString revsetString(const QString &text);

} // namespace tillery::mercurial
