#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace tillery {

// An alert with a message, an explanation and its buttons, first is default.
struct AlertRequest {
    QString message;
    QString informativeText;
    QStringList buttons;
};

// An alert that offers a list to choose from, with its action and "Cancel".
struct ChoiceRequest {
    QString title;
    QString informativeText;
    QStringList choices;
    QString actionButton;
};

struct TextRequest {
    QString title;
    QString informativeText;
    QString initialText;
    QString actionButton;
};

struct FolderRequest {
    QString title;
    QString confirmButton;
    // When true the folder may be one that does not exist yet (a new folder).
    bool allowsNewFolder = false;
};

// What a tool asks while it talks to a remote: a user name (plain text), a
// password or passphrase (a masked field), or whether to trust a host key
// it does not know yet (yes or no, with the key's fingerprint in the text).
struct CredentialRequest {
    enum class Kind { userName, secret, hostKey };
    Kind kind = Kind::secret;
    // The remote's host, for the title; empty when it is not known.
    QString host;
    // The question as the tool put it.
    QString prompt;
    // Secrets only: why "Remember" cannot be ticked (no secret store runs);
    // empty when it can.
    QString rememberUnavailable;
};

struct CredentialAnswer {
    QString text;
    // The person asked for the secret to be kept in the desktop's secret store.
    bool remember = false;
};

// Everything the model asks the person. The interface answers synchronously
// on the main thread; the window shows dialogs, the tests answer from a script.
class Prompts {
public:
    virtual ~Prompts() = default;

    // The index of the button pressed; nothing when the alert was dismissed.
    virtual std::optional<int> alert(const AlertRequest &request) = 0;
    // The index of the chosen entry; nothing on "Cancel".
    virtual std::optional<int> choose(const ChoiceRequest &request) = 0;
    virtual std::optional<QString> enterText(const TextRequest &request) = 0;
    virtual std::optional<QString> chooseFolder(const FolderRequest &request) = 0;

    // A question a tool asked while it talked to a remote; nothing on
    // "Cancel" (for a host key: on "No").
    virtual std::optional<CredentialAnswer> askCredential(const CredentialRequest &request) = 0;
    // The question on screen is no longer wanted (the command that asked
    // has ended): it goes away as if cancelled.
    virtual void withdrawCredentialQuestion() = 0;
};

} // namespace tillery
