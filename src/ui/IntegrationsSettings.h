#pragma once

#include "model/IntegrationChoices.h"

#include <QWidget>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace tillery {

class ProblemLabel;

class AppModel;

// Settings ▸ Integrations: the editor "Open in" uses (a known one, or any
// application or program with its own argument string, checked as it is
// typed) and the terminal "Open in Terminal" uses, among those installed.
class IntegrationsSettings final : public QWidget {
    Q_OBJECT

public:
    explicit IntegrationsSettings(AppModel &model, QWidget *parent = nullptr);

    QComboBox *editor() const { return m_editor; }
    QLineEdit *editorPath() const { return m_path; }
    QLineEdit *editorArguments() const { return m_arguments; }
    ProblemLabel *editorProblem() const { return m_problem; }
    QComboBox *terminal() const { return m_terminal; }
    // Takes a chosen or typed application path for `other`; false (with the
    // reason shown) when it is neither an application nor a program.
    bool takeEditorPath(const QString &path);

private:
    void fillEditors();
    void showOtherFields();
    void store();
    void checkArguments();

    AppModel &m_model;
    IntegrationChoices m_choices;
    QComboBox *m_editor;
    QWidget *m_otherFields;
    QLineEdit *m_path;
    QPushButton *m_choose;
    QLineEdit *m_arguments;
    ProblemLabel *m_problem;
    QComboBox *m_terminal;
};

} // namespace tillery
