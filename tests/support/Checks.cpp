#include "Checks.h"

#include <QFile>

namespace tillery::test {

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
}

} // namespace tillery::test
