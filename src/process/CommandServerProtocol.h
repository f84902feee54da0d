#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QStringList>

#include <optional>

namespace tillery {

// The pipe protocol of Mercurial's command server. The server speaks in
// frames: a channel letter, a big-endian 32-bit length and, on the output
// channels, that many bytes. 'o' and 'e' carry the command's output and
// error text, 'r' its result; 'I' and 'L' ask for input of at most
// `length` bytes and carry no data. A lower-case channel the client does
// not know may be ignored; an upper-case one may not.
struct ServerFrame {
    char channel = 0;
    quint32 length = 0;
    QByteArray data;

    bool asksForInput() const { return channel == 'I' || channel == 'L'; }

    friend bool operator==(const ServerFrame &, const ServerFrame &) = default;
};

// Collects the bytes read from the server and hands out whole frames.
class ServerFrameReader {
public:
    void append(QByteArrayView bytes) { m_buffer.append(bytes); }
    // The next complete frame, or nullopt until more bytes arrive.
    std::optional<ServerFrame> next();

private:
    QByteArray m_buffer;
    qsizetype m_offset = 0;
};

// What the server says first: it must offer "runcommand"; it names the
// process that serves.
struct ServerHello {
    QList<QByteArray> capabilities;
    QByteArray encoding;
    qint64 processId = 0;
};
std::optional<ServerHello> parseServerHello(const ServerFrame &frame);

// The request that runs one command with these arguments; nullopt when an
// argument holds a NUL, which the request uses to separate them.
std::optional<QByteArray> runCommandRequest(const QStringList &arguments);

// The answer to an input request: no input at all.
QByteArray noInputReply();

// The exit status a result frame carries, or nullopt for a malformed one.
std::optional<int> parseResult(const ServerFrame &frame);

} // namespace tillery
