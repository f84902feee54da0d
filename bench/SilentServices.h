#pragma once

#include "model/Desktop.h"
#include "model/Prompts.h"

namespace tillery::bench {

// Prompts that dismiss every question and a desktop that does nothing: a
// benchmark asks nobody.
class SilentPrompts final : public Prompts {
public:
    std::optional<int> alert(const AlertRequest &) override { return std::nullopt; }
    std::optional<int> choose(const ChoiceRequest &) override { return std::nullopt; }
    std::optional<QString> enterText(const TextRequest &) override { return std::nullopt; }
    std::optional<QString> chooseFolder(const FolderRequest &) override { return std::nullopt; }
    std::optional<CredentialAnswer> askCredential(const CredentialRequest &) override { return std::nullopt; }
    void withdrawCredentialQuestion() override { }
};

class SilentDesktop final : public Desktop {
public:
    void open(const QString &) override { }
    void reveal(const QString &) override { }
    std::optional<QString> moveToTrash(const QString &) override { return std::nullopt; }
    void copyToClipboard(const QString &) override { }
};

} // namespace tillery::bench
