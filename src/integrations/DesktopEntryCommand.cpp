#include "integrations/DesktopEntryCommand.h"

#include <QFileInfo>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

// The value of "Exec" in the [Desktop Entry] group, as written.
std::optional<QString> execValue(const QString &desktopFileText)
{
    static const QRegularExpression execKey(uR"(^Exec\s*=\s*)"_s);
    bool inMainEntry = false;
    for (const QString &rawLine : desktopFileText.split(u'\n')) {
        const QString line = rawLine.trimmed();
        if (line.startsWith(u'[')) {
            inMainEntry = line == u"[Desktop Entry]";
            continue;
        }
        if (!inMainEntry)
            continue;
        if (const QRegularExpressionMatch match = execKey.match(line); match.hasMatch())
            return line.sliced(match.capturedLength());
    }
    return std::nullopt;
}

// The escapes every string value of a desktop file may hold; the others are
// left for the Exec quoting rules.
QString unescapedValue(const QString &value)
{
    QString text;
    for (qsizetype index = 0; index < value.size(); ++index) {
        const QChar character = value[index];
        if (character != u'\\' || index + 1 == value.size()) {
            text += character;
            continue;
        }
        const QChar next = value[++index];
        if (next == u's')
            text += u' ';
        else if (next == u'n')
            text += u'\n';
        else if (next == u't')
            text += u'\t';
        else if (next == u'r')
            text += u'\r';
        else if (next == u'\\')
            text += u'\\';
        else
            text.append(character).append(next);
    }
    return text;
}

// Arguments split at unquoted white space. Inside double quotes a backslash
// escapes '"', '`', '$' and '\'; outside them the characters a shell would
// act on are not allowed at all.
std::optional<QStringList> splitArguments(const QString &command)
{
    static const QString reservedOutsideQuotes = u"'\\><~|&;$*?#()`"_s;
    static const QString escapableInsideQuotes = u"\"`$\\"_s;
    QStringList arguments;
    QString current;
    bool inArgument = false;
    for (qsizetype index = 0; index < command.size(); ++index) {
        const QChar character = command[index];
        if (character == u'"') {
            inArgument = true;
            for (++index;; ++index) {
                if (index >= command.size())
                    return std::nullopt;
                const QChar quoted = command[index];
                if (quoted == u'"')
                    break;
                if (quoted == u'\\') {
                    if (index + 1 >= command.size() || !escapableInsideQuotes.contains(command[index + 1]))
                        return std::nullopt;
                    current += command[++index];
                } else {
                    current += quoted;
                }
            }
        } else if (character == u' ' || character == u'\t') {
            if (inArgument)
                arguments.append(std::exchange(current, QString()));
            inArgument = false;
        } else if (reservedOutsideQuotes.contains(character) || character == u'\n' || character == u'\r') {
            return std::nullopt;
        } else {
            current += character;
            inArgument = true;
        }
    }
    if (inArgument)
        arguments.append(current);
    return arguments;
}

bool isInterpreter(const QString &program)
{
    static const QRegularExpression interpreters(
        uR"(^(sh|bash|dash|zsh|ksh|mksh|yash|fish|csh|tcsh|busybox|pwsh|osascript|xonsh|(python|perl|ruby|php|lua|tclsh|wish|node|nodejs|deno|bun)[0-9.]*)$)"_s);
    return interpreters.match(QFileInfo(program).fileName()).hasMatch();
}

// "env -S ..." splits a string into a command line of its own, and a shell
// may hide behind any launcher ("env", "nice", "flatpak-spawn"): a command
// that names an interpreter anywhere, or gives env an option, is refused.
bool startsAnInterpreter(const QStringList &arguments)
{
    if (QFileInfo(arguments.first()).fileName() == u"env" && arguments.value(1).startsWith(u'-'))
        return true;
    return std::any_of(arguments.cbegin(), arguments.cend(), isInterpreter);
}

bool hasOnlyKnownFieldCodes(const QString &argument)
{
    static const QString known = u"%fFuUickdDnNvm"_s;
    for (qsizetype index = 0; index < argument.size(); ++index) {
        if (argument[index] != u'%')
            continue;
        if (index + 1 >= argument.size() || !known.contains(argument[index + 1]))
            return false;
        ++index;
    }
    return true;
}

} // namespace

std::optional<QStringList> desktopEntryCommand(const QString &desktopFileText)
{
    const std::optional<QString> value = execValue(desktopFileText);
    if (!value)
        return std::nullopt;
    const std::optional<QStringList> arguments = splitArguments(unescapedValue(*value));
    if (!arguments || arguments->isEmpty())
        return std::nullopt;
    if (startsAnInterpreter(*arguments))
        return std::nullopt;
    if (!std::all_of(arguments->cbegin(), arguments->cend(), hasOnlyKnownFieldCodes))
        return std::nullopt;
    return arguments;
}

QStringList desktopEntryArguments(const QStringList &command, const QString &filePath)
{
    static const QString fileCodes = u"fFuU"_s;
    QStringList arguments;
    bool fileGiven = false;
    for (qsizetype position = 1; position < command.size(); ++position) {
        const QString &argument = command[position];
        QString expanded;
        bool onlyDroppedCodes = !argument.isEmpty();
        for (qsizetype index = 0; index < argument.size(); ++index) {
            if (argument[index] != u'%' || index + 1 >= argument.size()) {
                expanded += argument[index];
                onlyDroppedCodes = false;
                continue;
            }
            const QChar code = argument[++index];
            if (code == u'%') {
                expanded += u'%';
                onlyDroppedCodes = false;
            } else if (fileCodes.contains(code)) {
                expanded += filePath;
                fileGiven = true;
                onlyDroppedCodes = false;
            }
        }
        if (!onlyDroppedCodes)
            arguments.append(expanded);
    }
    if (!fileGiven)
        arguments.append(filePath);
    return arguments;
}

} // namespace tillery
