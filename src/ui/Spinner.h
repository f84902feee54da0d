#pragma once

#include <QTimer>
#include <QWidget>

namespace tillery {

// A small indeterminate progress indicator, turning only while visible.
class Spinner final : public QWidget {
    Q_OBJECT

public:
    explicit Spinner(int size = 16, QWidget *parent = nullptr);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    int m_size;
    int m_step = 0;
    QTimer m_timer;
};

// A page with a spinner above a quiet line ("Loading Changes…"), centred.
QWidget *loadingPage(const QString &text);

} // namespace tillery
