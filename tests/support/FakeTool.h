#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace tillery::test {

// What a stand-in for hg or git does when it runs.
struct FakeToolBehaviour {
    QByteArray standardOutput;
    QByteArray standardError;
    int exitStatus = 0;
    // Seconds to sleep after printing; the sleeping process keeps the script's pid.
    int sleepSeconds = 0;
    // Shell commands that replace the printing above; $OUTPUT_FILE and
    // $ERROR_FILE name files holding the two byte strings.
    QByteArray customBody;
};

// A stand-in that runs these shell lines.
FakeToolBehaviour running(const QByteArray &body);

// A real executable shell script in its own folder that records how it was
// started and then behaves as described. Point HG or GIT at path().
class FakeTool {
public:
    // Named otherwise, it can stand in for a program found on the search path in folder().
    explicit FakeTool(const FakeToolBehaviour &behaviour, const QString &name = QStringLiteral("tool"));

    QString path() const;
    QString folder() const { return m_folder.path(); }
    // What the last run received.
    QStringList receivedArguments() const;
    QString receivedWorkingDirectory() const;
    QByteArray receivedEnvironmentVariable(const QByteArray &name) const;
    // The scheduling niceness the last run had.
    int receivedNiceness() const;
    // The pid of the last run, once it has started (0 before).
    qint64 processId() const;

private:
    QString file(const char *name) const;
    QTemporaryDir m_folder;
    QString m_name;
};

// Whether a process with this pid still exists (and is not a zombie).
bool processIsRunning(qint64 processId);

} // namespace tillery::test
