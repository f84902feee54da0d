#pragma once

#include <QAbstractButton>

namespace tillery {

// A button drawn as its text alone, so that it lines up with the labels beside it. It takes the
// highlight colour while hovered or focused and underlines itself when focused from the keyboard.
class TextButton final : public QAbstractButton {
    Q_OBJECT

public:
    explicit TextButton(QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace tillery
