#include "ui/Palettes.h"

namespace tillery {

QPalette darkPalette()
{
    QPalette palette;
    const QColor window(45, 45, 48);
    const QColor base(30, 30, 32);
    const QColor text(232, 232, 232);
    const QColor quiet(150, 150, 155);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, QColor(38, 38, 41));
    palette.setColor(QPalette::ToolTipBase, QColor(60, 60, 64));
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::PlaceholderText, quiet);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Button, QColor(58, 58, 62));
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::Light, QColor(75, 75, 80));
    palette.setColor(QPalette::Midlight, QColor(65, 65, 70));
    palette.setColor(QPalette::Mid, QColor(70, 70, 75));
    palette.setColor(QPalette::Dark, QColor(25, 25, 27));
    palette.setColor(QPalette::Shadow, Qt::black);
    palette.setColor(QPalette::Highlight, QColor(48, 110, 200));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(100, 160, 240));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, QColor(110, 110, 115));
    }
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(70, 70, 75));
    return palette;
}

bool isDarkPalette(const QPalette &palette)
{
    return palette.color(QPalette::Base).lightness() < 128;
}

} // namespace tillery
