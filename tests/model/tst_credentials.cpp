// Remotes that want credentials, over both kinds: HTTP served on 127.0.0.1
// with Basic authentication (git http-backend, Mercurial's hgweb), and ssh
// played by a script that asks what ssh asks. The questions reach the
// model's prompts through the real helper; remembered passwords go to a real
// secret store on a private D-Bus session.
#include "Checks.h"
#include "ModelHarness.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include "model/CredentialBroker.h"
#include "model/SecretStore.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace tillery;

namespace {

enum class Ending { done, failed, cancelled };

// One command: the server's password at the time, the answers given in
// order ("!" cancels, a trailing "+" ticks Remember, "stop" stops the
// command while its question is on screen and then answers), the questions
// asked as letters (u: user name, s: secret, h: host key), how it ended and
// the password the secret store holds afterwards (empty: none).
struct Attempt {
    QString serverPassword;
    QStringList answers;
    QString questions;
    Ending ending;
    QString stored = {};
};

// The Python that runs hg, which hgweb needs.
QString mercurialPython()
{
    QFile hg(QStandardPaths::findExecutable(u"hg"_s));
    if (hg.open(QIODevice::ReadOnly)) {
        const QByteArray first = hg.readLine();
        const QStringList words = QString::fromUtf8(first.mid(2)).split(u' ', Qt::SkipEmptyParts);
        if (first.startsWith("#!") && !words.isEmpty())
            return words.first().endsWith(u"/env"_s) && words.size() > 1 ? words[1].trimmed() : words.first().trimmed();
    }
    return u"python3"_s;
}

// A server on 127.0.0.1 that serves a repository to alice and her password only.
class AuthServer {
public:
    AuthServer(RepositoryKind kind, const QString &repository, const QString &passwordFile)
    {
        m_process.setProgram(mercurialPython());
        m_process.setArguments({QStringLiteral(AUTH_SERVER_SCRIPT), kind == RepositoryKind::git ? u"git"_s : u"hg"_s,
                                repository, u"alice"_s, passwordFile});
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start();
        while (m_process.waitForReadyRead(10000) && !m_process.canReadLine()) { }
        m_port = m_process.readLine().trimmed().toInt();
    }
    ~AuthServer()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    QString url() const { return u"http://127.0.0.1:%1"_s.arg(m_port); }
    bool isListening() const { return m_port > 0; }

private:
    QProcess m_process;
    int m_port = 0;
};

QString questionLetters(const QList<CredentialRequest> &requests, qsizetype from)
{
    QString letters;
    for (qsizetype index = from; index < requests.size(); ++index)
        letters += u"ush"_s.at(int(requests[index].kind));
    return letters;
}

QList<std::optional<CredentialAnswer>> scriptedAnswers(const QStringList &answers)
{
    QList<std::optional<CredentialAnswer>> scripted;
    for (const QString &answer : answers) {
        if (answer == u"!")
            scripted.append(std::nullopt);
        else if (answer == u"stop")
            scripted.append(CredentialAnswer{u"alice"_s, false});
        else if (answer.endsWith(u'+'))
            scripted.append(CredentialAnswer{answer.chopped(1), true});
        else
            scripted.append(CredentialAnswer{answer, false});
    }
    return scripted;
}

// A local repository of the kind with a remote that changes are pushed to
// or pulled from; the model has it selected.
struct Scene {
    explicit Scene(RepositoryKind repositoryKind)
        : kind(repositoryKind)
        , program(kind == RepositoryKind::git ? u"git"_s : u"hg"_s)
        , local(test::makeFixture(kind))
        , passwordFile(remoteFolder.filePath(u"password"_s))
        , remote(remoteFolder.filePath(isGit() ? u"remote.git"_s : u"remote"_s))
    {
        local->write(u"a.txt"_s, "one\n"_ba);
        local->commitAll(u"base"_s);
        // Mercurial's remote has a working copy, where its changes are made.
        test::runTool(program, {u"clone"_s, isGit() ? u"--bare"_s : u"--pull"_s, u"--quiet"_s, local->path(), remote},
                      remoteFolder.path());
    }
    bool isGit() const { return kind == RepositoryKind::git; }

    void useRemote(const QString &address)
    {
        remoteAddress = address;
        if (isGit()) {
            local->tool({u"remote"_s, u"add"_s, u"origin"_s, address});
            local->tool({u"config"_s, u"branch.main.remote"_s, u"origin"_s});
            local->tool({u"config"_s, u"branch.main.merge"_s, u"refs/heads/main"_s});
        } else {
            test::writeFile(local->filePath(u".hg/hgrc"_s), "[paths]\ndefault = " + address.toUtf8() + '\n');
        }
    }

    // A server of the remote on 127.0.0.1 that wants alice and the password in passwordFile, named by
    // the remote address with `inAddress` before its host.
    std::unique_ptr<AuthServer> serve(const QString &inAddress = QString())
    {
        test::writeFile(passwordFile, "s3cret");
        auto server = std::make_unique<AuthServer>(kind, isGit() ? remoteFolder.path() : remote, passwordFile);
        useRemote(server->url().replace(u"//"_s, u"//"_s + inAddress) + (isGit() ? u"/remote.git"_s : u"/"_s));
        return server;
    }

    void open()
    {
        harness.start();
        QVERIFY(harness.adopt(*local));
    }

    // Something new on the side that the operation takes it from.
    void makeChange(const QString &operation, int number)
    {
        const QByteArray text = "change " + QByteArray::number(number) + '\n';
        if (operation == u"push") {
            local->write(u"a.txt"_s, text);
            local->commitAll(u"local change"_s);
            return;
        }
        const QString other = isGit() ? remoteFolder.filePath(u"other"_s) : remote;
        if (!QFileInfo::exists(other))
            test::runTool(u"git"_s, {u"clone"_s, u"--quiet"_s, remote, other}, remoteFolder.path());
        test::writeFile(other + u"/a.txt"_s, text);
        test::runTool(program, {u"commit"_s, u"--quiet"_s, u"-m"_s, u"remote change"_s, u"a.txt"_s}, other);
        if (isGit())
            test::runTool(u"git"_s, {u"push"_s, u"--quiet"_s}, other);
    }

    void run(const QString &operation)
    {
        lastOperation = operation;
        if (operation == u"push")
            harness.model().push();
        else if (operation == u"clone")
            harness.model().clone(remoteAddress, remoteFolder.filePath(u"clone"_s), kind);
        else
            harness.model().pull();
        QVERIFY(harness.settle(60000));
    }

    // Whether the local and the remote side agree now; a clone, whether it is there.
    bool agree()
    {
        const QString clone = remoteFolder.filePath(u"clone"_s);
        if (lastOperation == u"clone")
            return QFileInfo::exists(clone) && harness.model().workspace().selectedRepository()->path == clone;
        const QStringList head = isGit() ? QStringList{u"--git-dir"_s, remote, u"rev-parse"_s, u"main"_s}
                                         : QStringList{u"log"_s, u"-R"_s, remote, u"-r"_s, u"tip"_s, u"-T{node}"_s};
        return QString::fromUtf8(test::runTool(program, head, remoteFolder.path())).trimmed() == local->parentNode();
    }

    RepositoryKind kind;
    QString program;
    std::unique_ptr<test::RepositoryFixture> local;
    QTemporaryDir remoteFolder;
    QString passwordFile;
    QString remote;
    QString remoteAddress;
    QString lastOperation;
    test::ModelHarness harness;
};

void checkOutcome(Scene &scene, Ending outcome)
{
    const std::optional<PresentedError> &error = scene.harness.model().activityState().presentedError();
    QCOMPARE(error.has_value(), outcome == Ending::failed);
    QCOMPARE(scene.agree(), outcome == Ending::done);
    QVERIFY(!scene.harness.model().activityState().isBusy());
}

} // namespace

Q_DECLARE_METATYPE(Attempt)
Q_DECLARE_METATYPE(Ending)

class CredentialsTest : public QObject {
    Q_OBJECT

private:
    QProcess m_bus;
    QProcess m_keyring;
    bool m_hasSecretStore = false;

    // A session bus of the test's own with a secret service on it, its
    // default collection unlocked.
    void startSecretService()
    {
        if (QStandardPaths::findExecutable(u"dbus-daemon"_s).isEmpty()
            || QStandardPaths::findExecutable(u"gnome-keyring-daemon"_s).isEmpty())
            return;
        // Both go with the test, even when it crashes.
        for (QProcess *process : {&m_bus, &m_keyring})
            process->setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        m_bus.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--print-address=1"_s});
        if (!m_bus.waitForReadyRead(10000))
            return;
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.readLine().trimmed());
        m_keyring.start(u"gnome-keyring-daemon"_s, {u"--foreground"_s, u"--unlock"_s, u"--components=secrets"_s});
        m_keyring.write("test keyring");
        m_keyring.closeWriteChannel();
        QDBusConnectionInterface *names = QDBusConnection::sessionBus().interface();
        QTRY_VERIFY_WITH_TIMEOUT(names && names->isServiceRegistered(u"org.freedesktop.secrets"_s).value(), 10000);
        m_hasSecretStore = !DesktopSecretStore().unavailableReason().has_value();
    }

private Q_SLOTS:
    void initTestCase()
    {
        test::pinTestEnvironment();
        qputenv("TILLERY_HELPER_DIR", TILLERY_HELPER_DIR);
        startSecretService();
    }

    void cleanupTestCase()
    {
        for (QProcess *process : {&m_keyring, &m_bus}) {
            process->kill();
            process->waitForFinished();
        }
    }

    // The questions a tool's prompt makes, and the host each is about.
    void questionOfPrompt_data()
    {
        QTest::addColumn<QString>("prompt");
        QTest::addColumn<QString>("address");
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("host");
        const int user = int(CredentialRequest::Kind::userName);
        const int secret = int(CredentialRequest::Kind::secret);
        const int hostKey = int(CredentialRequest::Kind::hostKey);
        QTest::newRow("git's user name") << u"Username for 'https://example.com': "_s << u"https://other.org/r"_s
                                         << user << u"example.com"_s;
        QTest::newRow("git's password") << u"Password for 'https://bob@code.example.com:8443': "_s << QString()
                                        << secret << u"code.example.com"_s;
        QTest::newRow("a passphrase names no host")
            << u"Enter passphrase for key '/home/a/.ssh/id_ed25519': "_s << u"git@forge.example.net:team/repo.git"_s
            << secret << u"forge.example.net"_s;
        QTest::newRow("ssh's URL") << u"Enter passphrase for key '/k': "_s << u"ssh://hg@hg.example.org//srv/r"_s
                                   << secret << u"hg.example.org"_s;
        QTest::newRow("an unknown host key")
            << u"The authenticity of host '[box.example.com]:2222 ([10.0.0.2]:2222)' can't be established.\n"
               "ED25519 key fingerprint is SHA256:abc.\nAre you sure you want to continue connecting "
               "(yes/no/[fingerprint])? "_s
            << u"ssh://box.example.com:2222/r"_s << hostKey << u"box.example.com"_s;
        QTest::newRow("a local path") << u"Password: "_s << u"/srv/repositories/r"_s << secret << QString();
        QTest::newRow("a relative path with a colon") << u"Password: "_s << u"./c:/r"_s << secret << QString();
    }
    void questionOfPrompt()
    {
        QFETCH(QString, prompt);
        QFETCH(QString, address);
        QFETCH(int, kind);
        QFETCH(QString, host);
        QCOMPARE(int(credentialKind(prompt)), kind);
        QCOMPARE(credentialHost(prompt, address), host);
    }

    // Pushing to and pulling from an HTTP remote that wants alice's password:
    // the right one, a wrong one first, a cancelled question, and a
    // remembered one that is offered without asking and forgotten once the
    // remote turns it down.
    void httpRemote_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<QString>("operation");
        QTest::addColumn<QList<Attempt>>("attempts");
        // What the remote's address holds before the host.
        QTest::addColumn<QString>("inAddress");
        const RepositoryKind hg = RepositoryKind::mercurial;
        const RepositoryKind git = RepositoryKind::git;
        const Attempt right{u"s3cret"_s, {u"alice"_s, u"s3cret"_s}, u"us"_s, Ending::done};
        for (const RepositoryKind kind : {hg, git}) {
            const QByteArray suffix = kind == hg ? ", hg" : ", git";
            for (const QString &operation : {u"push"_s, u"pull"_s, u"clone"_s}) {
                const QByteArray name = operation.toUtf8();
                QTest::newRow("the right password, " + name + suffix)
                    << kind << operation << QList<Attempt>{right} << QString();
                QTest::newRow("user name cancelled, " + name + suffix)
                    << kind << operation << QList<Attempt>{{u"s3cret"_s, {u"!"_s}, u"u"_s, Ending::cancelled}}
                    << QString();
                QTest::newRow("password cancelled, " + name + suffix)
                    << kind << operation
                    << QList<Attempt>{{u"s3cret"_s, {u"alice"_s, u"!"_s}, u"us"_s, Ending::cancelled}} << QString();
            }
            QTest::newRow("remembered, then offered without asking" + suffix)
                << kind << u"push"_s
                << QList<Attempt>{{u"s3cret"_s, {u"alice"_s, u"s3cret+"_s}, u"us"_s, Ending::done, u"s3cret"_s},
                                  {u"s3cret"_s, {}, QString(), Ending::done, u"s3cret"_s}}
                << QString();
        }
        // Credentials in the address go first, without a question.
        test::addRowsForBothKinds("the address holds them", [](QTestData &row) {
            row << u"push"_s << QList<Attempt>{{u"s3cret"_s, {}, QString(), Ending::done}} << u"alice:s3cret@"_s;
        });
        QTest::newRow("the address holds a wrong password, hg")
            << hg << u"push"_s << QList<Attempt>{{u"s3cret"_s, {u"s3cret"_s}, u"s"_s, Ending::done}}
            << u"alice:wrong@"_s;
        // Mercurial asks again within the command; git fails it.
        QTest::newRow("a wrong password, then the right one, hg")
            << hg << u"push"_s
            << QList<Attempt>{{u"s3cret"_s, {u"alice"_s, u"wrong"_s, u"s3cret"_s}, u"uss"_s, Ending::done}}
            << QString();
        QTest::newRow("a wrong password, then the right one, git")
            << git << u"push"_s
            << QList<Attempt>{{u"s3cret"_s, {u"alice"_s, u"wrong"_s}, u"us"_s, Ending::failed}, right} << QString();
        test::addRowsForBothKinds("stopped while asking", [](QTestData &row) {
            row << u"push"_s << QList<Attempt>{{u"s3cret"_s, {u"stop"_s}, u"u"_s, Ending::cancelled}} << QString();
        });
        QTest::newRow("a remembered password turned down, hg")
            << hg << u"push"_s
            << QList<Attempt>{{u"s3cret"_s, {u"alice"_s, u"s3cret+"_s}, u"us"_s, Ending::done, u"s3cret"_s},
                              {u"changed"_s, {u"changed"_s}, u"s"_s, Ending::done},
                              {u"changed"_s, {u"changed+"_s}, u"s"_s, Ending::done, u"changed"_s}}
            << QString();
        QTest::newRow("a remembered password turned down, git")
            << git << u"push"_s
            << QList<Attempt>{{u"s3cret"_s, {u"alice"_s, u"s3cret+"_s}, u"us"_s, Ending::done, u"s3cret"_s},
                              {u"changed"_s, {}, QString(), Ending::failed},
                              {u"changed"_s, {u"alice"_s, u"changed"_s}, u"us"_s, Ending::done}}
            << QString();
    }
    void httpRemote()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(QString, operation);
        QFETCH(QList<Attempt>, attempts);
        QFETCH(QString, inAddress);
        bool remembers = false;
        for (const Attempt &attempt : attempts)
            remembers = remembers || attempt.answers.join(QString()).contains(u'+');
        if (remembers && !m_hasSecretStore)
            QSKIP("No secret service (gnome-keyring-daemon, dbus-daemon) to remember passwords in");

        Scene scene(kind);
        const std::unique_ptr<AuthServer> server = scene.serve(inAddress);
        QVERIFY(server->isListening());
        scene.open();
        AppModel &model = scene.harness.model();
        test::ScriptedPrompts &prompts = scene.harness.prompts;

        int number = 0;
        QString passwordQuestion;
        for (const Attempt &attempt : attempts) {
            test::writeFile(scene.passwordFile, attempt.serverPassword.toUtf8());
            scene.makeChange(operation, ++number);
            model.dismissError();
            const qsizetype asked = prompts.credentials.size();
            prompts.credentialAnswers = scriptedAnswers(attempt.answers);
            // A command whose question is on screen can still be stopped: it
            // ends, quietly, and its question goes away unanswered.
            prompts.whileAsking = [&](const CredentialRequest &) {
                if (attempt.answers.contains(u"stop"_s)) {
                    const int withdrawn = prompts.withdrawnQuestions;
                    model.cancelOperation();
                    QTRY_VERIFY(!model.activityState().isBusy());
                    QTRY_COMPARE(prompts.withdrawnQuestions, withdrawn + 1);
                }
            };
            scene.run(operation);
            QCOMPARE(questionLetters(prompts.credentials, asked), attempt.questions);
            checkOutcome(scene, attempt.ending);
            // What was asked was the host's, and a remembered password could be kept.
            for (qsizetype index = asked; index < prompts.credentials.size(); ++index) {
                const CredentialRequest &request = prompts.credentials[index];
                QCOMPARE(request.host, u"127.0.0.1"_s);
                if (request.kind == CredentialRequest::Kind::secret) {
                    QCOMPARE(request.rememberUnavailable.isEmpty(), m_hasSecretStore);
                    passwordQuestion = request.prompt;
                }
            }
            if (m_hasSecretStore && !passwordQuestion.isEmpty())
                QCOMPARE(DesktopSecretStore().read(passwordQuestion).value_or(QString()), attempt.stored);
        }
        prompts.whileAsking = {};
    }

    // ssh asks whether to trust the host's key (the dialog's Yes gives no
    // text; ssh must hear "yes"), then for the key's
    // passphrase; the stand-in for ssh asks the same through SSH_ASKPASS and
    // then runs the remote command on this machine. It must run without a
    // terminal, in a session of its own.
    void sshQuestions_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<QStringList>("answers");
        QTest::addColumn<QString>("questions");
        QTest::addColumn<Ending>("outcome");
        test::addRowsForBothKinds("host trusted, right passphrase", [](QTestData &row) {
            row << QStringList{QString(), u"open sesame"_s} << u"hs"_s << Ending::done;
        });
        test::addRowsForBothKinds("host not trusted",
                                  [](QTestData &row) { row << QStringList{u"!"_s} << u"h"_s << Ending::cancelled; });
        test::addRowsForBothKinds("passphrase cancelled", [](QTestData &row) {
            row << QStringList{QString(), u"!"_s} << u"hs"_s << Ending::cancelled;
        });
        test::addRowsForBothKinds("wrong passphrase", [](QTestData &row) {
            row << QStringList{QString(), u"open says me"_s} << u"hs"_s << Ending::failed;
        });
    }
    void sshQuestions()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(QStringList, answers);
        QFETCH(Ending, outcome);
        Scene scene(kind);
        const QString ssh = scene.remoteFolder.filePath(u"fake-ssh"_s);
        test::writeFile(ssh, test::readFile(QStringLiteral(FAKE_SSH_SCRIPT)), true);
        scene.useRemote(u"ssh://example.test"_s + (scene.isGit() ? QString() : u"/"_s) + scene.remote);
        const QString hgrc = scene.local->filePath(u".hg/hgrc"_s);
        if (scene.isGit())
            scene.local->tool({u"config"_s, u"core.sshCommand"_s, ssh});
        else
            test::writeFile(hgrc, test::readFile(hgrc) + "[ui]\nssh = " + ssh.toUtf8() + '\n');
        scene.open();
        scene.makeChange(u"push"_s, 1);
        const test::ScriptedPrompts &prompts = scene.harness.prompts;
        scene.harness.prompts.credentialAnswers = scriptedAnswers(answers);
        scene.run(u"push"_s);

        QTEST(questionLetters(prompts.credentials, 0), "questions");
        QCOMPARE(prompts.credentials.first().host, u"example.test"_s);
        QVERIFY(prompts.credentials.first().prompt.contains(u"SHA256:nThbg6kXUpJWGl7E1IGOCspRomTxdCARLviKw6E5SY8"_s));
        checkOutcome(scene, outcome);
        const qint64 session = test::readFile(scene.remoteFolder.filePath(u"session"_s)).trimmed().toLongLong();
        QVERIFY(session > 0 && session != getsid(0));
    }
};

QTEST_GUILESS_MAIN(CredentialsTest)
#include "tst_credentials.moc"
