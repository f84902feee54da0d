#include "ui/CommitRowDelegate.h"

#include "ui/HistoryModel.h"
#include "ui/Icons.h"
#include "ui/Palettes.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QFontDatabase>
#include <QHelpEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPixmapCache>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

constexpr int padding = 10;
constexpr int badgeGap = 4;
constexpr int markSize = 12;
constexpr int laneWidth = 14;

// How many lane columns the row's lines and dot reach.
int graphColumns(const HistoryGraph &graph, int row)
{
    if (row < 0 || row >= graph.rowCount())
        return 0;
    int columns = graph.row(row).column + 1;
    for (const HistoryGraph::Segment &segment : graph.upperHalf(row) + graph.lowerHalf(row))
        columns = std::max({columns, segment.from + 1, segment.to + 1});
    return columns;
}

const HistoryGraph *graphOf(const QModelIndex &index)
{
    const auto *history = qobject_cast<const HistoryModel *>(index.model());
    return history ? history->graph() : nullptr;
}

// Wider graphs are cut at the gutter's edge rather than pushing the text away.
constexpr int maxGutterColumns = 10;

// The rows on screen share one gutter, wide enough for the widest of them,
// so that their titles line up.
int gutterColumns(const QStyleOptionViewItem &option, const QModelIndex &index, const HistoryGraph &graph)
{
    int first = index.row();
    int last = index.row();
    if (const auto *view = qobject_cast<const QAbstractItemView *>(option.widget)) {
        const int top = view->indexAt(QPoint(1, 1)).row();
        const int bottom = view->indexAt(QPoint(1, view->viewport()->height() - 2)).row();
        first = top < 0 ? first : std::min(first, top);
        last = bottom < 0 ? int(graph.rowCount()) - 1 : std::max(last, bottom);
    }
    int columns = 1;
    for (int row = first; row <= last && columns < maxGutterColumns; ++row)
        columns = std::max(columns, graphColumns(graph, row));
    return std::min(columns, maxGutterColumns);
}

// Eight hues that tell lanes apart, lighter on a dark base.
QColor laneColour(qint32 colour, bool dark)
{
    static constexpr int hues[] = {210, 30, 130, 280, 0, 175, 50, 320};
    return QColor::fromHsv(hues[colour % std::size(hues)], dark ? 150 : 200, dark ? 235 : 185);
}

// The row's lines from its top edge to the middle and from there to its
// bottom edge, and the changeset's dot.
void paintGraph(QPainter *painter, const HistoryGraph &graph, int row, const QRect &rect, const QPalette &palette,
                bool selected, bool workingParent)
{
    if (row < 0 || row >= graph.rowCount())
        return;
    const bool dark = isDarkPalette(palette);
    const auto x = [&rect](qint32 column) { return rect.left() + padding / 2 + column * laneWidth + laneWidth / 2.0; };
    const qreal top = rect.top();
    const qreal middle = rect.top() + rect.height() / 2.0;
    const qreal bottom = rect.bottom() + 1;
    painter->save();
    painter->setClipRect(rect);
    painter->setRenderHint(QPainter::Antialiasing, true);
    for (const HistoryGraph::Segment &segment : graph.upperHalf(row)) {
        painter->setPen(QPen(laneColour(segment.colour, dark), 2));
        painter->drawLine(QPointF(x(segment.from), top), QPointF(x(segment.to), middle));
    }
    for (const HistoryGraph::Segment &segment : graph.lowerHalf(row)) {
        painter->setPen(QPen(laneColour(segment.colour, dark), 2));
        painter->drawLine(QPointF(x(segment.from), middle), QPointF(x(segment.to), bottom));
    }
    const HistoryGraph::Row &dot = graph.row(row);
    const QColor lane = laneColour(dot.colour, dark);
    if (workingParent) {
        // The working copy's parent: a ring, larger than the other dots.
        painter->setPen(QPen(lane, 2.5));
        painter->setBrush(palette.color(selected ? QPalette::HighlightedText : QPalette::Base));
        painter->drawEllipse(QPointF(x(dot.column), middle), 6, 6);
    } else {
        painter->setPen(QPen(palette.color(selected ? QPalette::HighlightedText : QPalette::Base), 1.5));
        painter->setBrush(lane);
        painter->drawEllipse(QPointF(x(dot.column), middle), 4.5, 4.5);
    }
    painter->restore();
}

QFont badgeFont(const QFont &base)
{
    QFont font = base;
    font.setPointSizeF(base.pointSizeF() * 0.78);
    return font;
}

QFont captionFont(const QFont &base)
{
    QFont font = base;
    font.setPointSizeF(base.pointSizeF() * 0.85);
    return font;
}

QString badgeSymbol(changesetText::Badge::Kind kind)
{
    switch (kind) {
    case changesetText::Badge::Kind::bookmark:
        return u"bookmark.fill"_s;
    case changesetText::Badge::Kind::branch:
        return u"arrow.triangle.branch"_s;
    case changesetText::Badge::Kind::tag:
        return u"tag.fill"_s;
    }
    return QString();
}

// A badge's 10-point symbol in the ink of its text.
QPixmap tintedSymbol(const QString &symbolName, const QColor &ink)
{
    const QString key = u"tillery-badge:"_s + symbolName + u':' + ink.name(QColor::HexArgb);
    QPixmap symbol;
    if (QPixmapCache::find(key, &symbol))
        return symbol;
    symbol = symbolIcon(symbolName).pixmap(10, 10);
    {
        QPainter tint(&symbol);
        tint.setCompositionMode(QPainter::CompositionMode_SourceIn);
        tint.fillRect(symbol.rect(), ink);
    }
    QPixmapCache::insert(key, symbol);
    return symbol;
}

// One badge's box and, when the name still has to be pushed, the mark after it.
struct BadgePlace {
    changesetText::Badge badge;
    QRect box;
    QRect mark;
};

int badgeWidth(const changesetText::Badge &badge, const QFontMetrics &metrics)
{
    return 5 + 10 + 3 + metrics.horizontalAdvance(badge.name) + 5;
}

// The badges left to right from x, each followed by its mark when needed.
QList<BadgePlace> placeBadges(const QList<changesetText::Badge> &badges, const QFontMetrics &metrics, int x, int top,
                              int height)
{
    QList<BadgePlace> places;
    for (const changesetText::Badge &badge : badges) {
        BadgePlace place{badge, QRect(x, top, badgeWidth(badge, metrics), height), QRect()};
        x = place.box.right() + 1 + badgeGap;
        if (badge.needsPush) {
            place.mark = QRect(x, top + (height - markSize) / 2, markSize, markSize);
            x = place.mark.right() + 1 + badgeGap;
        }
        places.append(place);
    }
    return places;
}

int placesWidth(const QList<BadgePlace> &places)
{
    if (places.isEmpty())
        return 0;
    const BadgePlace &last = places.last();
    return (last.mark.isNull() ? last.box.right() : last.mark.right()) + 1 - places.first().box.left();
}

struct RowLayout {
    QRect title;
    QList<BadgePlace> badges;
    QRect details;
};

RowLayout layoutRow(const QStyleOptionViewItem &option, const QModelIndex &index, int graphWidth)
{
    RowLayout layout;
    const QRect inner = option.rect.adjusted(padding + graphWidth, 5, -padding, -5);
    const int lineHeight = inner.height() / 2;
    const auto *history = qobject_cast<const HistoryModel *>(index.model());
    const QList<changesetText::Badge> badges = history ? history->badgesAt(index.row()) : QList<changesetText::Badge>();

    QFont titleFont = option.font;
    titleFont.setWeight(QFont::Medium);
    const QFontMetrics titleMetrics(titleFont);
    const QFontMetrics badgeMetrics(badgeFont(option.font));
    const int badgeHeight = badgeMetrics.height() + 4;
    const int badgeTop = inner.top() + (lineHeight - badgeHeight) / 2;

    // A few points more than measured, so that a title that fits is never cut by rounding.
    const int natural = titleMetrics.horizontalAdvance(index.data().toString()) + 4;
    const int badgesWidth = badges.isEmpty() ? 0 : placesWidth(placeBadges(badges, badgeMetrics, 0, 0, badgeHeight));
    // The title keeps at least a third of the line; the badges take what is left.
    const int titleWidth = std::min(natural, std::max(inner.width() / 3, inner.width() - badgesWidth - 8));
    layout.title = QRect(inner.left(), inner.top(), titleWidth, lineHeight);
    layout.badges = placeBadges(badges, badgeMetrics, layout.title.right() + 1 + 8, badgeTop, badgeHeight);
    layout.details = QRect(inner.left(), inner.top() + lineHeight, inner.width(), inner.height() - lineHeight);
    return layout;
}

} // namespace

int CommitRowDelegate::gutterWidth(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const HistoryGraph *graph = graphOf(index);
    if (!graph)
        return 0;
    const auto *view = qobject_cast<const QAbstractItemView *>(option.widget);
    if (!view)
        return gutterColumns(option, index, *graph) * laneWidth;
    // The rows of one viewport paint share the answer.
    const QModelIndex top = view->indexAt(QPoint(1, 1));
    const Gutter key{graph, graph->rowCount(), top.row(), view->viewport()->height(),
                     top.isValid() ? static_cast<const HistoryModel *>(index.model())->changesetAt(top.row()).node
                                   : QString()};
    if (key != m_gutter) {
        m_gutter = key;
        m_gutterColumns = gutterColumns(option, index, *graph);
    }
    return m_gutterColumns * laneWidth;
}

void CommitRowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem background = option;
    initStyleOption(&background, index);
    background.text.clear();
    background.icon = QIcon();
    QStyle *style = option.widget ? option.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &background, painter, option.widget);

    const bool selected = option.state & QStyle::State_Selected;
    const QPalette &palette = option.palette;
    const int graphWidth = gutterWidth(option, index);
    if (const HistoryGraph *graph = graphOf(index)) {
        const auto *history = static_cast<const HistoryModel *>(index.model());
        paintGraph(painter, *graph, index.row(), option.rect.adjusted(0, 0, graphWidth + padding - option.rect.width(), 0),
                   palette, selected, history->isWorkingParent(index.row()));
    }
    const QColor text = palette.color(selected ? QPalette::HighlightedText : QPalette::Text);
    QColor quiet = text;
    quiet.setAlphaF(0.65);
    const RowLayout layout = layoutRow(option, index, graphWidth);

    painter->save();
    painter->setClipRect(option.rect.adjusted(padding, 0, -padding, 0));
    QFont titleFont = option.font;
    titleFont.setWeight(QFont::Medium);
    painter->setFont(titleFont);
    painter->setPen(text);
    painter->drawText(
        layout.title, Qt::AlignLeft | Qt::AlignVCenter,
        QFontMetrics(titleFont).elidedText(index.data().toString(), Qt::ElideRight, layout.title.width()));

    const QFont smallFont = badgeFont(option.font);
    painter->setFont(smallFont);
    // On a dark base the accent is lightened so that the names stay readable.
    const bool dark = isDarkPalette(palette);
    const QColor accent = dark ? palette.color(QPalette::Highlight).lighter(150) : palette.color(QPalette::Highlight);
    for (const BadgePlace &place : layout.badges) {
        QColor fill = selected ? palette.color(QPalette::HighlightedText) : accent;
        fill.setAlphaF(selected ? 0.25 : dark ? 0.2 : 0.15);
        const QColor ink = selected ? palette.color(QPalette::HighlightedText) : accent;
        QPainterPath outline;
        outline.addRoundedRect(QRectF(place.box), 3, 3);
        painter->setRenderHint(QPainter::Antialiasing, true);
        painter->fillPath(outline, fill);
        painter->setRenderHint(QPainter::Antialiasing, false);

        painter->drawPixmap(place.box.left() + 5, place.box.top() + (place.box.height() - 10) / 2,
                            tintedSymbol(badgeSymbol(place.badge.kind), ink));
        painter->setPen(ink);
        painter->drawText(place.box.adjusted(5 + 10 + 3, 0, -5, 0), Qt::AlignLeft | Qt::AlignVCenter, place.badge.name);
        if (!place.mark.isNull())
            symbolIcon(u"arrow.up.circle.fill"_s).paint(painter, place.mark);
    }

    const QFont caption = captionFont(option.font);
    QFont hashFont = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    hashFont.setPointSizeF(caption.pointSizeF());
    const QString author = index.data(HistoryModel::AuthorRole).toString();
    const QString date = index.data(HistoryModel::DateRole).toString();
    const QString hash = index.data(HistoryModel::HashRole).toString();
    const QFontMetrics captionMetrics(caption);
    const int hashWidth = QFontMetrics(hashFont).horizontalAdvance(hash);
    const int dateWidth = captionMetrics.horizontalAdvance(date);
    const int authorWidth = std::max(0, layout.details.width() - dateWidth - hashWidth - 2 * 12);
    QRect part = layout.details;
    painter->setPen(quiet);
    painter->setFont(caption);
    const QString shownAuthor = captionMetrics.elidedText(author, Qt::ElideRight, authorWidth);
    part.setWidth(captionMetrics.horizontalAdvance(shownAuthor));
    painter->drawText(part, Qt::AlignLeft | Qt::AlignVCenter, shownAuthor);
    part = QRect(part.right() + 1 + (shownAuthor.isEmpty() ? 0 : 12), part.top(), dateWidth, part.height());
    painter->drawText(part, Qt::AlignLeft | Qt::AlignVCenter, date);
    part = QRect(part.right() + 1 + 12, part.top(), hashWidth, part.height());
    painter->setFont(hashFont);
    painter->drawText(part, Qt::AlignLeft | Qt::AlignVCenter, hash);
    painter->restore();
}

QSize CommitRowDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    return {QStyledItemDelegate::sizeHint(option, index).width(), rowHeight};
}

bool CommitRowDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                                  const QModelIndex &index)
{
    if (event->type() == QEvent::ToolTip) {
        for (const BadgePlace &place : layoutRow(option, index, gutterWidth(option, index)).badges) {
            if (!place.mark.isNull() && place.mark.adjusted(-2, -2, 2, 2).contains(event->pos())) {
                QToolTip::showText(event->globalPos(), tr("This branch has not been pushed"), view);
                return true;
            }
        }
    }
    return QStyledItemDelegate::helpEvent(event, view, option, index);
}

} // namespace tillery
