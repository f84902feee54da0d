#include "integrations/ITermScript.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace tillery {

QString iTermScript(const QString &repositoryPath)
{
    const QString base64 = QString::fromLatin1(repositoryPath.toUtf8().toBase64());
    return QStringList{
        u"set repositoryPath to do shell script \"printf %s '"_s + base64 + u"' | /usr/bin/base64 -D\""_s,
        u"tell application id \"com.googlecode.iterm2\""_s,
        u"    set newWindow to (create window with default profile)"_s,
        u"    tell current session of newWindow to write text (\"cd -- \" & quoted form of repositoryPath)"_s,
        u"    activate"_s,
        u"end tell"_s}
        .join(u'\n');
}

} // namespace tillery
