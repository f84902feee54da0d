#include "ui/ImagePreview.h"

#include <QPainter>

namespace tillery {

void ImagePreview::setImage(const QImage &image, const QString &caption)
{
    m_image = image;
    m_caption = caption;
    setAccessibleDescription(caption);
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
    const QRect picture = imageRect(size());
    painter.drawImage(picture, m_image);
    if (m_caption.isEmpty())
        return;
    QFont bold = font();
    bold.setWeight(QFont::DemiBold);
    painter.setFont(bold);
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const int lineHeight = QFontMetrics(bold).height();
    painter.drawText(QRect(0, std::min(picture.bottom() + 8, height() - lineHeight), width(), lineHeight),
                     Qt::AlignHCenter | Qt::AlignTop, m_caption);
}

} // namespace tillery
