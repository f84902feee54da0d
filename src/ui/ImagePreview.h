#pragma once

#include <QImage>
#include <QString>
#include <QWidget>

namespace tillery {

// A picture centred in a box whose sides are the available size less 64,
// kept between 128 and 512, keeping its proportions; a caption ("Deleted")
// stands under it.
class ImagePreview final : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    void setImage(const QImage &image, const QString &caption = QString());
    const QString &caption() const { return m_caption; }
    // Where the picture is drawn in a widget of the size.
    QRect imageRect(const QSize &available) const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QImage m_image;
    QString m_caption;
};

} // namespace tillery
