#include "records/CommandLogEntry.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace tillery {

QString shellQuoted(const QString &word)
{
    static const QRegularExpression plain(uR"(^[A-Za-z0-9_@%+=:,./-]+$)"_s);
    if (plain.match(word).hasMatch())
        return word;
    return u'\'' + QString(word).replace(u"'"_s, u"'\\''"_s) + u'\'';
}

QString commandLineText(const CommandLogEntry &entry)
{
    QStringList words;
    for (const auto &[name, value] : entry.environment)
        words.append(name + u'=' + shellQuoted(value));
    words.append(shellQuoted(entry.program));
    for (const QString &argument : entry.arguments)
        words.append(shellQuoted(argument));
    return words.join(u' ');
}

QString repeatableCommandText(const CommandLogEntry &entry)
{
    if (entry.directory.isEmpty())
        return commandLineText(entry);
    return u"cd "_s + shellQuoted(entry.directory) + u" && "_s + commandLineText(entry);
}

} // namespace tillery
