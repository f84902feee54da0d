#include "ui/ImagePreview.h"

#include <QPainter>

namespace tillery {

void ImagePreview::setImage(const QImage &image)
{
    m_image = image;
    update();
}

QRect ImagePreview::imageRect(const QSize &available) const
{
    if (m_image.isNull())
        return QRect();
    const QSize box(std::clamp(available.width() - 64, 128, 512), std::clamp(available.height() - 64, 128, 512));
    const QSize drawn = m_image.size().scaled(box, Qt::KeepAspectRatio);
    return QRect(QPoint((available.width() - drawn.width()) / 2, (available.height() - drawn.height()) / 2), drawn);
}

void ImagePreview::paintEvent(QPaintEvent *)
{
    if (m_image.isNull())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(imageRect(size()), m_image);
}

} // namespace tillery
