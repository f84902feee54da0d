#include "process/ToolStream.h"

#include "process/Cancellation.h"
#include "process/Failure.h"

#ifdef Q_OS_UNIX
#include <cerrno>
#include <poll.h>
#include <unistd.h>
#endif

namespace tillery {

namespace {

constexpr int controlPollMilliseconds = 5;
constexpr qsizetype readSize = 64 * 1024;

} // namespace

ToolStream::ToolStream(const PipedChild &child, Judge judge)
    : m_child(child)
    , m_judge(std::move(judge))
{
}

ToolStream::~ToolStream()
{
    stop();
}

void ToolStream::stop()
{
    closePipeEnd(m_child.output);
    closePipeEnd(m_child.error);
    stopPipedChild(m_child.processId);
    m_child.processId = 0;
}

bool ToolStream::readMore(QByteArray &output, const CancellationCheck &isCancelled)
{
#ifdef Q_OS_UNIX
    while (!m_finished) {
        if ((isCancelled && isCancelled()) || RunCancellationScope::isCancelled()) {
            stop();
            m_finished = true;
            throw CancellationFailure();
        }
        pollfd ends[2] = {{m_child.output, POLLIN, 0}, {m_child.error, POLLIN, 0}};
        const int ready = ::poll(ends, 2, controlPollMilliseconds);
        if (ready <= 0)
            continue;
        char buffer[readSize];
        if (m_child.error >= 0 && (ends[1].revents & (POLLIN | POLLHUP))) {
            const ssize_t count = ::read(m_child.error, buffer, sizeof buffer);
            if (count > 0)
                m_error.append(buffer, count);
            else if (count == 0 || errno != EINTR)
                closePipeEnd(m_child.error);
        }
        if (ends[0].revents & (POLLIN | POLLHUP)) {
            const ssize_t count = ::read(m_child.output, buffer, sizeof buffer);
            if (count > 0) {
                output.append(buffer, count);
                return true;
            }
            if (count < 0 && errno == EINTR)
                continue;
            closePipeEnd(m_child.output);
            closePipeEnd(m_child.error);
            const int status = waitForChildExit(m_child.processId, -1).value_or(-1);
            m_child.processId = 0;
            m_finished = true;
            m_judge(CommandOutput{QByteArray(), m_error, status});
        }
    }
#else
    Q_UNUSED(output);
    Q_UNUSED(isCancelled);
#endif
    return false;
}

} // namespace tillery
