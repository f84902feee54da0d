#pragma once

#include <QWidget>

class QAction;
class QCheckBox;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace tillery {

class AppModel;
class ViewSettings;

// The summary, the description, "Amend Last Commit" and the Commit button
// ("Commit 2 Files"), enabled only when the model allows a commit;
// Ctrl+Return (⌘Return) commits too.
class CommitBox final : public QWidget {
    Q_OBJECT

public:
    CommitBox(AppModel &model, ViewSettings &settings, QWidget *parent = nullptr);

    QLineEdit *summary() const { return m_summary; }
    QPlainTextEdit *description() const { return m_description; }
    QPushButton *commitButton() const { return m_commit; }
    QCheckBox *amendBox() const { return m_amend; }
    // Commits when allowed; carries the Ctrl+Return shortcut.
    QAction *commitAction() const { return m_commitAction; }

protected:
    void changeEvent(QEvent *event) override;

private:
    void update();
    void frameDescription();

    AppModel &m_model;
    QLineEdit *m_summary;
    QPlainTextEdit *m_description;
    QCheckBox *m_amend;
    QPushButton *m_commit;
    QAction *m_commitAction;
};

} // namespace tillery
