#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

namespace tillery {

// Whether a path names a picture, judged by the type database from its
// extension; a path without an extension never does.
bool isImageFile(const QString &path);

// The picture in the bytes; a null image when they are not one. Safe off the
// main thread.
QImage decodeImage(const QByteArray &bytes);

} // namespace tillery
