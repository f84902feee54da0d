#include "ScriptedPrompts.h"

#include <QCoreApplication>
#include <QThread>

#include <QFile>

using namespace Qt::StringLiterals;

namespace tillery::test {

namespace {

template <typename T>
std::optional<T> next(QList<std::optional<T>> &answers)
{
    return answers.isEmpty() ? std::nullopt : answers.takeFirst();
}

} // namespace

std::optional<int> ScriptedPrompts::alert(const AlertRequest &request)
{
    alerts.append(request);
    return next(alertAnswers);
}

std::optional<int> ScriptedPrompts::choose(const ChoiceRequest &request)
{
    choices.append(request);
    return next(choiceAnswers);
}

std::optional<QString> ScriptedPrompts::enterText(const TextRequest &request)
{
    texts.append(request);
    return next(textAnswers);
}

std::optional<QString> ScriptedPrompts::chooseFolder(const FolderRequest &request)
{
    folders.append(request);
    return next(folderAnswers);
}

std::optional<CredentialAnswer> ScriptedPrompts::askCredential(const CredentialRequest &request)
{
    credentials.append(request);
    if (whileAsking)
        whileAsking(request);
    return next(credentialAnswers);
}

void RecordingDesktop::open(const QString &path)
{
    opened.append(path);
}

void RecordingDesktop::reveal(const QString &path)
{
    const QMutexLocker locker(&m_mutex);
    revealed.append(path);
    revealedOnMainThread = revealedOnMainThread || QThread::currentThread() == QCoreApplication::instance()->thread();
}

std::optional<QString> RecordingDesktop::moveToTrash(const QString &path)
{
    if (trashRefusal)
        return *trashRefusal;
    QFile file(path);
    if (!file.moveToTrash())
        return u"%1 could not be moved to the Trash: %2"_s.arg(path, file.errorString());
    trashed.append(path);
    return std::nullopt;
}

void RecordingDesktop::copyToClipboard(const QString &text)
{
    clipboard.append(text);
}

} // namespace tillery::test
