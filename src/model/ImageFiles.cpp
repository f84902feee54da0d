#include "model/ImageFiles.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImageReader>
#include <QMimeDatabase>

using namespace Qt::StringLiterals;

namespace tillery {

bool isImageFile(const QString &path)
{
    if (QFileInfo(path).suffix().isEmpty())
        return false;
    const QMimeType type = QMimeDatabase().mimeTypeForFile(path, QMimeDatabase::MatchExtension);
    if (!type.isValid() || type.isDefault())
        return false;
    if (type.name().startsWith(u"image/"_s))
        return true;
    const QStringList ancestors = type.allAncestors();
    return std::any_of(ancestors.cbegin(), ancestors.cend(),
                       [](const QString &ancestor) { return ancestor.startsWith(u"image/"_s); });
}

QImage decodeImage(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    QImageReader reader(&buffer);
    return reader.read();
}

} // namespace tillery
