#include "model/CredentialBroker.h"

#include "model/SecretStore.h"
#include "process/Failure.h"

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalServer>
#include <QLocalSocket>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QUrl>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

// A question is a line of a prompt and a token; anything longer is not one.
constexpr qint64 longestQuestion = 64 * 1024;

QString hostOfAddress(const QString &address)
{
    if (address.contains(u"://"_s))
        return QUrl(address).host();
    // ssh's short form: [user@]host:path, where no slash comes before the colon.
    static const QRegularExpression shortForm(u"^(?:[^@/:]+@)?([^@/:]+):"_s);
    const QRegularExpressionMatch match = shortForm.match(address);
    return match.hasMatch() ? match.captured(1) : QString();
}

} // namespace

CredentialRequest::Kind credentialKind(const QString &prompt)
{
    if (prompt.contains(u"(yes/no"_s))
        return CredentialRequest::Kind::hostKey;
    if (prompt.trimmed().startsWith(u"Username"_s, Qt::CaseInsensitive))
        return CredentialRequest::Kind::userName;
    return CredentialRequest::Kind::secret;
}

QString credentialHost(const QString &prompt, const QString &remoteAddress)
{
    static const QRegularExpression quotedUrl(u"'([A-Za-z][A-Za-z0-9+.-]*://[^']+)'"_s);
    static const QRegularExpression sshHost(u"authenticity of host '\\[?([^' \\]]+)"_s);
    if (const QRegularExpressionMatch url = quotedUrl.match(prompt); url.hasMatch())
        return QUrl(url.captured(1)).host();
    if (const QRegularExpressionMatch host = sshHost.match(prompt); host.hasMatch())
        return host.captured(1);
    return hostOfAddress(remoteAddress);
}

bool saysCredentialsRefused(const QString &failure)
{
    for (const QString &marker : {u"Authentication failed"_s, u"authorization failed"_s, u"Permission denied"_s}) {
        if (failure.contains(marker, Qt::CaseInsensitive))
            return true;
    }
    return false;
}

void CredentialRun::noteFailure(const Failure &failure)
{
    if (saysCredentialsRefused(failure.description()))
        m_refused.store(true);
}

CredentialBroker::CredentialBroker(Prompts &prompts, SecretStore &secrets, QObject *parent)
    : QObject(parent)
    , m_prompts(prompts)
    , m_secrets(secrets)
{
}

CredentialBroker::~CredentialBroker() = default;

bool CredentialBroker::listen()
{
    if (m_server)
        return true;
    // QTemporaryDir makes the folder for this user alone.
    auto folder = std::make_unique<QTemporaryDir>(QDir::tempPath() + u"/tillery-askpass-XXXXXX"_s);
    if (!folder->isValid())
        return false;
    auto *server = new QLocalServer(this);
    server->setSocketOptions(QLocalServer::UserAccessOption);
    if (!server->listen(folder->filePath(u"socket"_s))) {
        delete server;
        return false;
    }
    connect(server, &QLocalServer::newConnection, this, &CredentialBroker::accept);
    m_folder = std::move(folder);
    m_server = server;
    return true;
}

std::shared_ptr<CredentialRun> CredentialBroker::beginRun(const QString &remoteAddress)
{
    const QString helper = credentialHelperProgram();
    if (!QFileInfo(helper).isExecutable() || !listen())
        return nullptr;
    for (auto entry = m_runs.begin(); entry != m_runs.end();)
        entry = entry->expired() ? m_runs.erase(entry) : std::next(entry);
    auto run = std::make_shared<CredentialRun>();
    run->m_channel = {helper, credentialMercurialExtension(), m_server->fullServerName(),
                      QUuid::createUuid().toString(QUuid::WithoutBraces)};
    run->m_remoteAddress = remoteAddress;
    m_runs.insert(run->m_channel.token, run);
    return run;
}

void CredentialBroker::finishRun(CredentialRun &run)
{
    if (!run.m_refused.load())
        return;
    for (const QString &key : std::as_const(run.m_fromStore))
        m_secrets.forget(key);
    run.m_fromStore.clear();
}

void CredentialBroker::accept()
{
    while (QLocalSocket *socket = m_server->nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] { read(socket); });
        // The question may have come with the connection.
        if (socket->canReadLine())
            read(socket);
    }
}

void CredentialBroker::read(QLocalSocket *socket)
{
    if (!socket->canReadLine()) {
        if (socket->bytesAvailable() > longestQuestion)
            socket->abort();
        return;
    }
    const QJsonObject request = QJsonDocument::fromJson(socket->readLine(longestQuestion)).object();
    disconnect(socket, &QLocalSocket::readyRead, this, nullptr);
    m_questions.append({socket, request.value(u"token"_s).toString(), request.value(u"prompt"_s).toString()});
    answerNext();
}

void CredentialBroker::answerNext()
{
    // A question asked while another one is on screen waits for it.
    if (m_asking || m_questions.isEmpty())
        return;
    const Question question = m_questions.takeFirst();
    std::optional<QString> reply;
    const bool helperWaits = question.socket && question.socket->state() == QLocalSocket::ConnectedState;
    const std::shared_ptr<CredentialRun> run = m_runs.value(question.token).lock();
    if (run && helperWaits) {
        m_asking = true;
        // The helper goes when its command is stopped; so does its question.
        const QMetaObject::Connection helperGone =
            connect(question.socket, &QLocalSocket::disconnected, this, [this] { m_prompts.withdrawCredentialQuestion(); });
        reply = answer(*run, question.prompt);
        disconnect(helperGone);
        m_asking = false;
    }
    if (question.socket && question.socket->state() == QLocalSocket::ConnectedState) {
        const QJsonObject message = reply ? QJsonObject{{u"answer"_s, *reply}} : QJsonObject{};
        question.socket->write(QJsonDocument(message).toJson(QJsonDocument::Compact) + '\n');
        question.socket->flush();
        question.socket->disconnectFromServer();
    }
    if (!m_questions.isEmpty())
        QMetaObject::invokeMethod(this, &CredentialBroker::answerNext, Qt::QueuedConnection);
}

std::optional<QString> CredentialBroker::answer(CredentialRun &run, const QString &prompt)
{
    const CredentialRequest::Kind kind = credentialKind(prompt);
    const QString key = prompt.trimmed();
    if (kind != CredentialRequest::Kind::hostKey) {
        if (run.m_fromStore.contains(key)) {
            // Asked again in the same command: the remote turned it down.
            m_secrets.forget(key);
            run.m_fromStore.remove(key);
        } else if (!run.m_asked.contains(key)) {
            if (const std::optional<QString> stored = m_secrets.read(key)) {
                run.m_asked.insert(key);
                run.m_fromStore.insert(key);
                return stored;
            }
        }
    }
    run.m_asked.insert(key);

    CredentialRequest request{kind, credentialHost(prompt, run.m_remoteAddress), prompt.trimmed(), QString()};
    if (kind == CredentialRequest::Kind::secret)
        request.rememberUnavailable = m_secrets.unavailableReason().value_or(QString());
    const std::optional<CredentialAnswer> given = m_prompts.askCredential(request);
    if (!given) {
        run.m_cancelled.store(true);
        return std::nullopt;
    }
    switch (kind) {
    case CredentialRequest::Kind::hostKey:
        return u"yes"_s;
    case CredentialRequest::Kind::userName:
        run.m_userNames.insert(key, given->text);
        break;
    case CredentialRequest::Kind::secret:
        if (given->remember && request.rememberUnavailable.isEmpty()) {
            m_secrets.write(key, given->text);
            for (auto name = run.m_userNames.cbegin(); name != run.m_userNames.cend(); ++name)
                m_secrets.write(name.key(), name.value());
        }
        break;
    }
    return given->text;
}

} // namespace tillery
