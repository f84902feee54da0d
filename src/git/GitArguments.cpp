#include "git/GitArguments.h"

using namespace Qt::StringLiterals;

namespace tillery::git {

bool needsLiteralPathspec(QStringView path)
{
    if (path.startsWith(u':'))
        return true;
    for (const QChar character : path) {
        if (character == u'*' || character == u'?' || character == u'[' || character == u'\\')
            return true;
    }
    return false;
}

QString fileArgument(const QString &path)
{
    return needsLiteralPathspec(path) ? u":(literal)"_s + path : path;
}

} // namespace tillery::git
