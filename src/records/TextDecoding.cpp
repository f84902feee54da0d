#include "records/TextDecoding.h"

#include <QStringDecoder>

namespace tillery {

std::optional<QString> decodeUtf8(QByteArrayView bytes)
{
    QStringDecoder decoder(QStringConverter::Utf8,
                           QStringConverter::Flag::ConvertInitialBom | QStringConverter::Flag::Stateless);
    QString text = decoder.decode(bytes);
    if (decoder.hasError())
        return std::nullopt;
    return text;
}

QString decodeUtf8OrEmpty(QByteArrayView bytes)
{
    return decodeUtf8(bytes).value_or(QString());
}

} // namespace tillery
