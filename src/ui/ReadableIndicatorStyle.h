#pragma once

#include <QProxyStyle>

namespace tillery {

// Fusion outlines check boxes and radio buttons with a shade darker than the window, which vanishes
// on a dark list. On a dark palette this style hands those indicators a lighter outline; everything
// else is drawn by the style it wraps.
class ReadableIndicatorStyle : public QProxyStyle {
public:
    using QProxyStyle::QProxyStyle;

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget = nullptr) const override;
};

} // namespace tillery
