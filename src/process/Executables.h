#pragma once

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <optional>

namespace tillery {

// The tools are looked up afresh on every run: the "HG" (or "GIT") variable
// when it is set, then /opt/homebrew/bin, /usr/local/bin and /usr/bin (a GUI
// session's PATH may lack them), and last the search path, where a tool
// installed for one person only (~/.local/bin) is found.
std::optional<QString> findMercurialExecutable();
std::optional<QString> findGitExecutable();

// The arguments every child gets first, before the caller's: hg never
// prompts and gives up after a few seconds when another process holds the
// repository's lock (its own default is ten minutes, with no way to stop
// it); git never pages.
QStringList mercurialLeadingArguments();
QStringList gitLeadingArguments();

// How long hg waits for a lock that another process holds.
inline constexpr int mercurialLockWaitSeconds = 5;

// What every Mercurial child runs with: the application's environment, with
// UTF-8 as Mercurial's encoding unless HGENCODING already names one (output is
// read as UTF-8, and under the C locale Mercurial would otherwise replace
// every non-ASCII letter of a message with "?"), and in plain mode with
// strict option parsing: no alias, default or output setting of the person
// or the repository changes a command Tillery runs, and a value never turns
// into an option ("--config=..." as a bookmark or a commit message stays a
// value). HGPLAINEXCEPT is dropped, so nothing re-enables them.
QProcessEnvironment mercurialEnvironment();

// What every Git child runs with: the application's environment without
// prompts or editors, with untranslated messages, and without the optional
// lock a status would take to refresh the index behind the person's back.
QProcessEnvironment gitEnvironment();

} // namespace tillery
