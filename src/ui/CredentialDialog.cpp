#include "ui/CredentialDialog.h"

#include "ui/SheetParts.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

QString titleOf(const CredentialRequest &request)
{
    if (request.kind == CredentialRequest::Kind::hostKey)
        return request.host.isEmpty() ? CredentialDialog::tr("Unknown Host")
                                      : CredentialDialog::tr("Unknown Host %1").arg(request.host);
    return request.host.isEmpty() ? CredentialDialog::tr("Sign In")
                                  : CredentialDialog::tr("Sign In to %1").arg(request.host);
}

} // namespace

CredentialDialog::CredentialDialog(QWidget *parent, const CredentialRequest &request)
    : QDialog(parent)
    , m_kind(request.kind)
{
    setWindowTitle(titleOf(request));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(sheetTitle(titleOf(request)));
    auto *prompt = new QLabel;
    prompt->setObjectName(u"credentialPrompt"_s);
    prompt->setTextFormat(Qt::PlainText);
    prompt->setWordWrap(true);
    prompt->setTextInteractionFlags(Qt::TextSelectableByMouse);
    prompt->setText(request.prompt);
    layout->addWidget(prompt);

    auto *buttons = new QDialogButtonBox;
    if (request.kind == CredentialRequest::Kind::hostKey) {
        buttons->addButton(QDialogButtonBox::Yes);
        buttons->addButton(QDialogButtonBox::No)->setDefault(true);
    } else {
        m_field = new QLineEdit;
        m_field->setObjectName(u"credentialField"_s);
        m_field->setMinimumWidth(320);
        if (request.kind == CredentialRequest::Kind::secret) {
            m_field->setEchoMode(QLineEdit::Password);
            m_field->setAccessibleName(tr("Password"));
        } else {
            m_field->setAccessibleName(tr("User name"));
        }
        layout->addWidget(m_field);
        if (request.kind == CredentialRequest::Kind::secret) {
            m_remember = new QCheckBox(tr("Remember in the secret store"));
            m_remember->setObjectName(u"rememberCheckBox"_s);
            m_remember->setEnabled(request.rememberUnavailable.isEmpty());
            m_remember->setToolTip(request.rememberUnavailable);
            layout->addWidget(m_remember);
        }
        buttons->addButton(QDialogButtonBox::Ok)->setDefault(true);
        buttons->addButton(QDialogButtonBox::Cancel);
    }
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
}

std::optional<CredentialAnswer> CredentialDialog::answer() const
{
    if (result() != QDialog::Accepted)
        return std::nullopt;
    return CredentialAnswer{m_field ? m_field->text() : QString(), m_remember && m_remember->isChecked()};
}

} // namespace tillery
