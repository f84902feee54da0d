#include "model/RepositoryIconStore.h"

#include "records/UuidText.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace tillery {

RepositoryIconStore::RepositoryIconStore(QString folder)
    : m_folder(std::move(folder))
{
}

std::optional<QImage> RepositoryIconStore::normalised(const QImage &picture)
{
    if (picture.width() <= 0 || picture.height() <= 0)
        return std::nullopt;
    const double factor = std::min(double(side) / picture.width(), double(side) / picture.height());
    const QSizeF drawn(picture.width() * factor, picture.height() * factor);
    const QRectF target(QPointF((side - drawn.width()) * 0.5, (side - drawn.height()) * 0.5), drawn);

    QImage canvas(side, side, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(target, picture.convertToFormat(QImage::Format_ARGB32_Premultiplied));
    painter.end();
    return canvas;
}

std::optional<QByteArray> RepositoryIconStore::readPictureFile(const QString &path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || file.size() > largestPictureFile || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray bytes = file.read(largestPictureFile + 1);
    if (file.error() != QFileDevice::NoError || bytes.size() > largestPictureFile)
        return std::nullopt;
    return bytes;
}

std::optional<std::pair<QString, QImage>> RepositoryIconStore::store(const QByteArray &bytes) const
{
    QBuffer buffer;
    buffer.setData(bytes);
    QImageReader reader(&buffer);
    const QImage picture = reader.read();
    const std::optional<QImage> icon = normalised(picture);
    if (!icon || !QDir().mkpath(m_folder))
        return std::nullopt;

    const QString fileName = freshUuidText() + u".png"_s;
    QSaveFile file(m_folder + u'/' + fileName);
    if (!file.open(QIODevice::WriteOnly) || !icon->save(&file, "PNG") || !file.commit())
        return std::nullopt;
    return std::pair(fileName, *icon);
}

QImage RepositoryIconStore::load(const QString &fileName) const
{
    if (fileName.isEmpty() || fileName.contains(u'/'))
        return QImage();
    return QImage(m_folder + u'/' + fileName, "PNG");
}

QMap<QString, QImage> RepositoryIconStore::loadAll(const QMap<QString, QString> &filesByRepository) const
{
    QMap<QString, QImage> icons;
    for (auto entry = filesByRepository.cbegin(); entry != filesByRepository.cend(); ++entry) {
        const QImage image = load(entry.value());
        if (!image.isNull())
            icons.insert(entry.key(), image);
    }
    return icons;
}

void RepositoryIconStore::remove(const QString &fileName) const
{
    if (!fileName.isEmpty() && !fileName.contains(u'/'))
        QFile::remove(m_folder + u'/' + fileName);
}

} // namespace tillery
