#pragma once

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

class QProcess;

namespace tillery {

// How a command that talks to a remote may ask the person for credentials
// while it runs: git and ssh run the helper program (tillery-askpass) for
// every question, hg gets an extension that asks the same helper for HTTP
// user names and passwords; the helper reaches the running Tillery over a
// local socket and names the run by its token.
struct CredentialChannel {
    QString helperProgram;
    QString mercurialExtension;
    QString socketPath;
    QString token;
};

// Where the helper and the extension are: next to the application's own
// executable, else in ../lib/tillery from it (installed), or in the folder
// TILLERY_HELPER_DIR names.
QString credentialHelperFolder();
QString credentialHelperProgram();
QString credentialMercurialExtension();

// The variables that make git and ssh (and the extension) ask through the
// channel. A terminal is never asked: ssh uses the helper even where it
// could read one.
void addCredentialVariables(QProcessEnvironment &environment, const CredentialChannel &channel);
// What enables the extension, for hg's arguments before the command's.
QStringList mercurialCredentialArguments(const CredentialChannel &channel);

// Starts the child at background priority in a session of its own, without
// a controlling terminal, so that nothing it runs (ssh) can read from or
// write to the terminal Tillery was started from.
void runWithoutTerminal(QProcess &process);

} // namespace tillery
