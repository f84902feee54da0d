#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

namespace tillery {

// The root of every failure that reaches the person: a fixed, user-facing
// description, made when the failure is made.
class Failure : public std::exception {
public:
    explicit Failure(QString description);

    const QString &description() const { return m_description; }
    const char *what() const noexcept override { return m_utf8.constData(); }

private:
    QString m_description;
    QByteArray m_utf8;
};

// The awaiting task was cancelled; nobody shows this to the person.
class CancellationFailure final : public Failure {
public:
    CancellationFailure();
};

// Something the operating system refused: a process that could not start,
// a temporary file that could not be written, JSON that did not parse.
class PlatformFailure final : public Failure {
public:
    using Failure::Failure;

    static PlatformFailure fileWriteUnknown();
    static PlatformFailure folderNotCreated(const QString &folder);
    static PlatformFailure temporaryFolderNotMade(const QString &reason);
    static PlatformFailure unreadableFile(const QString &path, const QString &reason);
    static PlatformFailure launchFailed(const QString &executable, const QString &reason);
    static PlatformFailure unreadableJson(const QString &reason, qsizetype offset);
};

// Input Tillery will not hand to a tool, such as a name that would be read
// as an option; the description is a plain sentence naming what was refused.
class RefusedInput final : public Failure {
public:
    using Failure::Failure;
};

// A folder that is neither a Mercurial nor a Git repository.
class RepositoryFailure final : public Failure {
public:
    static RepositoryFailure invalidRepository(const QString &path);

    const QString &path() const { return m_path; }

private:
    explicit RepositoryFailure(const QString &path);
    QString m_path;
};

} // namespace tillery
