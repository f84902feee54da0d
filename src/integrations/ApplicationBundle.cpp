#include "integrations/ApplicationBundle.h"

#include "integrations/PropertyList.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

// An Info.plist is a few kilobytes; a larger file is read only this far.
constexpr qint64 largestInfoFile = 4 * 1024 * 1024;

QString infoPlistPath(const QString &bundlePath)
{
    return bundlePath + u"/Contents/Info.plist"_s;
}

} // namespace

bool isApplicationBundle(const QString &path)
{
    return QFileInfo(path).isDir() && QFileInfo(infoPlistPath(path)).isFile();
}

#ifdef Q_OS_MACOS
std::optional<QString> macBundleInfoString(const QString &bundlePath, const QString &key);
#endif

std::optional<QString> bundleInfoString(const QString &bundlePath, const QString &key)
{
#ifdef Q_OS_MACOS
    // The system reads every form and knows the bundle's localisations.
    if (isApplicationBundle(bundlePath))
        return macBundleInfoString(bundlePath, key);
#endif
    QFile plist(infoPlistPath(bundlePath));
    if (!plist.open(QIODevice::ReadOnly))
        return std::nullopt;
    return propertyListString(plist.read(largestInfoFile), key);
}

} // namespace tillery
