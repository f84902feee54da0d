#include "ui/Screenshot.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QPixmap>
#include <QWidget>

namespace tillery {

bool saveScreenshot(QWidget &window, const QString &path)
{
    window.show();
    QApplication::processEvents();
    const QPixmap image = window.grab();
    QDir().mkpath(QFileInfo(path).absolutePath());
    return !image.isNull() && image.save(path, "PNG");
}

} // namespace tillery
