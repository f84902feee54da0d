#pragma once

#include <QByteArray>
#include <QImage>
#include <QLabel>

#include <optional>

namespace tillery {

// A square that shows a repository's picture and takes a new one: a
// picture file dropped on it, or (clicked, or with Space) one chosen in a
// file chooser. It hands over the file's path; whether it is a readable
// picture is for the receiver to find out.
class IconWell final : public QLabel {
    Q_OBJECT

public:
    static constexpr int side = 64;

    explicit IconWell(QWidget *parent = nullptr);

    void showPicture(const QImage &picture, const QIcon &fallback);
Q_SIGNALS:
    void picked(const QString &path);

public Q_SLOTS:
    void choose();

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
};

} // namespace tillery
