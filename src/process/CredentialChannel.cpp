#include "process/CredentialChannel.h"

#include "process/ChildProcess.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace tillery {

QString credentialHelperFolder()
{
    const QString configured = qEnvironmentVariable("TILLERY_HELPER_DIR");
    if (!configured.isEmpty())
        return configured;
    // Beside the executable in a build folder; an installed Tillery keeps
    // its helpers in lib/tillery beside bin.
    const QString own = QCoreApplication::applicationDirPath();
    if (QFileInfo::exists(own + u"/tillery-askpass"_s))
        return own;
    return QDir(own + u"/../lib/tillery"_s).absolutePath();
}

QString credentialHelperProgram()
{
    return credentialHelperFolder() + u"/tillery-askpass"_s;
}

QString credentialMercurialExtension()
{
    return credentialHelperFolder() + u"/tillery_askpass.py"_s;
}

void addCredentialVariables(QProcessEnvironment &environment, const CredentialChannel &channel)
{
    environment.insert(u"GIT_ASKPASS"_s, channel.helperProgram);
    environment.insert(u"SSH_ASKPASS"_s, channel.helperProgram);
    environment.insert(u"SSH_ASKPASS_REQUIRE"_s, u"force"_s);
    environment.insert(u"TILLERY_ASKPASS_HELPER"_s, channel.helperProgram);
    environment.insert(u"TILLERY_ASKPASS_SOCKET"_s, channel.socketPath);
    environment.insert(u"TILLERY_ASKPASS_TOKEN"_s, channel.token);
}

QStringList mercurialCredentialArguments(const CredentialChannel &channel)
{
    return {u"--config=extensions.tilleryaskpass="_s + channel.mercurialExtension};
}

void runWithoutTerminal(QProcess &process)
{
#ifdef Q_OS_UNIX
    process.setChildProcessModifier([] {
        const int savedErrno = errno;
        (void)setsid();
        (void)nice(backgroundNiceness);
        errno = savedErrno;
    });
#else
    runAtBackgroundPriority(process);
#endif
}

} // namespace tillery
