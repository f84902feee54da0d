#include "process/PipedChild.h"

#include "process/ChildProcess.h"

#include <QDeadlineTimer>
#include <QFile>

#include <vector>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace tillery {

namespace {

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

struct Pipe {
    int ends[2] = {-1, -1};
    bool open()
    {
        if (::pipe(ends) != 0)
            return false;
        ::fcntl(ends[0], F_SETFD, FD_CLOEXEC);
        ::fcntl(ends[1], F_SETFD, FD_CLOEXEC);
        return true;
    }
    void close()
    {
        closePipeEnd(ends[0]);
        closePipeEnd(ends[1]);
    }
};

#endif

} // namespace

std::optional<PipedChild> startPipedChild(const PipedChildLaunch &launch, bool withInput, bool withError)
{
#ifdef Q_OS_UNIX
    // A child that dies while we write to it must not take the application with it.
    static const bool ignoringBrokenPipes = [] { return ::signal(SIGPIPE, SIG_IGN) != SIG_ERR; }();
    Q_UNUSED(ignoringBrokenPipes);

    CStrings arguments(QStringList{launch.executable} + launch.arguments);
    CStrings environment(launch.environment);
    const QByteArray program = QFile::encodeName(launch.executable);
    const QByteArray directory = QFile::encodeName(launch.directory);
    Pipe input;
    Pipe output;
    Pipe error;
    const auto closeAll = [&] {
        input.close();
        output.close();
        error.close();
    };
    if ((withInput && !input.open()) || !output.open() || (withError && !error.open())) {
        closeAll();
        return std::nullopt;
    }

    const pid_t processId = ::fork();
    if (processId == 0) {
        // Only async-signal-safe calls until exec.
        const int nothing = ::open("/dev/null", O_RDWR);
        if (nothing < 0 || ::dup2(withInput ? input.ends[0] : nothing, STDIN_FILENO) < 0
            || ::dup2(output.ends[1], STDOUT_FILENO) < 0
            || ::dup2(withError ? error.ends[1] : nothing, STDERR_FILENO) < 0 || ::chdir(directory.constData()) != 0)
            ::_exit(127);
        // Its own process group, so that stopping it also stops what it started.
        ::setpgid(0, 0);
        (void)::nice(backgroundNiceness);
        ::execve(program.constData(), arguments.get(), environment.get());
        ::_exit(127);
    }
    closePipeEnd(input.ends[0]);
    closePipeEnd(output.ends[1]);
    closePipeEnd(error.ends[1]);
    if (processId < 0) {
        closeAll();
        return std::nullopt;
    }
    return PipedChild{processId, input.ends[1], output.ends[0], error.ends[0]};
#else
    Q_UNUSED(launch);
    Q_UNUSED(withInput);
    Q_UNUSED(withError);
    return std::nullopt;
#endif
}

std::optional<int> waitForChildExit(qint64 processId, int milliseconds)
{
#ifdef Q_OS_UNIX
    const QDeadlineTimer deadline(milliseconds);
    do {
        int status = 0;
        const pid_t ended = ::waitpid(pid_t(processId), &status, WNOHANG);
        if (ended == pid_t(processId))
            return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        if (ended < 0 && errno == ECHILD)
            return -1;
        if (milliseconds != 0)
            ::usleep(2000);
    } while (!deadline.hasExpired());
#else
    Q_UNUSED(processId);
    Q_UNUSED(milliseconds);
#endif
    return std::nullopt;
}

void stopPipedChild(qint64 processId)
{
#ifdef Q_OS_UNIX
    if (processId <= 0)
        return;
    const pid_t child = pid_t(processId);
    ::kill(-child, SIGTERM);
    ::kill(child, SIGTERM);
    if (!waitForChildExit(processId, childExitGraceMilliseconds)) {
        ::kill(-child, SIGKILL);
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
    }
#else
    Q_UNUSED(processId);
#endif
}

void closePipeEnd(int &end)
{
#ifdef Q_OS_UNIX
    if (end >= 0)
        ::close(end);
#endif
    end = -1;
}

} // namespace tillery
