#include "integrations/FileManager.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>

#ifndef Q_OS_MACOS
#include <QDBusConnection>
#include <QDBusMessage>
#endif

using namespace Qt::StringLiterals;

namespace tillery {

bool revealInFileManager(const QString &path)
{
#ifdef Q_OS_MACOS
    return QProcess::startDetached(u"/usr/bin/open"_s, {u"-R"_s, path});
#else
    QDBusMessage call =
        QDBusMessage::createMethodCall(u"org.freedesktop.FileManager1"_s, u"/org/freedesktop/FileManager1"_s,
                                       u"org.freedesktop.FileManager1"_s, u"ShowItems"_s);
    call << QStringList{QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded)} << QString();
    const QDBusMessage reply = QDBusConnection::sessionBus().call(call, QDBus::Block, 3000);
    if (reply.type() == QDBusMessage::ReplyMessage)
        return true;
    // Without a file manager that shows items, the folder opens, from the
    // application's own thread.
    const QFileInfo info(path);
    const QUrl folder = QUrl::fromLocalFile(info.isDir() ? path : info.absolutePath());
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [folder] { QDesktopServices::openUrl(folder); }, Qt::QueuedConnection);
    return true;
#endif
}

} // namespace tillery
