#include "MercurialServer.h"

#include <QDeadlineTimer>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tillery::test {

namespace {

int freePort()
{
    QTcpServer probe;
    if (!probe.listen(QHostAddress::LocalHost, 0))
        throw std::runtime_error("no free port on 127.0.0.1");
    return probe.serverPort();
}

bool accepts(int port)
{
    QTcpSocket socket;
    socket.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port));
    return socket.waitForConnected(200);
}

} // namespace

MercurialServer::MercurialServer(const QString &repositoryPath)
    : m_port(freePort())
{
    m_process.setWorkingDirectory(repositoryPath);
    m_process.setStandardInputFile(QProcess::nullDevice());
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.start(QStandardPaths::findExecutable(u"hg"_s),
                    {u"serve"_s, u"--address"_s, u"127.0.0.1"_s, u"--port"_s, QString::number(m_port), u"--config"_s,
                     u"web.push_ssl=false"_s, u"--config"_s, u"web.allow-push=*"_s});
    const QDeadlineTimer deadline(20000);
    while (!accepts(m_port)) {
        if (deadline.hasExpired() || m_process.state() == QProcess::NotRunning)
            throw std::runtime_error("hg serve did not start: " + m_process.readAll().toStdString());
        QThread::msleep(50);
    }
}

MercurialServer::~MercurialServer()
{
    m_process.kill();
    m_process.waitForFinished(5000);
}

QString MercurialServer::address(const QString &userInfo) const
{
    return u"http://"_s + userInfo + u"127.0.0.1:"_s + QString::number(m_port) + u'/';
}

} // namespace tillery::test
