// tillery-askpass: what git, ssh and Tillery's Mercurial extension run when a
// remote asks for a user name, a password, a passphrase or whether to trust a
// host key. It hands the question to the running Tillery over the local
// socket named in the environment and prints the answer. Exits 1 when the
// person cancels, and whenever Tillery cannot be reached, so that the tool
// gives up instead of waiting.
#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalSocket>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

// Long enough for a person to read the question and type; the tool itself
// is stopped by Tillery when the command is cancelled.
constexpr int answerWaitMilliseconds = 30 * 60 * 1000;
constexpr int connectWaitMilliseconds = 5000;

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QString socketPath = qEnvironmentVariable("TILLERY_ASKPASS_SOCKET");
    const QString token = qEnvironmentVariable("TILLERY_ASKPASS_TOKEN");
    if (socketPath.isEmpty() || token.isEmpty()) {
        std::fputs("tillery-askpass: run by Tillery only\n", stderr);
        return 1;
    }
    const QString prompt = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString();

    QLocalSocket socket;
    socket.connectToServer(socketPath);
    if (!socket.waitForConnected(connectWaitMilliseconds))
        return 1;
    const QJsonObject request{{u"token"_s, token}, {u"prompt"_s, prompt}};
    socket.write(QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n');
    if (!socket.waitForBytesWritten(connectWaitMilliseconds))
        return 1;
    while (!socket.canReadLine()) {
        if (!socket.waitForReadyRead(answerWaitMilliseconds))
            return 1;
    }
    const QJsonObject reply = QJsonDocument::fromJson(socket.readLine()).object();
    const QJsonValue answer = reply.value(u"answer"_s);
    if (!answer.isString())
        return 1;
    const QByteArray text = answer.toString().toUtf8() + '\n';
    std::fwrite(text.constData(), 1, static_cast<size_t>(text.size()), stdout);
    return std::fflush(stdout) == 0 ? 0 : 1;
}
