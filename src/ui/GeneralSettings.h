#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

namespace tillery {

class ProblemLabel;

class AppModel;

// Settings ▸ General: the name commits made here are recorded under.
class GeneralSettings final : public QWidget {
    Q_OBJECT

public:
    explicit GeneralSettings(AppModel &model, QWidget *parent = nullptr);

    QLineEdit *userName() const { return m_userName; }
    ProblemLabel *gitNote() const { return m_gitNote; }

private:
    void updateNote();

    AppModel &m_model;
    QLineEdit *m_userName;
    ProblemLabel *m_gitNote;
};

} // namespace tillery
