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

// "Changes", "History" and "Shelves" (or "Stashes"), centred; the Changes
// and Shelves tabs carry their counts.
class WorkspaceTabHeader final : public QWidget {
    Q_OBJECT

public:
    explicit WorkspaceTabHeader(AppModel &model, QWidget *parent = nullptr);

    TabButton *changesButton() const { return m_changes; }
    TabButton *historyButton() const { return m_history; }
    TabButton *shelvesButton() const { return m_shelves; }

private:
    void update(AppModel &model);

    TabButton *m_changes;
    TabButton *m_history;
    TabButton *m_shelves;
};

} // namespace tillery
