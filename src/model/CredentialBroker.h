#pragma once

#include "model/Prompts.h"
#include "process/CredentialChannel.h"

#include <QHash>
#include <QList>
#include <QMap>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QString>

#include <atomic>
#include <memory>

class QLocalServer;
class QLocalSocket;
class QTemporaryDir;

namespace tillery {

class Failure;
class SecretStore;

// What kind of question the prompt of git, ssh or hg is.
CredentialRequest::Kind credentialKind(const QString &prompt);
// The host a question is about: the address quoted in it, else the host
// of the remote's address (a URL or ssh's "user@host:path"); empty for a
// local path.
QString credentialHost(const QString &prompt, const QString &remoteAddress);
// Whether a tool's failure says that the remote turned the credentials down.
bool saysCredentialsRefused(const QString &failure);

// One command's questions: made on the main thread, carried by the worker
// that runs the command (its channel goes into the RunControl).
class CredentialRun {
public:
    const CredentialChannel &channel() const { return m_channel; }
    // Whether the person cancelled one of the command's questions.
    bool cancelledByPerson() const { return m_cancelled.load(); }
    // On the worker, with the failure the command ended with: one that says
    // the remote refused the credentials is noted, so that remembered ones
    // are forgotten (see CredentialBroker::finishRun).
    void noteFailure(const Failure &failure);

private:
    friend class CredentialBroker;
    CredentialChannel m_channel;
    QString m_remoteAddress;
    std::atomic<bool> m_cancelled = false;
    std::atomic<bool> m_refused = false;
    // Main thread only: the prompts asked, those answered from the secret
    // store, and the user names typed (kept with a remembered password).
    QSet<QString> m_asked;
    QSet<QString> m_fromStore;
    QMap<QString, QString> m_userNames;
};

// Answers the questions tools ask through tillery-askpass while they talk to
// a remote. It listens on a local socket in a folder only this user can
// enter, on the main thread, and asks through the model's prompts one
// question at a time; the command's worker is never blocked by it, and
// stopping the command works while a question waits. A secret is offered
// from the secret store when one was remembered, and forgotten when the
// remote turns it down: asked again in the same command, or failing it.
class CredentialBroker final : public QObject {
    Q_OBJECT

public:
    CredentialBroker(Prompts &prompts, SecretStore &secrets, QObject *parent = nullptr);
    ~CredentialBroker() override;

    // A run for a command on the remote with this address; nothing when the
    // helper is not installed or the socket cannot be made (the command then
    // runs without asking, as before).
    std::shared_ptr<CredentialRun> beginRun(const QString &remoteAddress);
    // After the command ended: forgets what it took from the store when the
    // remote refused it.
    void finishRun(CredentialRun &run);

private:
    struct Question {
        QPointer<QLocalSocket> socket;
        QString token;
        QString prompt;
    };

    bool listen();
    void accept();
    void read(QLocalSocket *socket);
    void answerNext();
    // The answer to send, or nothing to make the helper fail.
    std::optional<QString> answer(CredentialRun &run, const QString &prompt);

    Prompts &m_prompts;
    SecretStore &m_secrets;
    std::unique_ptr<QTemporaryDir> m_folder;
    QLocalServer *m_server = nullptr;
    QHash<QString, std::weak_ptr<CredentialRun>> m_runs;
    QList<Question> m_questions;
    bool m_asking = false;
};

} // namespace tillery
