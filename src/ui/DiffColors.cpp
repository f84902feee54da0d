#include "ui/DiffColors.h"

#include "ui/Palettes.h"

namespace tillery {

namespace {

QColor withAlpha(QColor color, double alpha)
{
    color.setAlphaF(alpha);
    return color;
}

// Composited over the base colour, so the rows stay opaque when painted.
QColor over(const QColor &top, const QColor &base)
{
    const double alpha = top.alphaF();
    return QColor::fromRgbF(static_cast<float>(top.redF() * alpha + base.redF() * (1 - alpha)),
                            static_cast<float>(top.greenF() * alpha + base.greenF() * (1 - alpha)),
                            static_cast<float>(top.blueF() * alpha + base.blueF() * (1 - alpha)));
}

} // namespace

DiffRowColors diffRowColors(DiffLineKind kind, const QPalette &palette)
{
    const QColor base = palette.color(QPalette::Base);
    const QColor text = palette.color(QPalette::Text);
    const bool dark = isDarkPalette(palette);
    const QColor purple = dark ? QColor(191, 90, 242) : QColor(175, 82, 222);
    const QColor green = dark ? QColor(48, 209, 88) : QColor(52, 199, 89);
    const QColor red = dark ? QColor(255, 69, 58) : QColor(255, 59, 48);
    switch (kind) {
    case DiffLineKind::hunk:
        return {over(withAlpha(purple, 0.1), base), purple};
    case DiffLineKind::addition:
        return {over(withAlpha(green, 0.15), base), text};
    case DiffLineKind::deletion:
        return {over(withAlpha(red, 0.15), base), text};
    case DiffLineKind::context:
        break;
    }
    return {base, text};
}

DiffRowColors diffRowColors(const PresentedDiffLine &line, const QPalette &palette)
{
    if (line.conflict == ConflictPart::none)
        return diffRowColors(line.kind, palette);
    const QColor base = palette.color(QPalette::Base);
    const QColor text = palette.color(QPalette::Text);
    const bool dark = isDarkPalette(palette);
    const QColor blue = dark ? QColor(10, 132, 255) : QColor(0, 122, 255);
    const QColor orange = dark ? QColor(255, 159, 10) : QColor(255, 149, 0);
    switch (line.conflict) {
    case ConflictPart::marker:
        return {over(withAlpha(text, 0.16), base), text};
    case ConflictPart::mine:
        return {over(withAlpha(blue, 0.16), base), text};
    case ConflictPart::theirs:
        return {over(withAlpha(orange, 0.18), base), text};
    case ConflictPart::base:
        return {over(withAlpha(text, 0.06), base), text};
    case ConflictPart::none:
        break;
    }
    return diffRowColors(line.kind, palette);
}

QColor changedWordsColor(DiffLineKind kind, const QPalette &palette)
{
    const bool dark = isDarkPalette(palette);
    const QColor hue = kind == DiffLineKind::addition ? (dark ? QColor(48, 209, 88) : QColor(52, 199, 89))
                                                      : (dark ? QColor(255, 69, 58) : QColor(255, 59, 48));
    return over(withAlpha(hue, dark ? 0.42 : 0.38), palette.color(QPalette::Base));
}

QColor gutterColor(const QPalette &palette)
{
    return withAlpha(palette.color(QPalette::Button), 0.72);
}

QColor annotationRunColor(qsizetype run, const QPalette &palette)
{
    const QColor base = palette.color(QPalette::Base);
    if (run % 2 == 0)
        return base;
    return over(withAlpha(palette.color(QPalette::Text), isDarkPalette(palette) ? 0.08 : 0.05), base);
}

} // namespace tillery
