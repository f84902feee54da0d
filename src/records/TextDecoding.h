#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace tillery {

// Tool output is UTF-8; bytes that are not valid UTF-8 count as empty text.
// A byte-order mark is kept as a character, never silently dropped.
QString decodeUtf8OrEmpty(QByteArrayView bytes);

// The text, or nothing when the bytes are not valid UTF-8.
std::optional<QString> decodeUtf8(QByteArrayView bytes);

} // namespace tillery
