#pragma once

#include "process/Cancellation.h"
#include "process/CommandServerProtocol.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <exception>
#include <memory>

namespace tillery {

// Thrown when a command server cannot be started or stops making sense; the
// command then runs as a process of its own.
class ServerUnavailable final : public std::exception {
public:
    const char *what() const noexcept override { return "command server unavailable"; }
};

// How to start a server: the program, all of its arguments, its complete
// environment (NAME=value) and the folder it serves.
struct ServerLaunch {
    QString executable;
    QStringList arguments;
    QStringList environment;
    QString directory;
};

// What a command printed and how it ended.
struct ServedRun {
    QByteArray standardOutput;
    QByteArray standardError;
    int status = 0;
};

// One running command server: a child whose standard input and output are
// pipes of ours; its error stream goes nowhere, since each command's error
// text comes back on a channel. Used by one thread at a time.
class CommandServer {
public:
    // Starts the server and waits for its hello. Throws ServerUnavailable,
    // or CancellationFailure (after stopping the child) when cancelled first.
    static std::unique_ptr<CommandServer> start(const ServerLaunch &launch, const CancellationCheck &isCancelled);

    // Lets the server end by closing its input; stops it if it lingers.
    ~CommandServer();
    CommandServer(const CommandServer &) = delete;
    CommandServer &operator=(const CommandServer &) = delete;

    // Runs one command. Cancelling stops the server and throws
    // CancellationFailure; a server that dies or answers nonsense is stopped
    // and ServerUnavailable thrown. Either way the server is of no further use.
    ServedRun run(const QStringList &arguments, const CancellationCheck &isCancelled);

    qint64 processId() const { return m_processId; }

private:
    CommandServer(qint64 processId, int input, int output);
    ServerFrame readFrame(const CancellationCheck &isCancelled, int timeoutMilliseconds = -1);
    void write(const QByteArray &bytes);
    [[noreturn]] void fail();
    void stop();
    void closePipes();

    qint64 m_processId = 0;
    int m_input = -1;
    int m_output = -1;
    ServerFrameReader m_reader;
};

} // namespace tillery
