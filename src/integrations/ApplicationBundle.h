#pragma once

#include <QString>

#include <optional>

namespace tillery {

// A macOS application bundle: a folder whose Contents/Info.plist names it.
bool isApplicationBundle(const QString &path);

// A string of the bundle's Info.plist (XML or binary form), such as
// "CFBundleIdentifier".
std::optional<QString> bundleInfoString(const QString &bundlePath, const QString &key);

} // namespace tillery
