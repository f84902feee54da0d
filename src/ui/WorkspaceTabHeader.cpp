#include "ui/WorkspaceTabHeader.h"

#include "model/AppModel.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QPainterPath>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

constexpr int horizontalPadding = 12;
constexpr int badgeGap = 6;

QFont badgeFont(const QFont &base)
{
    QFont font = base;
    font.setPointSizeF(base.pointSizeF() * 0.8);
    font.setWeight(QFont::Medium);
    return font;
}

} // namespace

TabButton::TabButton(const QString &title, QWidget *parent)
    : QAbstractButton(parent)
{
    setText(title);
    setCheckable(true);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
}

QString TabButton::badgeText() const
{
    return m_badge > 0 ? QString::number(m_badge) : QString();
}

void TabButton::setBadge(qsizetype count)
{
    if (m_badge == count)
        return;
    m_badge = count;
    updateGeometry();
    update();
}

QSize TabButton::sizeHint() const
{
    const QFontMetrics metrics(font());
    int width = metrics.horizontalAdvance(text()) + 2 * horizontalPadding;
    if (m_badge > 0)
        width += badgeGap + QFontMetrics(badgeFont(font())).horizontalAdvance(badgeText()) + 12;
    return {width, metrics.height() + 10};
}

void TabButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (isChecked()) {
        QColor fill = palette().color(QPalette::WindowText);
        fill.setAlphaF(0.1);
        painter.setPen(Qt::NoPen);
        painter.setBrush(fill);
        painter.drawRoundedRect(rect().adjusted(1, 1, -1, -1), 6, 6);
    }
    const QFontMetrics metrics(font());
    painter.setPen(palette().color(QPalette::WindowText));
    int x = horizontalPadding;
    painter.drawText(QRect(x, 0, metrics.horizontalAdvance(text()), height()), Qt::AlignVCenter, text());
    if (m_badge <= 0)
        return;
    x += metrics.horizontalAdvance(text()) + badgeGap;
    const QFont small = badgeFont(font());
    const QFontMetrics smallMetrics(small);
    const QRectF capsule(x, (height() - smallMetrics.height() - 2) / 2.0,
                         smallMetrics.horizontalAdvance(badgeText()) + 12, smallMetrics.height() + 2);
    QColor capsuleColor = palette().color(QPalette::WindowText);
    capsuleColor.setAlphaF(0.12);
    painter.setPen(Qt::NoPen);
    painter.setBrush(capsuleColor);
    painter.drawRoundedRect(capsule, capsule.height() / 2, capsule.height() / 2);
    painter.setFont(small);
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(capsule, Qt::AlignCenter, badgeText());
}

WorkspaceTabHeader::WorkspaceTabHeader(AppModel &model, QWidget *parent)
    : QWidget(parent)
    , m_changes(new TabButton(tr("Changes")))
    , m_history(new TabButton(tr("History")))
    , m_shelves(new TabButton(tr("Shelves")))
{
    m_history->setAccessibleName(tr("History"));
    connect(m_changes, &TabButton::clicked, &model, [&model] { model.setTab(WorkspaceTab::changes); });
    connect(m_history, &TabButton::clicked, &model, [&model] { model.setTab(WorkspaceTab::history); });
    connect(m_shelves, &TabButton::clicked, &model, [&model] { model.setTab(WorkspaceTab::shelves); });
    connect(&model.workspace(), &Workspace::tabChanged, this, [this, &model] { update(model); });
    connect(&model.workspace(), &Workspace::snapshotChanged, this, [this, &model] { update(model); });
    connect(&model.workspace(), &Workspace::selectedRepositoryChanged, this, [this, &model] { update(model); });

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 4, 8, 4);
    layout->addStretch();
    layout->addWidget(m_changes);
    layout->addWidget(m_history);
    layout->addWidget(m_shelves);
    layout->addStretch();
    update(model);
}

void WorkspaceTabHeader::update(AppModel &model)
{
    const qsizetype count = model.workspace().snapshot().files.size();
    m_changes->setBadge(count);
    m_changes->setAccessibleName(count > 0 ? tr("Changes, %1").arg(count) : tr("Changes"));
    m_changes->setChecked(model.workspace().tab() == WorkspaceTab::changes);
    m_history->setChecked(model.workspace().tab() == WorkspaceTab::history);
    const QString shelves = capitalized(model.traits().shelves);
    const qsizetype shelfCount = model.workspace().snapshot().shelves.size();
    m_shelves->setText(shelves);
    m_shelves->setBadge(shelfCount);
    m_shelves->setAccessibleName(shelfCount > 0 ? u"%1, %2"_s.arg(shelves).arg(shelfCount) : shelves);
    m_shelves->setChecked(model.workspace().tab() == WorkspaceTab::shelves);
}

} // namespace tillery
