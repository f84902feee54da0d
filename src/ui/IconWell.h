#pragma once

#include <QByteArray>
#include <QImage>
#include <QLabel>

#include <optional>

namespace tillery {

// A square that shows a repository's picture and takes a new one: a
// picture file dropped on it, or (clicked, or with Space) one chosen in a
// file chooser. It hands over the file's bytes; whether they are a picture
// is for the receiver to find out.
class IconWell final : public QLabel {
    Q_OBJECT

public:
    static constexpr int side = 64;
    // Larger files are not read: no picture worth an icon is this big.
    static constexpr qint64 largestFile = 32 * 1024 * 1024;

    explicit IconWell(QWidget *parent = nullptr);

    void showPicture(const QImage &picture, const QIcon &fallback);
    // The bytes of a picture file, or nothing when it cannot be read.
    static std::optional<QByteArray> readPictureFile(const QString &path);

Q_SIGNALS:
    void picked(const QByteArray &bytes);
    void unreadable();

public Q_SLOTS:
    void choose();

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void take(const QString &path);
};

} // namespace tillery
