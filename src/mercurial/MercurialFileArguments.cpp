#include "mercurial/MercurialFileArguments.h"

using namespace Qt::StringLiterals;

namespace tillery::mercurial {

bool needsLiteralPathPrefix(QStringView path)
{
    if (path.startsWith(u'-'))
        return true;
    qsizetype wordEnd = 0;
    while (wordEnd < path.size() && (path[wordEnd].isLetterOrNumber() || path[wordEnd] == u'_'))
        ++wordEnd;
    return wordEnd > 0 && wordEnd < path.size() && path[wordEnd] == u':';
}

QString fileArgument(const QString &path)
{
    return needsLiteralPathPrefix(path) ? u"path:"_s + path : path;
}

} // namespace tillery::mercurial
