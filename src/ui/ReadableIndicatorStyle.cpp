#include "ui/ReadableIndicatorStyle.h"

#include "ui/Palettes.h"

#include <QStyleOption>

namespace tillery {

namespace {

// Fusion takes the outline from the window colour, darkened; a light grey window gives a mid grey.
void lightenOutline(QStyleOption &option)
{
    option.palette.setColor(QPalette::Window, option.palette.color(QPalette::PlaceholderText).lighter(130));
}

} // namespace

void ReadableIndicatorStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                                           const QWidget *widget) const
{
    // Item-view checks come back here as check boxes.
    const bool indicator = element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton;
    if (!indicator || !option || !isDarkPalette(option->palette)) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    if (const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option)) {
        QStyleOptionButton lighter(*button);
        lightenOutline(lighter);
        QProxyStyle::drawPrimitive(element, &lighter, painter, widget);
    } else {
        QStyleOption lighter(*option);
        lightenOutline(lighter);
        QProxyStyle::drawPrimitive(element, &lighter, painter, widget);
    }
}

} // namespace tillery
