#include "ui/Icons.h"

#include <QGuiApplication>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>

using namespace Qt::StringLiterals;

// The drawings live in this library; a static library's resources must be
// registered by hand before first use.
static void registerBundledIcons()
{
    static const bool registered = [] {
        Q_INIT_RESOURCE(icons);
        return true;
    }();
    Q_UNUSED(registered);
}

namespace tillery {

namespace {

struct SymbolMapping {
    QString themeName;
    QString bundled;
    // A drawing in colours of its own, shown as it is; the others are drawn
    // in one grey and take the palette's text colour, light or dark. Without
    // a theme name the drawing is always used.
    bool coloured = false;
};

// Draws a one-colour drawing in the palette's text colour of the moment, so
// that the bundled icons read on light and dark palettes alike.
class PaletteTintedIconEngine final : public QIconEngine {
public:
    explicit PaletteTintedIconEngine(QIcon drawing)
        : m_drawing(std::move(drawing))
    {
    }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        const qreal ratio = painter->device() ? painter->device()->devicePixelRatioF() : 1.0;
        QPixmap tinted = pixmap(rect.size() * ratio, mode, state);
        tinted.setDevicePixelRatio(ratio);
        painter->drawPixmap(rect, tinted);
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap drawn = m_drawing.pixmap(size, QIcon::Normal, state);
        if (drawn.isNull())
            return drawn;
        const QPalette palette = QGuiApplication::palette();
        QColor colour = palette.color(QPalette::Active, QPalette::WindowText);
        if (mode == QIcon::Disabled)
            colour = palette.color(QPalette::Disabled, QPalette::WindowText);
        else if (mode == QIcon::Selected)
            colour = palette.color(QPalette::Active, QPalette::HighlightedText);
        QPainter painter(&drawn);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(drawn.rect(), colour);
        return drawn;
    }

    QSize actualSize(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        return m_drawing.actualSize(size, mode, state);
    }

    QIconEngine *clone() const override { return new PaletteTintedIconEngine(m_drawing); }

private:
    QIcon m_drawing;
};

const QHash<QString, SymbolMapping> &mappings()
{
    static const QHash<QString, SymbolMapping> table{
        {u"point.3.connected.trianglepath.dotted"_s, {QString(), u"network"_s, true}},
        {u"folder"_s, {u"folder"_s, u"folder"_s, true}},
        {u"doc.text"_s, {u"text-x-generic"_s, u"doc-text"_s}},
        {u"doc.text.magnifyingglass"_s, {u"edit-find"_s, u"doc-search"_s}},
        {u"checkmark"_s, {u"object-select-symbolic"_s, u"checkmark"_s}},
        {u"checkmark.circle"_s, {u"emblem-ok-symbolic"_s, u"checkmark-circle"_s}},
        {u"gearshape"_s, {u"emblem-system-symbolic"_s, u"gear"_s}},
        {u"plus"_s, {u"list-add"_s, u"plus"_s}},
        {u"arrow.triangle.branch"_s, {u"vcs-branch"_s, u"branch"_s}},
        {u"terminal"_s, {u"utilities-terminal"_s, u"terminal"_s}},
        {u"arrow.clockwise"_s, {u"view-refresh"_s, u"refresh"_s}},
        {u"arrow.down.circle"_s, {u"go-down"_s, u"arrow-down"_s}},
        {u"arrow.up.circle"_s, {u"go-up"_s, u"arrow-up"_s}},
        {u"arrow.triangle.2.circlepath"_s, {u"emblem-synchronizing-symbolic"_s, u"arrow-fetch"_s}},
        {u"pencil"_s, {u"accessories-text-editor"_s, u"editor"_s}},
        {u"photo"_s, {u"image-x-generic"_s, u"image"_s}},
        {u"doc.on.doc"_s, {u"edit-copy"_s, u"copy"_s}},
        {u"clock"_s, {u"document-open-recent"_s, u"clock"_s}},
        {u"archivebox"_s, {u"package-x-generic"_s, u"archivebox"_s}},
        {u"bookmark.fill"_s, {u"bookmark-new"_s, u"bookmark"_s}},
        {u"tag.fill"_s, {u"tag"_s, u"tag"_s}},
        {u"arrow.up.circle.fill"_s, {QString(), u"arrow-up-circle"_s, true}},
        {u"person"_s, {u"user-identity"_s, u"person"_s}},
        {u"paintbrush"_s, {u"applications-graphics"_s, u"paintbrush"_s}},
        {u"puzzlepiece"_s, {u"applications-utilities"_s, u"puzzle"_s}},
        {u"info.circle"_s, {u"help-about"_s, u"info"_s}},
    };
    return table;
}

QIcon bundledIcon(const QString &name)
{
    registerBundledIcons();
    return QIcon(u":/icons/icons/"_s + name + u".svg"_s);
}

} // namespace

namespace {

QIcon makeSymbolIcon(const QString &symbolName)
{
    const auto mapping = mappings().constFind(symbolName);
    if (mapping == mappings().cend())
        return QIcon();
    if (!mapping->themeName.isEmpty() && QIcon::hasThemeIcon(mapping->themeName))
        return QIcon::fromTheme(mapping->themeName);
    if (mapping->coloured)
        return bundledIcon(mapping->bundled);
    return QIcon(new PaletteTintedIconEngine(bundledIcon(mapping->bundled)));
}

} // namespace

// Delegates ask for their symbols on every paint; a new icon would read and
// render its drawing again each time.
QIcon symbolIcon(const QString &symbolName)
{
    static QHash<QString, QIcon> made;
    auto icon = made.constFind(symbolName);
    if (icon == made.cend())
        icon = made.insert(symbolName, makeSymbolIcon(symbolName));
    return *icon;
}

QPixmap roundedPicture(const QImage &image, int size, qreal radius)
{
    QPixmap pixmap(size * 2, size * 2);
    pixmap.setDevicePixelRatio(2);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    QPainterPath clip;
    clip.addRoundedRect(QRectF(0, 0, size, size), radius, radius);
    painter.setClipPath(clip);
    painter.drawImage(QRectF(0, 0, size, size), image);
    return pixmap;
}

QIcon repositoryKindIcon(RepositoryKind kind)
{
    return bundledIcon(kind == RepositoryKind::git ? u"git"_s : u"mercurial"_s);
}

} // namespace tillery
