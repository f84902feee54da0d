#include "mercurial/IniText.h"

#include "records/TextSplitting.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

// Every character that a configuration reader may take for the end of a line.
bool holdsLineBreak(const QString &text)
{
    for (const QChar character : text) {
        const char16_t code = character.unicode();
        if (code == u'\n' || code == u'\r' || code == u'\v' || code == u'\f' || (code >= 0x1c && code <= 0x1e)
            || code == 0x85 || code == 0x2028 || code == 0x2029)
            return true;
    }
    return false;
}

// A line as a reader sees it: without the carriage return of a CR LF ending.
QStringView content(const QString &line)
{
    return line.endsWith(u'\r') ? QStringView(line).chopped(1) : QStringView(line);
}

std::optional<QString> sectionNameOf(const QString &line)
{
    const QStringView trimmed = trimmedSpacesAndTabs(content(line));
    if (trimmed.size() < 2 || !trimmed.startsWith(u'[') || !trimmed.endsWith(u']'))
        return std::nullopt;
    return trimmed.sliced(1, trimmed.size() - 2).toString();
}

std::optional<QString> keyOf(const QString &line)
{
    const QStringView trimmed = trimmedSpacesAndTabs(content(line));
    if (trimmed.startsWith(u'#') || trimmed.startsWith(u';'))
        return std::nullopt;
    const qsizetype equals = line.indexOf(u'=');
    if (equals < 0)
        return std::nullopt;
    return trimmedSpacesAndTabs(QStringView(line).first(equals)).toString();
}

bool continuesAValue(const QString &line)
{
    return !line.isEmpty() && (line.front() == u' ' || line.front() == u'\t')
           && !trimmedSpacesAndTabs(content(line)).isEmpty();
}

} // namespace

std::optional<QString> setIniValue(const QString &text, const QString &section, const QString &key,
                                   const QString &value)
{
    for (const QString *part : {&section, &key, &value}) {
        if (holdsLineBreak(*part))
            return std::nullopt;
    }
    if (section.contains(u']') || key.contains(u'=') || key.trimmed().isEmpty())
        return std::nullopt;

    QStringList lines = text.split(u'\n');
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    const QString entry = key + u" = "_s + value;

    qsizetype header = -1;
    for (qsizetype index = 0; index < lines.size(); ++index) {
        const std::optional<QString> name = sectionNameOf(lines[index]);
        if (name && name->compare(section, Qt::CaseInsensitive) == 0) {
            header = index;
            break;
        }
    }

    if (header < 0) {
        if (!lines.isEmpty() && !lines.last().isEmpty())
            lines.append(QString());
        lines.append(u'[' + section + u']');
        lines.append(entry);
        return lines.join(u'\n') + u'\n';
    }

    qsizetype end = header + 1;
    while (end < lines.size() && !sectionNameOf(lines[end]))
        ++end;
    for (qsizetype index = header + 1; index < end; ++index) {
        const std::optional<QString> lineKey = keyOf(lines[index]);
        if (!lineKey || lineKey->compare(key, Qt::CaseInsensitive) != 0)
            continue;
        lines[index] = entry;
        // Indented lines after it would carry on the old value.
        while (index + 1 < end && continuesAValue(lines[index + 1])) {
            lines.removeAt(index + 1);
            --end;
        }
        return lines.join(u'\n') + u'\n';
    }
    lines.insert(end, entry);
    return lines.join(u'\n') + u'\n';
}

} // namespace tillery
