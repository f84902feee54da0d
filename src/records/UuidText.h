#pragma once

#include <QString>
#include <QUuid>

namespace tillery {

// A fresh UUID in its standard upper-case form, for file names.
inline QString freshUuidText()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
}

} // namespace tillery
