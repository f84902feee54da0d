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

QString revsetString(const QString &text)
{
    QString quoted = u"'"_s;
    for (const char byte : text.toUtf8()) {
        const auto value = static_cast<unsigned char>(byte);
        if ((value >= 'a' && value <= 'z') || (value >= 'A' && value <= 'Z') || (value >= '0' && value <= '9'))
            quoted += QLatin1Char(byte);
        else
            quoted += u"\\x"_s + QString::number(value, 16).rightJustified(2, u'0');
    }
    return quoted + u'\'';
}

} // namespace tillery::mercurial
