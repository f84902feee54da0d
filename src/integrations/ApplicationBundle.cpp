#include "integrations/ApplicationBundle.h"

#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

QString infoPlistPath(const QString &bundlePath)
{
    return bundlePath + u"/Contents/Info.plist"_s;
}

} // namespace

bool isApplicationBundle(const QString &path)
{
    return QFileInfo(path).isDir() && QFileInfo(infoPlistPath(path)).isFile();
}

std::optional<QString> bundleInfoString(const QString &bundlePath, const QString &key)
{
    QFile plist(infoPlistPath(bundlePath));
    if (!plist.open(QIODevice::ReadOnly))
        return std::nullopt;
    QXmlStreamReader reader(&plist);
    bool keyFound = false;
    // Only the top-level dictionary's keys count; nested dictionaries are skipped.
    int depth = 0;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement()) {
            if (reader.name() == u"dict")
                ++depth;
            else if (depth == 1 && reader.name() == u"key")
                keyFound = reader.readElementText() == key;
            else if (depth == 1 && keyFound && reader.name() == u"string")
                return reader.readElementText();
            else if (depth == 1)
                keyFound = false;
        } else if (reader.isEndElement() && reader.name() == u"dict") {
            --depth;
        }
    }
    return std::nullopt;
}

} // namespace tillery
