#include "process/CommandServer.h"

#include "process/ChildProcess.h"
#include "process/Failure.h"
#include "process/PipedChild.h"

#include <QDeadlineTimer>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <poll.h>
#include <unistd.h>
#endif

namespace tillery {

namespace {

constexpr int controlPollMilliseconds = 5;
// A server that has not said hello by then is taken for one that never will.
constexpr int helloTimeoutMilliseconds = 20000;

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
    const std::optional<PipedChild> child =
        startPipedChild({launch.executable, launch.arguments, launch.environment, launch.directory}, true, false);
    if (!child)
        throw ServerUnavailable();
    std::unique_ptr<CommandServer> server(new CommandServer(child->processId, child->input, child->output));
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
    if (!waitForChildExit(m_processId, childExitGraceMilliseconds))
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
    closePipeEnd(m_input);
    closePipeEnd(m_output);
#endif
}

void CommandServer::fail()
{
    stop();
    throw ServerUnavailable();
}

void CommandServer::stop()
{
    const qint64 processId = m_processId;
    m_processId = 0;
    closePipes();
    stopPipedChild(processId);
}

} // namespace tillery
