#include "Pictures.h"

#include <QBuffer>
#include <QImage>

namespace tillery::test {

QByteArray pngBytes(int width, int height, const QColor &color)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

} // namespace tillery::test
