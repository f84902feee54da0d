#pragma once

#include "process/Failure.h"
#include "records/CommandOutput.h"

#include <QByteArrayList>
#include <QStringList>

namespace tillery {

// The ways a tool can fail; Mercurial and Git differ only in wording.
class ToolFailure : public Failure {
public:
    // locked: a command that stopped because another process holds the
    // repository's lock; it carries what `command` carries.
    enum class Case { command, invalidRepository, malformedOutput, notInstalled, locked };

    Case failureCase() const { return m_payload.failureCase; }
    // command: the caller's arguments (without the runner's fixed first one),
    // the status and the combined output.
    const QStringList &arguments() const { return m_payload.arguments; }
    int code() const { return m_payload.code; }
    const QString &output() const { return m_payload.output; }
    // invalidRepository: the path as given.
    const QString &path() const { return m_payload.text; }
    // malformedOutput: what could not be read, or a validation sentence.
    const QString &detail() const { return m_payload.text; }

    // The text a `command` failure carries: standard error, then standard
    // output, each only when it is valid UTF-8 and not empty, joined by a
    // line feed. A stream longer than a few thousand bytes keeps its start
    // and its end, with how much was left out between them.
    static QString combinedOutput(const QByteArray &standardError, const QByteArray &standardOutput);

protected:
    struct Wording {
        QString commandName;
        QString toolName;
        // Marked with QT_TRANSLATE_NOOP in the "tillery::ToolFailure" context.
        const char *notInstalled;
        // What the tool says on standard error when another process holds
        // the lock it waited for.
        QByteArrayList lockHeldMarkers;
    };
    struct Payload {
        Case failureCase = Case::notInstalled;
        QStringList arguments;
        int code = 0;
        QString output;
        QString text;
    };

    ToolFailure(const Wording &wording, Payload payload);

    static bool mentionsHeldLock(const Wording &wording, const QByteArray &standardError);

private:
    static QString describe(const Wording &wording, const Payload &payload);
    Payload m_payload;
};

template <typename Self>
class ToolFailureOf : public ToolFailure {
public:
    static Self command(QStringList arguments, int code, QString output)
    {
        return Self(Payload{Case::command, std::move(arguments), code, std::move(output), {}});
    }
    // A finished run whose status the caller does not accept.
    static Self rejected(QStringList arguments, const CommandOutput &output)
    {
        const Case failureCase = mentionsHeldLock(Self::wording(), output.standardError) ? Case::locked : Case::command;
        return Self(Payload{failureCase,
                            std::move(arguments),
                            output.status,
                            combinedOutput(output.standardError, output.standardOutput),
                            {}});
    }
    static Self invalidRepository(QString path)
    {
        return Self(Payload{Case::invalidRepository, {}, 0, {}, std::move(path)});
    }
    static Self malformedOutput(QString detail)
    {
        return Self(Payload{Case::malformedOutput, {}, 0, {}, std::move(detail)});
    }
    static Self notInstalled() { return Self(Payload{Case::notInstalled, {}, 0, {}, {}}); }

protected:
    explicit ToolFailureOf(Payload payload)
        : ToolFailure(Self::wording(), std::move(payload))
    {
    }
};

class MercurialFailure final : public ToolFailureOf<MercurialFailure> {
    friend class ToolFailureOf<MercurialFailure>;
    using ToolFailureOf::ToolFailureOf;
    static const Wording &wording();
};

class GitFailure final : public ToolFailureOf<GitFailure> {
    friend class ToolFailureOf<GitFailure>;
    using ToolFailureOf::ToolFailureOf;
    static const Wording &wording();
};

} // namespace tillery
