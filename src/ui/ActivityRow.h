#pragma once

#include <QWidget>

#include <functional>

class QLabel;
class QToolButton;

namespace tillery {

class ActivityState;
class Spinner;

// The foot of the sidebar: a spinner while an operation runs, its activity
// text, and a Cancel button while it can be stopped (every command that talks
// to a remote). The row keeps its height when there is nothing to say.
class ActivityRow final : public QWidget {
    Q_OBJECT

public:
    ActivityRow(const ActivityState &activity, std::function<void()> cancel, QWidget *parent = nullptr);

    QString shownText() const;
    bool isSpinning() const;
    QToolButton *cancelButton() const { return m_cancel; }

private:
    void update(const ActivityState &activity);

    Spinner *m_spinner;
    QLabel *m_text;
    QToolButton *m_cancel;
};

} // namespace tillery
