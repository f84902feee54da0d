#pragma once

#include "records/RepositoryKind.h"

#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QString>

namespace tillery {

// The icon for a symbol name used across the views ("doc.text",
// "folder", ...): the desktop theme's icon when the theme has one, else the
// bundled drawing. An unknown name gives an empty icon.
QIcon symbolIcon(const QString &symbolName);

// A picture drawn into a square of `size` points with rounded corners,
// sharp on high-density screens too.
QPixmap roundedPicture(const QImage &image, int size, qreal radius);

// The icon of a repository of the kind, when it has no picture of its own.
QIcon repositoryKindIcon(RepositoryKind kind);

} // namespace tillery
