#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace tillery {

// The string a property list's top-level dictionary holds under the key, in
// either of the forms applications ship their Info.plist in: XML, or binary
// ("bplist00"). Nothing when the key is missing, its value is no string, or
// the bytes are not a property list; damaged bytes never read out of bounds.
std::optional<QString> propertyListString(const QByteArray &bytes, const QString &key);

} // namespace tillery
