#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace tillery {

// The command line of a desktop file's main entry ("Exec="), split into
// arguments by the freedesktop quoting rules, with its field codes ("%F")
// still in place. Nothing when the line is missing or cannot be parsed, or
// when it would start a shell or another interpreter (behind "env" too):
// a file handed to "sh -c ..." would be read as a script.
std::optional<QStringList> desktopEntryCommand(const QString &desktopFileText);

// The arguments after the program, for opening one file: "%f %F %u %U"
// become the file, "%%" a percent sign, the other codes are dropped. When
// no code asks for the file it is added at the end.
QStringList desktopEntryArguments(const QStringList &command, const QString &filePath);

} // namespace tillery
