#include "ui/EmptyState.h"

#include "ui/Icons.h"

#include <QLabel>
#include <QVBoxLayout>

namespace tillery {

EmptyState::EmptyState(const QString &title, const QString &symbolName, const QString &detail, QWidget *parent)
    : QWidget(parent)
    , m_title(new QLabel(title, this))
    , m_detail(new QLabel(detail, this))
{
    auto *icon = new QLabel(this);
    icon->setPixmap(symbolIcon(symbolName).pixmap(40, 40));
    icon->setAlignment(Qt::AlignCenter);
    QFont titleFont = m_title->font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.25);
    titleFont.setWeight(QFont::DemiBold);
    m_title->setFont(titleFont);
    m_title->setTextFormat(Qt::PlainText);
    m_detail->setTextFormat(Qt::PlainText);
    m_title->setAlignment(Qt::AlignCenter);
    m_detail->setAlignment(Qt::AlignCenter);
    m_detail->setWordWrap(true);
    m_detail->setForegroundRole(QPalette::PlaceholderText);

    auto *layout = new QVBoxLayout(this);
    layout->addStretch();
    layout->addWidget(icon);
    layout->addWidget(m_title);
    layout->addWidget(m_detail);
    layout->addStretch();
}

void EmptyState::setTitle(const QString &title)
{
    m_title->setText(title);
}

void EmptyState::setDetail(const QString &detail)
{
    m_detail->setText(detail);
}

QString EmptyState::title() const
{
    return m_title->text();
}

QString EmptyState::detail() const
{
    return m_detail->text();
}

} // namespace tillery
