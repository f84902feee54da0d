#include "process/CommandServerProtocol.h"

#include <QtEndian>

namespace tillery {

namespace {

constexpr qsizetype headerSize = 5;

QByteArray bigEndian(quint32 value)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(value, bytes.data());
    return bytes;
}

} // namespace

std::optional<ServerFrame> ServerFrameReader::next()
{
    const qsizetype available = m_buffer.size() - m_offset;
    if (available < headerSize)
        return std::nullopt;
    ServerFrame frame;
    frame.channel = m_buffer.at(m_offset);
    frame.length = qFromBigEndian<quint32>(m_buffer.constData() + m_offset + 1);
    const qsizetype dataSize = frame.asksForInput() ? 0 : qsizetype(frame.length);
    if (available - headerSize < dataSize)
        return std::nullopt;
    frame.data = m_buffer.mid(m_offset + headerSize, dataSize);
    m_offset += headerSize + dataSize;
    // Drop what has been handed out once it is the larger part of the buffer.
    if (m_offset > m_buffer.size() / 2) {
        m_buffer.remove(0, m_offset);
        m_offset = 0;
    }
    return frame;
}

std::optional<ServerHello> parseServerHello(const ServerFrame &frame)
{
    if (frame.channel != 'o')
        return std::nullopt;
    ServerHello hello;
    for (const QByteArray &line : frame.data.split('\n')) {
        const qsizetype colon = line.indexOf(": ");
        if (colon < 0)
            continue;
        const QByteArray field = line.first(colon);
        const QByteArray value = line.sliced(colon + 2);
        if (field == "capabilities")
            hello.capabilities = value.split(' ');
        else if (field == "encoding")
            hello.encoding = value;
        else if (field == "pid")
            hello.processId = value.toLongLong();
    }
    if (!hello.capabilities.contains("runcommand") || hello.processId <= 0)
        return std::nullopt;
    return hello;
}

std::optional<QByteArray> runCommandRequest(const QStringList &arguments)
{
    QByteArray joined;
    for (qsizetype index = 0; index < arguments.size(); ++index) {
        if (arguments.at(index).contains(QChar(u'\0')))
            return std::nullopt;
        if (index > 0)
            joined.append('\0');
        joined.append(arguments.at(index).toUtf8());
    }
    return QByteArrayLiteral("runcommand\n") + bigEndian(quint32(joined.size())) + joined;
}

QByteArray noInputReply()
{
    return bigEndian(0);
}

std::optional<int> parseResult(const ServerFrame &frame)
{
    if (frame.channel != 'r' || frame.data.size() != 4)
        return std::nullopt;
    return qFromBigEndian<qint32>(frame.data.constData());
}

} // namespace tillery
