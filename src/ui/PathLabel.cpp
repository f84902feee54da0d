#include "ui/PathLabel.h"

#include "ui/Icons.h"

#include <QHBoxLayout>

using namespace Qt::StringLiterals;

namespace tillery {

QHBoxLayout *fileHeader(PathLabel *path)
{
    auto *icon = new QLabel;
    icon->setPixmap(symbolIcon(u"doc.text"_s).pixmap(16, 16));
    QFont pathFont = path->font();
    pathFont.setWeight(QFont::Medium);
    path->setFont(pathFont);
    path->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto *header = new QHBoxLayout;
    header->addWidget(icon);
    header->addWidget(path, 1);
    return header;
}

} // namespace tillery
