#include "ui/DesktopServices.h"

#include "ui/CredentialDialog.h"
#include "ui/ShownText.h"

#include <QApplication>
#include <QComboBox>
#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

QMessageBox::ButtonRole roleOf(const QString &label)
{
    // The model's button labels, in the language they are shown in.
    const auto button = [](const char *text) { return QCoreApplication::translate("tillery::AlertButtons", text); };
    if (label == button("Cancel"))
        return QMessageBox::RejectRole;
    const QStringList destructive{button("Remove"), button("Delete"), button("Discard"), button("Discard Changes"),
                                  button("Remove Folder")};
    return destructive.contains(label) ? QMessageBox::DestructiveRole : QMessageBox::AcceptRole;
}

} // namespace

DialogPrompts::DialogPrompts(QWidget *window)
    : m_window(window)
{
}

std::optional<int> DialogPrompts::alert(const AlertRequest &request)
{
    QMessageBox box(m_window);
    box.setIcon(QMessageBox::Warning);
    box.setWindowTitle(request.message);
    box.setText(request.message);
    box.setInformativeText(request.informativeText);
    // Messages carry names, which must never be read as markup.
    showMessageAsPlainText(box);
    QList<QAbstractButton *> buttons;
    QPushButton *defaultButton = nullptr;
    for (const QString &label : request.buttons) {
        const QMessageBox::ButtonRole role = roleOf(label);
        QPushButton *button = box.addButton(menuLabel(label), role);
        buttons.append(button);
        // Return never confirms a destructive action: the safe button is the default.
        if (!defaultButton && role != QMessageBox::DestructiveRole)
            defaultButton = button;
        if (role == QMessageBox::RejectRole)
            box.setEscapeButton(button);
    }
    if (defaultButton)
        box.setDefaultButton(defaultButton);
    box.exec();
    const qsizetype index = buttons.indexOf(box.clickedButton());
    return index < 0 ? std::nullopt : std::optional<int>(static_cast<int>(index));
}

std::optional<int> DialogPrompts::choose(const ChoiceRequest &request)
{
    QDialog dialog(m_window);
    dialog.setWindowTitle(request.title);
    auto *title = new QLabel;
    title->setTextFormat(Qt::PlainText);
    title->setText(request.title);
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    auto *combo = new QComboBox;
    combo->addItems(request.choices);
    auto *buttons = new QDialogButtonBox;
    buttons->addButton(menuLabel(request.actionButton), QDialogButtonBox::AcceptRole)->setDefault(true);
    buttons->addButton(QDialogButtonBox::Cancel);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    auto *layout = new QVBoxLayout(&dialog);
    layout->addWidget(title);
    auto *informative = new QLabel;
    informative->setTextFormat(Qt::PlainText);
    informative->setText(request.informativeText);
    layout->addWidget(informative);
    layout->addWidget(combo);
    layout->addWidget(buttons);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return combo->currentIndex();
}

std::optional<QString> DialogPrompts::enterText(const TextRequest &request)
{
    QInputDialog dialog(m_window);
    dialog.setWindowTitle(request.title);
    dialog.setLabelText(request.informativeText.isEmpty() ? request.title : request.informativeText);
    dialog.setTextValue(request.initialText);
    dialog.setOkButtonText(request.actionButton);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.textValue();
}

std::optional<QString> DialogPrompts::chooseFolder(const FolderRequest &request)
{
    QFileDialog dialog(m_window, request.title);
    dialog.setFileMode(request.allowsNewFolder ? QFileDialog::AnyFile : QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly, !request.allowsNewFolder);
    dialog.setAcceptMode(request.allowsNewFolder ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setLabelText(QFileDialog::Accept, request.confirmButton);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().first();
}

std::optional<CredentialAnswer> DialogPrompts::askCredential(const CredentialRequest &request)
{
    CredentialDialog dialog(m_window, request);
    m_credentialDialog = &dialog;
    dialog.exec();
    return dialog.answer();
}

void DialogPrompts::withdrawCredentialQuestion()
{
    if (m_credentialDialog)
        m_credentialDialog->reject();
}

} // namespace tillery
