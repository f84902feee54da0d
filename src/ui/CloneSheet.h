#pragma once

#include "records/RepositoryKind.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace tillery {

class ProblemLabel;

class AppModel;

// "Clone a Repository": the address, the folder to clone into, the new
// folder's name and the kind, guessed from the address until the person
// picks one. Clone stays disabled, with the reason shown, while the clone
// could not start.
class CloneSheet final : public QDialog {
    Q_OBJECT

public:
    explicit CloneSheet(AppModel &model, QWidget *parent = nullptr);

    QLineEdit *source() const { return m_source; }
    QLineEdit *parentFolder() const { return m_parent; }
    QLineEdit *name() const { return m_name; }
    QComboBox *kind() const { return m_kind; }
    ProblemLabel *problemText() const { return m_problem; }
    QPushButton *cloneButton() const { return m_clone; }

private:
    void update();

    AppModel &m_model;
    QLineEdit *m_source;
    QLineEdit *m_parent;
    QLineEdit *m_name;
    QComboBox *m_kind;
    ProblemLabel *m_problem;
    QPushButton *m_clone;
    bool m_kindChosen = false;
    bool m_nameEdited = false;
};

} // namespace tillery
