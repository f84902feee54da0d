#include "process/CommandServer.h"

#include "process/ChildProcess.h"
#include "process/Failure.h"

#include <QDeadlineTimer>
#include <QFile>

#include <vector>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace tillery {

namespace {

constexpr int controlPollMilliseconds = 5;
// A server that has not said hello by then is taken for one that never will.
constexpr int helloTimeoutMilliseconds = 20000;
constexpr int exitGraceMilliseconds = 300;

#ifdef Q_OS_UNIX

// NUL-terminated copies for execve, prepared before forking.
class CStrings {
public:
    explicit CStrings(const QStringList &strings)
    {
        m_storage.reserve(strings.size());
        for (const QString &string : strings)
            m_storage.push_back(QFile::encodeName(string));
        for (QByteArray &bytes : m_storage)
            m_pointers.push_back(bytes.data());
        m_pointers.push_back(nullptr);
    }
    char *const *get() { return m_pointers.data(); }

private:
    std::vector<QByteArray> m_storage;
    std::vector<char *> m_pointers;
};

bool makePipe(int ends[2])
{
    if (::pipe(ends) != 0)
        return false;
    ::fcntl(ends[0], F_SETFD, FD_CLOEXEC);
    ::fcntl(ends[1], F_SETFD, FD_CLOEXEC);
    return true;
}

bool waitForExit(pid_t processId, int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    do {
        const pid_t ended = ::waitpid(processId, nullptr, WNOHANG);
        if (ended == processId || (ended < 0 && errno == ECHILD))
            return true;
        ::usleep(2000);
    } while (!deadline.hasExpired());
    return false;
}

#endif

} // namespace

CommandServer::CommandServer(qint64 processId, int input, int output)
    : m_processId(processId)
    , m_input(input)
    , m_output(output)
{
}

std::unique_ptr<CommandServer> CommandServer::start(const ServerLaunch &launch, const CancellationCheck &isCancelled)
{
#ifdef Q_OS_UNIX
    // A server that dies while we write to it must not take the application with it.
    static const bool ignoringBrokenPipes = [] { return ::signal(SIGPIPE, SIG_IGN) != SIG_ERR; }();
    Q_UNUSED(ignoringBrokenPipes);

    CStrings arguments(QStringList{launch.executable} + launch.arguments);
    CStrings environment(launch.environment);
    const QByteArray program = QFile::encodeName(launch.executable);
    const QByteArray directory = QFile::encodeName(launch.directory);
    int toServer[2];
    int fromServer[2];
    if (!makePipe(toServer))
        throw ServerUnavailable();
    if (!makePipe(fromServer)) {
        ::close(toServer[0]);
        ::close(toServer[1]);
        throw ServerUnavailable();
    }

    const pid_t processId = ::fork();
    if (processId == 0) {
        // Only async-signal-safe calls until exec.
        const int nothing = ::open("/dev/null", O_WRONLY);
        if (::dup2(toServer[0], STDIN_FILENO) < 0 || ::dup2(fromServer[1], STDOUT_FILENO) < 0 || nothing < 0
            || ::dup2(nothing, STDERR_FILENO) < 0 || ::chdir(directory.constData()) != 0)
            ::_exit(127);
        // Its own process group, so that stopping it also stops what it started.
        ::setpgid(0, 0);
        (void)::nice(backgroundNiceness);
        ::execve(program.constData(), arguments.get(), environment.get());
        ::_exit(127);
    }
    ::close(toServer[0]);
    ::close(fromServer[1]);
    if (processId < 0) {
        ::close(toServer[1]);
        ::close(fromServer[0]);
        throw ServerUnavailable();
    }

    std::unique_ptr<CommandServer> server(new CommandServer(processId, toServer[1], fromServer[0]));
    const ServerFrame hello = server->readFrame(isCancelled, helloTimeoutMilliseconds);
    if (!parseServerHello(hello))
        server->fail();
    return server;
#else
    Q_UNUSED(launch);
    Q_UNUSED(isCancelled);
    throw ServerUnavailable();
#endif
}

CommandServer::~CommandServer()
{
#ifdef Q_OS_UNIX
    if (m_processId <= 0)
        return;
    closePipes();
    if (!waitForExit(pid_t(m_processId), exitGraceMilliseconds))
        stop();
#endif
}

ServedRun CommandServer::run(const QStringList &arguments, const CancellationCheck &isCancelled)
{
    const std::optional<QByteArray> request = runCommandRequest(arguments);
    if (!request)
        throw ServerUnavailable();
    write(*request);
    ServedRun run;
    for (;;) {
        const ServerFrame frame = readFrame(isCancelled);
        switch (frame.channel) {
        case 'o':
            run.standardOutput += frame.data;
            break;
        case 'e':
            run.standardError += frame.data;
            break;
        case 'r':
            if (const std::optional<int> status = parseResult(frame)) {
                run.status = *status;
                return run;
            }
            fail();
        case 'I':
        case 'L':
            write(noInputReply());
            break;
        default:
            // Channels in lower case are optional; one in upper case must be answered.
            if (QChar::fromLatin1(frame.channel).isUpper())
                fail();
        }
    }
}

ServerFrame CommandServer::readFrame(const CancellationCheck &isCancelled, int timeoutMilliseconds)
{
#ifdef Q_OS_UNIX
    const QDeadlineTimer deadline(timeoutMilliseconds);
    QByteArray buffer(256 * 1024, Qt::Uninitialized);
    for (;;) {
        if (std::optional<ServerFrame> frame = m_reader.next())
            return std::move(*frame);
        if (isCancelled && isCancelled()) {
            stop();
            throw CancellationFailure();
        }
        if (deadline.hasExpired())
            fail();
        pollfd readable{m_output, POLLIN, 0};
        const int ready = ::poll(&readable, 1, controlPollMilliseconds);
        if (ready < 0 && errno != EINTR)
            fail();
        if (ready <= 0)
            continue;
        const ssize_t count = ::read(m_output, buffer.data(), size_t(buffer.size()));
        if (count == 0 || (count < 0 && errno != EINTR && errno != EAGAIN))
            fail();
        if (count > 0)
            m_reader.append(QByteArrayView(buffer.constData(), count));
    }
#else
    Q_UNUSED(isCancelled);
    Q_UNUSED(timeoutMilliseconds);
    fail();
#endif
}

void CommandServer::write(const QByteArray &bytes)
{
#ifdef Q_OS_UNIX
    qsizetype written = 0;
    while (written < bytes.size()) {
        const ssize_t count = ::write(m_input, bytes.constData() + written, size_t(bytes.size() - written));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            fail();
        written += count;
    }
#else
    Q_UNUSED(bytes);
    fail();
#endif
}

void CommandServer::closePipes()
{
#ifdef Q_OS_UNIX
    for (int *end : {&m_input, &m_output}) {
        if (*end >= 0)
            ::close(*end);
        *end = -1;
    }
#endif
}

void CommandServer::fail()
{
    stop();
    throw ServerUnavailable();
}

void CommandServer::stop()
{
#ifdef Q_OS_UNIX
    if (m_processId <= 0)
        return;
    const pid_t processId = pid_t(m_processId);
    m_processId = 0;
    closePipes();
    ::kill(-processId, SIGTERM);
    ::kill(processId, SIGTERM);
    if (!waitForExit(processId, exitGraceMilliseconds)) {
        ::kill(-processId, SIGKILL);
        ::kill(processId, SIGKILL);
        ::waitpid(processId, nullptr, 0);
    }
#endif
}

} // namespace tillery
