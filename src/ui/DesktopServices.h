#pragma once

#include "model/Prompts.h"

#include <QPointer>

class QWidget;

namespace tillery {

class CredentialDialog;

// The model's questions as the platform's dialogs, over the main window.
class DialogPrompts final : public Prompts {
public:
    explicit DialogPrompts(QWidget *window = nullptr);
    void setWindow(QWidget *window) { m_window = window; }

    std::optional<int> alert(const AlertRequest &request) override;
    std::optional<int> choose(const ChoiceRequest &request) override;
    std::optional<QString> enterText(const TextRequest &request) override;
    std::optional<QString> chooseFolder(const FolderRequest &request) override;
    std::optional<CredentialAnswer> askCredential(const CredentialRequest &request) override;
    void withdrawCredentialQuestion() override;

private:
    QWidget *m_window;
    QPointer<CredentialDialog> m_credentialDialog;
};

} // namespace tillery
