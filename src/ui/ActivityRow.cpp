#include "ui/ActivityRow.h"

#include "model/ActivityState.h"
#include "ui/ShownText.h"
#include "ui/Spinner.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace tillery {

ActivityRow::ActivityRow(const ActivityState &activity, std::function<void()> cancel, QWidget *parent)
    : QWidget(parent)
    , m_spinner(new Spinner(16))
    , m_text(new QLabel)
    , m_cancel(new QToolButton)
{
    auto *spinnerFrame = new QWidget;
    spinnerFrame->setFixedSize(16, 16);
    auto *frameLayout = new QHBoxLayout(spinnerFrame);
    frameLayout->setContentsMargins(0, 0, 0, 0);
    frameLayout->addWidget(m_spinner);

    QFont caption = m_text->font();
    caption.setPointSizeF(caption.pointSizeF() * 0.85);
    m_text->setFont(caption);
    m_text->setForegroundRole(QPalette::PlaceholderText);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setMinimumWidth(1);
    m_text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 4, 8, 4);
    layout->addWidget(spinnerFrame);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_cancel);
    setFixedHeight(std::max(24, QFontMetrics(caption).height() + 8));

    m_cancel->setText(tr("Cancel"));
    m_cancel->setAccessibleName(tr("Cancel"));
    m_cancel->setToolTip(tr("Stop this operation"));
    m_cancel->setFont(caption);
    m_cancel->setAutoRaise(true);
    m_cancel->setFocusPolicy(Qt::TabFocus);
    connect(m_cancel, &QToolButton::clicked, this, std::move(cancel));
    connect(&activity, &ActivityState::isCancellableChanged, this, [this, &activity] { update(activity); });

    connect(&activity, &ActivityState::isBusyChanged, this, [this, &activity] { update(activity); });
    connect(&activity, &ActivityState::activityChanged, this, [this, &activity] { update(activity); });
    update(activity);
}

void ActivityRow::update(const ActivityState &activity)
{
    m_spinner->setVisible(activity.isBusy());
    m_cancel->setVisible(activity.isBusy() && activity.isCancellable());
    const QFontMetrics metrics(m_text->font());
    m_text->setText(metrics.elidedText(activity.activity(), Qt::ElideRight, std::max(40, m_text->width())));
    m_text->setToolTip(plainToolTip(activity.activity()));
}

QString ActivityRow::shownText() const
{
    return m_text->toolTip();
}

bool ActivityRow::isSpinning() const
{
    return !m_spinner->isHidden();
}

} // namespace tillery
