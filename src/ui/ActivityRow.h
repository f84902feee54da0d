#pragma once

#include <QWidget>

class QLabel;

namespace tillery {

class ActivityState;
class Spinner;

// The foot of the sidebar: a spinner while an operation runs and its
// activity text. The row keeps its height when there is nothing to say.
class ActivityRow final : public QWidget {
    Q_OBJECT

public:
    explicit ActivityRow(const ActivityState &activity, QWidget *parent = nullptr);

    QString shownText() const;
    bool isSpinning() const;

private:
    void update(const ActivityState &activity);

    Spinner *m_spinner;
    QLabel *m_text;
};

} // namespace tillery
