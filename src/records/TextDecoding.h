#pragma once

#include <QByteArray>
#include <QString>

namespace tillery {

// Tool output is UTF-8; bytes that are not valid UTF-8 count as empty text.
// A byte-order mark is kept as a character, never silently dropped.
QString decodeUtf8OrEmpty(QByteArrayView bytes);

} // namespace tillery
