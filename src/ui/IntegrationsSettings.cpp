#include "ui/IntegrationsSettings.h"

#include "model/AppModel.h"
#include "ui/SheetParts.h"

#include <QComboBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

QString startFolderForEditors()
{
#ifdef Q_OS_MACOS
    return u"/Applications"_s;
#else
    return u"/usr/bin"_s;
#endif
}

} // namespace

IntegrationsSettings::IntegrationsSettings(AppModel &model, QWidget *parent)
    : QWidget(parent)
    , m_model(model)
    , m_editor(new QComboBox)
    , m_otherFields(new QWidget)
    , m_path(new QLineEdit)
    , m_choose(new QPushButton(tr("Choose…")))
    , m_arguments(new QLineEdit)
    , m_problem(new ProblemLabel)
    , m_terminal(new QComboBox)
{
    const EditorChoice choice = model.settings().editorChoice();
    m_editor->setAccessibleName(tr("Editor"));
    m_path->setAccessibleName(tr("Editor application"));
    m_path->setPlaceholderText(tr("Application or program"));
    m_path->setText(choice.path);
    m_arguments->setAccessibleName(tr("Editor arguments"));
    m_arguments->setText(choice.arguments);
    m_choose->setAccessibleName(tr("Choose an Editor or Executable"));
    fillEditors();

    connect(m_editor, &QComboBox::activated, this, [this] {
        showOtherFields();
        store();
    });
    connect(m_choose, &QPushButton::clicked, this, [this] {
        QFileDialog dialog(this, tr("Choose an Editor or Executable"), startFolderForEditors());
        dialog.setLabelText(QFileDialog::Accept, tr("Choose"));
        dialog.setFileMode(QFileDialog::ExistingFile);
        if (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty())
            takeEditorPath(dialog.selectedFiles().first());
    });
    connect(m_path, &QLineEdit::editingFinished, this, [this] {
        if (m_path->text() != m_model.settings().editorPath())
            takeEditorPath(m_path->text());
    });
    connect(m_arguments, &QLineEdit::textEdited, this, [this] {
        checkArguments();
        store();
    });

    const std::optional<QString> storedTerminal = model.settings().defaultTerminalIdentifier();
    for (const ApplicationOption &terminal : m_choices.terminalOptions(storedTerminal))
        m_terminal->addItem(terminal.label, terminal.value);
    m_terminal->setCurrentIndex(std::max(0, m_terminal->findData(m_choices.chosenTerminal(storedTerminal))));
    m_terminal->setEnabled(m_choices.hasInstalledTerminal());
    m_terminal->setAccessibleName(tr("Terminal"));
    connect(m_terminal, &QComboBox::activated, this,
            [this] { m_model.setDefaultTerminal(m_terminal->currentData().toString()); });

    auto *pathRow = new QHBoxLayout;
    pathRow->setContentsMargins(0, 0, 0, 0);
    pathRow->addWidget(m_path, 1);
    pathRow->addWidget(m_choose);
    auto *otherForm = new QFormLayout(m_otherFields);
    otherForm->setContentsMargins(0, 0, 0, 0);
    otherForm->addRow(tr("Application:"), pathRow);
    otherForm->addRow(tr("Arguments:"), m_arguments);
    otherForm->addRow(u""_s, secondaryLabel(tr("%TARGET_PATH% stands for the file or repository to open. Put "
                                               "an argument with spaces in quotes.")));

    auto *form = new QFormLayout;
    form->addRow(tr("Editor:"), m_editor);
    form->addRow(m_otherFields);
    form->addRow(u""_s, m_problem);
    form->addRow(tr("Terminal:"), m_terminal);
    form->addRow(u""_s, secondaryLabel(IntegrationChoices::terminalCaption()));
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addStretch();
    showOtherFields();
    checkArguments();
}

void IntegrationsSettings::fillEditors()
{
    const EditorChoice choice = m_model.settings().editorChoice();
    m_editor->clear();
    for (const ApplicationOption &editor : m_choices.editorOptions(choice))
        m_editor->addItem(editor.label, editor.value);
    m_editor->setCurrentIndex(std::max(0, m_editor->findData(m_choices.chosenEditor(choice))));
}

void IntegrationsSettings::showOtherFields()
{
    m_otherFields->setVisible(m_editor->currentData().toString() == IntegrationChoices::otherEditor());
}

void IntegrationsSettings::store()
{
    m_model.setEditorChoice(
        EditorChoice{m_editor->currentData().toString(), m_model.settings().editorPath(), m_arguments->text()});
}

bool IntegrationsSettings::takeEditorPath(const QString &path)
{
    if (const std::optional<QString> problem = IntegrationChoices::editorPathProblem(path)) {
        m_problem->setProblem(*problem);
        m_path->setText(m_model.settings().editorPath());
        return false;
    }
    m_path->setText(path);
    m_editor->setCurrentIndex(m_editor->findData(IntegrationChoices::otherEditor()));
    showOtherFields();
    m_model.setEditorChoice(EditorChoice{IntegrationChoices::otherEditor(), path, m_arguments->text()});
    checkArguments();
    return true;
}

void IntegrationsSettings::checkArguments()
{
    const bool other = m_editor->currentData().toString() == IntegrationChoices::otherEditor();
    const std::optional<QString> problem =
        other ? IntegrationChoices::editorArgumentsProblem(m_arguments->text()) : std::nullopt;
    m_problem->setProblem(problem.value_or(QString()));
}

} // namespace tillery
