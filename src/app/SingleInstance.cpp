#include "app/SingleInstance.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocalSocket>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

// How long a later start waits for the running window to take its folders
// before it decides that window hangs and opens one of its own.
constexpr int handOverMilliseconds = 3000;
// A request is a line of JSON: an array of folder paths.
constexpr qint64 longestRequest = 1 << 20;
const QByteArray accepted = "ok\n";

QString socketName(const QString &settingsFile)
{
    const QByteArray settings = QCryptographicHash::hash(QFileInfo(settingsFile).absoluteFilePath().toUtf8(),
                                                         QCryptographicHash::Sha256)
                                    .toHex()
                                    .left(16);
    const QString name = u"tillery-%1-%2"_s.arg(getuid()).arg(QString::fromLatin1(settings));
    // The runtime folder is the user's alone; without one Qt puts the socket in the temporary folder.
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!runtime.isEmpty() && QFileInfo(runtime).isDir())
        return QDir(runtime).filePath(name);
    return name;
}

} // namespace

SingleInstance::SingleInstance(const QString &settingsFile, QObject *parent)
    : QObject(parent)
    , m_serverName(socketName(settingsFile))
{
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket *socket = m_server.nextPendingConnection())
            receive(socket);
    });
}

bool SingleInstance::handOver(const QStringList &folders)
{
    const QDeadlineTimer deadline(handOverMilliseconds);
    QLocalSocket socket;
    socket.connectToServer(m_serverName);
    if (!socket.waitForConnected(int(deadline.remainingTime())))
        return false;
    socket.write(QJsonDocument(QJsonArray::fromStringList(folders)).toJson(QJsonDocument::Compact) + '\n');
    QByteArray answer;
    while (!answer.contains('\n')) {
        if (!socket.waitForReadyRead(int(deadline.remainingTime())))
            return false;
        answer += socket.readAll();
    }
    return answer == accepted;
}

bool SingleInstance::listen()
{
    // With an access option Qt binds the socket in a folder of its own and
    // renames it over the name, so a socket left behind is replaced.
    return m_server.listen(m_serverName);
}

void SingleInstance::receive(QLocalSocket *socket)
{
    connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
        if (!socket->canReadLine()) {
            if (socket->bytesAvailable() > longestRequest)
                socket->abort();
            return;
        }
        const QJsonDocument request = QJsonDocument::fromJson(socket->readLine());
        if (!request.isArray()) {
            socket->abort();
            return;
        }
        QStringList folders;
        for (const QJsonValue &folder : request.array())
            if (folder.isString() && QDir::isAbsolutePath(folder.toString()))
                folders.append(folder.toString());
        socket->write(accepted);
        socket->disconnectFromServer();
        Q_EMIT foldersHandedOver(folders);
    });
}

} // namespace tillery
