#include "model/PlatformDesktop.h"

#include "integrations/FileManager.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QFile>
#include <QGuiApplication>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace tillery {

void PlatformDesktop::open(const QString &path)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

void PlatformDesktop::reveal(const QString &path)
{
    revealInFileManager(path);
}

std::optional<QString> PlatformDesktop::moveToTrash(const QString &path)
{
    QFile file(path);
    if (file.moveToTrash())
        return std::nullopt;
    return QCoreApplication::translate("tillery::Desktop",
                                       "%1 could not be moved to the Trash, so it was left where it was: %2")
        .arg(path, file.errorString());
}

void PlatformDesktop::copyToClipboard(const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
}

QString fileManagerLabel(const QString &macLabel)
{
#ifdef Q_OS_MACOS
    return macLabel;
#else
    Q_UNUSED(macLabel);
    return QCoreApplication::translate("tillery::Desktop", "Show in File Manager");
#endif
}

} // namespace tillery
