#include "FakeTool.h"

#include "Checks.h"

#include <QDir>
#include <QFile>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tillery::test {

namespace {

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray quoted(const QString &path)
{
    return "'" + path.toUtf8().replace("'", "'\\''") + "'";
}

} // namespace

FakeToolBehaviour running(const QByteArray &body)
{
    FakeToolBehaviour behaviour;
    behaviour.customBody = body;
    return behaviour;
}

FakeTool::FakeTool(const FakeToolBehaviour &behaviour, const QString &name)
    : m_name(name)
{
    if (!m_folder.isValid())
        throw std::runtime_error("cannot create a folder for a fake tool");
    writeFile(file("stdout"), behaviour.standardOutput);
    writeFile(file("stderr"), behaviour.standardError);

    QByteArray script = "#!/bin/sh\n";
    // Asked to serve commands, a stand-in declines, as a tool whose server
    // cannot start: every command then reaches the script itself.
    script += "case \" $* \" in *' serve --cmdserver pipe '*) exit 97 ;; esac\n";
    script += "OUTPUT_FILE=" + quoted(file("stdout")) + "\n";
    script += "ERROR_FILE=" + quoted(file("stderr")) + "\n";
    script += "echo $$ > " + quoted(file("pid")) + "\n";
    script += "for argument in \"$@\"; do printf '%s\\0' \"$argument\"; done > " + quoted(file("arguments")) + "\n";
    script += "pwd > " + quoted(file("directory")) + "\n";
    script += "env -0 > " + quoted(file("environment")) + "\n";
    script += "nice > " + quoted(file("niceness")) + "\n";
    if (behaviour.customBody.isEmpty()) {
        script += "cat " + quoted(file("stdout")) + "\n";
        script += "cat " + quoted(file("stderr")) + " >&2\n";
    } else {
        script += behaviour.customBody + "\n";
    }
    if (behaviour.sleepSeconds > 0)
        script += "exec sleep " + QByteArray::number(behaviour.sleepSeconds) + "\n";
    script += "exit " + QByteArray::number(behaviour.exitStatus) + "\n";
    writeFile(path(), script, true);
}

QString FakeTool::file(const char *name) const
{
    return QDir(m_folder.path()).filePath(QString::fromLatin1(name));
}

QString FakeTool::path() const
{
    return m_folder.filePath(m_name);
}

QStringList FakeTool::receivedArguments() const
{
    QStringList arguments;
    const QByteArray recorded = contentsOf(file("arguments"));
    for (const QByteArray &argument : recorded.split('\0'))
        arguments.append(QString::fromUtf8(argument));
    arguments.removeLast(); // after the final terminator
    return arguments;
}

QString FakeTool::receivedWorkingDirectory() const
{
    return QString::fromUtf8(contentsOf(file("directory"))).trimmed();
}

QByteArray FakeTool::receivedEnvironmentVariable(const QByteArray &name) const
{
    for (const QByteArray &entry : contentsOf(file("environment")).split('\0')) {
        if (entry.startsWith(name + '='))
            return entry.mid(name.size() + 1);
    }
    return QByteArray();
}

int FakeTool::receivedNiceness() const
{
    return contentsOf(file("niceness")).trimmed().toInt();
}

qint64 FakeTool::processId() const
{
    return contentsOf(file("pid")).trimmed().toLongLong();
}

bool processIsRunning(qint64 processId)
{
    const QByteArray status = contentsOf(u"/proc/%1/stat"_s.arg(processId));
    if (status.isEmpty())
        return false;
    // The state letter follows the command name in parentheses; Z is a zombie.
    const qsizetype close = status.lastIndexOf(')');
    return close < 0 || status.mid(close + 2, 1) != "Z";
}

} // namespace tillery::test
