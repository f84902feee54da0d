#include "records/TextDecoding.h"

#include <QStringDecoder>

namespace tillery {

QString decodeUtf8OrEmpty(QByteArrayView bytes)
{
    QStringDecoder decoder(QStringConverter::Utf8,
                           QStringConverter::Flag::ConvertInitialBom | QStringConverter::Flag::Stateless);
    QString text = decoder.decode(bytes);
    if (decoder.hasError())
        return QString();
    return text;
}

} // namespace tillery
