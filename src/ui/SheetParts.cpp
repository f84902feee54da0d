#include "ui/SheetParts.h"

#include <QLabel>

namespace tillery {

QLabel *sheetTitle(const QString &text)
{
    auto *label = new QLabel(text);
    QFont font = label->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.1);
    label->setFont(font);
    return label;
}

QLabel *secondaryLabel(const QString &text)
{
    auto *label = new QLabel(text);
    label->setWordWrap(true);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

QLabel *problemLabel()
{
    auto *label = new QLabel;
    label->setWordWrap(true);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, QColor(200, 60, 50));
    label->setPalette(palette);
    label->setAccessibleName(QStringLiteral("Problem"));
    return label;
}

} // namespace tillery
