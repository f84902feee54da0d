#include "integrations/PropertyList.h"

#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

std::optional<QString> xmlPropertyListString(const QByteArray &bytes, const QString &key)
{
    QXmlStreamReader reader(bytes);
    bool keyFound = false;
    // Only the top-level dictionary's keys count; nested dictionaries are skipped.
    int depth = 0;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement()) {
            if (reader.name() == u"dict")
                ++depth;
            else if (depth == 1 && reader.name() == u"key")
                keyFound = reader.readElementText() == key;
            else if (depth == 1 && keyFound && reader.name() == u"string")
                return reader.readElementText();
            else if (depth == 1)
                keyFound = false;
        } else if (reader.isEndElement() && reader.name() == u"dict") {
            --depth;
        }
    }
    return std::nullopt;
}

// The binary form: objects, then a table of their offsets, then a 32-byte
// trailer that says how wide offsets and references are, how many objects
// there are, which one is at the top and where the table starts. Every
// number in it is big-endian.
class BinaryPropertyList {
public:
    explicit BinaryPropertyList(const QByteArray &bytes)
        : m_bytes(bytes)
    {
        constexpr qsizetype trailerSize = 32;
        if (!bytes.startsWith("bplist00") || bytes.size() < 8 + trailerSize)
            return;
        const qsizetype trailer = bytes.size() - trailerSize;
        m_offsetSize = static_cast<quint8>(bytes[trailer + 6]);
        m_referenceSize = static_cast<quint8>(bytes[trailer + 7]);
        const std::optional<quint64> count = number(trailer + 8, 8);
        const std::optional<quint64> top = number(trailer + 16, 8);
        const std::optional<quint64> table = number(trailer + 24, 8);
        if (!count || !top || !table || m_offsetSize < 1 || m_offsetSize > 8 || m_referenceSize < 1
            || m_referenceSize > 8 || *top >= *count || *table > quint64(trailer)
            || *count > quint64(trailer - *table) / m_offsetSize)
            return;
        m_objectCount = *count;
        m_tableStart = qsizetype(*table);
        m_top = *top;
        m_valid = true;
    }

    std::optional<QString> topLevelString(const QString &key) const
    {
        if (!m_valid)
            return std::nullopt;
        const std::optional<qsizetype> dictionary = objectStart(m_top);
        if (!dictionary || (marker(*dictionary) >> 4) != 0xD)
            return std::nullopt;
        const std::optional<std::pair<qsizetype, quint64>> entries = contents(*dictionary);
        if (!entries)
            return std::nullopt;
        const auto [firstKey, size] = *entries;
        if (size > m_objectCount)
            return std::nullopt;
        for (quint64 index = 0; index < size; ++index) {
            const std::optional<quint64> keyObject =
                number(firstKey + qsizetype(index) * m_referenceSize, m_referenceSize);
            if (!keyObject || string(*keyObject) != key)
                continue;
            const qsizetype valueReference = firstKey + qsizetype((size + index) * m_referenceSize);
            const std::optional<quint64> valueObject = number(valueReference, m_referenceSize);
            return valueObject ? string(*valueObject) : std::nullopt;
        }
        return std::nullopt;
    }

private:
    std::optional<quint64> number(qsizetype at, int width) const
    {
        if (at < 0 || width < 1 || width > 8 || at > m_bytes.size() - width)
            return std::nullopt;
        quint64 value = 0;
        for (int index = 0; index < width; ++index)
            value = (value << 8) | static_cast<quint8>(m_bytes[at + index]);
        return value;
    }

    quint8 marker(qsizetype at) const { return static_cast<quint8>(m_bytes[at]); }

    std::optional<qsizetype> objectStart(quint64 object) const
    {
        if (object >= m_objectCount)
            return std::nullopt;
        const std::optional<quint64> offset = number(m_tableStart + qsizetype(object) * m_offsetSize, m_offsetSize);
        if (!offset || *offset < 8 || *offset >= quint64(m_tableStart))
            return std::nullopt;
        return qsizetype(*offset);
    }

    // Where an object's contents start and how many items it has; a count of
    // 15 or more follows the marker as an integer object.
    std::optional<std::pair<qsizetype, quint64>> contents(qsizetype start) const
    {
        const quint8 low = marker(start) & 0x0F;
        if (low != 0x0F)
            return std::pair(start + 1, quint64(low));
        if (start + 1 >= m_tableStart || (marker(start + 1) >> 4) != 0x1)
            return std::nullopt;
        const int width = 1 << (marker(start + 1) & 0x0F);
        const std::optional<quint64> count = number(start + 2, width);
        if (!count)
            return std::nullopt;
        return std::pair(start + 2 + width, *count);
    }

    std::optional<QString> string(quint64 object) const
    {
        const std::optional<qsizetype> start = objectStart(object);
        if (!start)
            return std::nullopt;
        const quint8 type = marker(*start) >> 4;
        const std::optional<std::pair<qsizetype, quint64>> text = contents(*start);
        if (!text || (type != 0x5 && type != 0x6))
            return std::nullopt;
        const auto [from, length] = *text;
        const quint64 byteCount = type == 0x6 ? length * 2 : length;
        if (length > quint64(m_tableStart) || byteCount > quint64(m_tableStart - from))
            return std::nullopt;
        if (type == 0x5)
            return QString::fromLatin1(m_bytes.constData() + from, qsizetype(length));
        QString utf16(qsizetype(length), Qt::Uninitialized);
        for (qsizetype index = 0; index < qsizetype(length); ++index)
            utf16[index] = QChar(char16_t(*number(from + 2 * index, 2)));
        return utf16;
    }

    const QByteArray &m_bytes;
    bool m_valid = false;
    int m_offsetSize = 0;
    int m_referenceSize = 0;
    quint64 m_objectCount = 0;
    qsizetype m_tableStart = 0;
    quint64 m_top = 0;
};

} // namespace

std::optional<QString> propertyListString(const QByteArray &bytes, const QString &key)
{
    if (bytes.startsWith("bplist"))
        return BinaryPropertyList(bytes).topLevelString(key);
    return xmlPropertyListString(bytes, key);
}

} // namespace tillery
