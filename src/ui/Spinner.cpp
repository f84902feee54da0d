#include "ui/Spinner.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace tillery {

namespace {
constexpr int spokes = 12;
}

Spinner::Spinner(int size, QWidget *parent)
    : QWidget(parent)
    , m_size(size)
{
    setFixedSize(size, size);
    m_timer.setInterval(80);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        m_step = (m_step + 1) % spokes;
        update();
    });
}

QSize Spinner::sizeHint() const
{
    return {m_size, m_size};
}

void Spinner::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(width() / 2.0, height() / 2.0);
    const double radius = m_size / 2.0;
    for (int spoke = 0; spoke < spokes; ++spoke) {
        QColor color = palette().color(QPalette::WindowText);
        color.setAlphaF(0.15 + 0.85 * (((spoke - m_step + spokes) % spokes) / double(spokes)));
        painter.setPen(QPen(color, std::max(1.5, m_size / 9.0), Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(0, -radius * 0.45), QPointF(0, -radius * 0.9));
        painter.rotate(360.0 / spokes);
    }
}

void Spinner::showEvent(QShowEvent *)
{
    m_timer.start();
}

void Spinner::hideEvent(QHideEvent *)
{
    m_timer.stop();
}

QWidget *loadingPage(const QString &text)
{
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    auto *spinnerRow = new QHBoxLayout;
    spinnerRow->addStretch();
    spinnerRow->addWidget(new Spinner(18));
    spinnerRow->addStretch();
    auto *label = new QLabel(text);
    label->setForegroundRole(QPalette::PlaceholderText);
    label->setAlignment(Qt::AlignCenter);
    layout->addStretch();
    layout->addLayout(spinnerRow);
    layout->addWidget(label);
    layout->addStretch();
    return page;
}

} // namespace tillery
