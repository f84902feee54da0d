#pragma once

#include <QAbstractButton>
#include <QWidget>

namespace tillery {

class AppModel;

// One tab of the header: its title, a filled rounded background when
// selected, and an optional count in a capsule after the title.
class TabButton final : public QAbstractButton {
    Q_OBJECT

public:
    explicit TabButton(const QString &title, QWidget *parent = nullptr);

    void setBadge(qsizetype count);
    qsizetype badge() const { return m_badge; }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString badgeText() const;
    qsizetype m_badge = 0;
};

// "Changes" and "History", centred; the Changes tab carries the number of
// changed files.
class WorkspaceTabHeader final : public QWidget {
    Q_OBJECT

public:
    explicit WorkspaceTabHeader(AppModel &model, QWidget *parent = nullptr);

    TabButton *changesButton() const { return m_changes; }
    TabButton *historyButton() const { return m_history; }

private:
    void update(AppModel &model);

    TabButton *m_changes;
    TabButton *m_history;
};

} // namespace tillery
