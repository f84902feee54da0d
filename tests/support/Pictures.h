#pragma once

#include <QByteArray>
#include <QColor>

namespace tillery::test {

// A PNG file's bytes: a picture of the size in one colour.
QByteArray pngBytes(int width, int height, const QColor &color);

} // namespace tillery::test
