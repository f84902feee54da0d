#pragma once

#include <QImage>
#include <QWidget>

namespace tillery {

// A picture centred in a box whose sides are the available size less 64,
// kept between 128 and 512, keeping its proportions.
class ImagePreview final : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    void setImage(const QImage &image);
    // Where the picture is drawn in a widget of the size.
    QRect imageRect(const QSize &available) const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QImage m_image;
};

} // namespace tillery
