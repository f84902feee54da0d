#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

namespace tillery {

class ProblemLabel;

class AppModel;

// "Create a Bookmark" at the current changeset (Git: a branch, checked out,
// at the current commit). Create stays disabled, with the reason shown,
// while the name cannot be used.
class CreateBookmarkSheet final : public QDialog {
    Q_OBJECT

public:
    explicit CreateBookmarkSheet(AppModel &model, QWidget *parent = nullptr);

    QLineEdit *name() const { return m_name; }
    ProblemLabel *problemText() const { return m_problem; }
    QPushButton *createButton() const { return m_create; }

private:
    QLineEdit *m_name;
    ProblemLabel *m_problem;
    QPushButton *m_create;
};

} // namespace tillery
