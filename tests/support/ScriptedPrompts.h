#pragma once

#include "model/Desktop.h"
#include "model/Prompts.h"

#include <QList>
#include <QMutex>
#include <QStringList>

#include <functional>

#include <optional>

namespace tillery::test {

// Answers the model's questions from a script and records what was asked.
class ScriptedPrompts final : public Prompts {
public:
    std::optional<int> alert(const AlertRequest &request) override;
    std::optional<int> choose(const ChoiceRequest &request) override;
    std::optional<QString> enterText(const TextRequest &request) override;
    std::optional<QString> chooseFolder(const FolderRequest &request) override;

    // Answers, used first to last; an alert or choice without an answer is dismissed.
    QList<std::optional<int>> alertAnswers;
    QList<std::optional<int>> choiceAnswers;
    QList<std::optional<QString>> textAnswers;
    QList<std::optional<QString>> folderAnswers;

    QList<AlertRequest> alerts;
    QList<ChoiceRequest> choices;
    QList<TextRequest> texts;
    QList<FolderRequest> folders;

    // A remote's questions for credentials, answered in order; one without an answer is cancelled.
    std::optional<CredentialAnswer> askCredential(const CredentialRequest &request) override;
    QList<std::optional<CredentialAnswer>> credentialAnswers;
    QList<CredentialRequest> credentials;
    // Runs while a question is on screen, before it is answered.
    std::function<void(const CredentialRequest &)> whileAsking;
    void withdrawCredentialQuestion() override { ++withdrawnQuestions; }
    int withdrawnQuestions = 0;
};

// Records the desktop services asked for; the Trash is a real one in the
// test's home folder.
class RecordingDesktop final : public Desktop {
public:
    void open(const QString &path) override;
    void reveal(const QString &path) override;
    std::optional<QString> moveToTrash(const QString &path) override;
    void copyToClipboard(const QString &text) override;

    // When set, the Trash refuses every file with this reason.
    std::optional<QString> trashRefusal;

    QStringList opened;
    // Revealing runs in background work.
    QStringList revealed;
    bool revealedOnMainThread = false;
    QStringList trashed;
    QStringList clipboard;

private:
    QMutex m_mutex;
};

} // namespace tillery::test
