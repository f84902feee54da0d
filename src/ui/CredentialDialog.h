#pragma once

#include "model/Prompts.h"

#include <QDialog>

#include <optional>

class QCheckBox;
class QLineEdit;

namespace tillery {

// What a tool asks while it talks to a remote: titled with the remote's
// host, the tool's own question, a field for the answer (masked for a
// password or passphrase) with "Remember" for secrets, OK and Cancel; an
// unknown host key is a yes-or-no question showing the tool's text.
class CredentialDialog final : public QDialog {
    Q_OBJECT

public:
    CredentialDialog(QWidget *parent, const CredentialRequest &request);

    // The answer once accepted; nothing when cancelled.
    std::optional<CredentialAnswer> answer() const;

private:
    CredentialRequest::Kind m_kind;
    QLineEdit *m_field = nullptr;
    QCheckBox *m_remember = nullptr;
};

} // namespace tillery
