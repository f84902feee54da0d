#pragma once

#include <QProcessEnvironment>
#include <QString>

#include <optional>

namespace tillery {

// The tools are looked up afresh on every run: the "HG" (or "GIT") variable
// when it is set, then /opt/homebrew/bin, /usr/local/bin and /usr/bin. The
// search path is deliberately not consulted, so that a GUI session with a
// minimal PATH finds the same tool as a terminal does.
std::optional<QString> findMercurialExecutable();
std::optional<QString> findGitExecutable();

// The argument every child gets first: hg never prompts, git never pages.
QString mercurialLeadingArgument();
QString gitLeadingArgument();

// What every Mercurial child runs with: the application's environment, with
// UTF-8 as Mercurial's encoding unless HGENCODING already names one (output is
// read as UTF-8, and under the C locale Mercurial would otherwise replace
// every non-ASCII letter of a message with "?").
QProcessEnvironment mercurialEnvironment();

// What every Git child runs with: the application's environment without
// prompts or editors and with untranslated messages.
QProcessEnvironment gitEnvironment();

} // namespace tillery
