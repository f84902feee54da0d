#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

namespace tillery {

class AppModel;

// Above the Changes page while the working copy is in the middle of an
// operation: which one and how many files are unresolved, with Continue
// (once none is) and Abort.
class ConflictBanner final : public QWidget {
    Q_OBJECT

public:
    explicit ConflictBanner(AppModel &model, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void update();

    AppModel &m_model;
    QLabel *m_text;
    QPushButton *m_continue;
    QPushButton *m_abort;
};

} // namespace tillery
