#include "DiffText.h"

namespace tillery::test {

QStringList diffHeaders(const QString &diff)
{
    QStringList headers;
    for (const QString &line : diff.split(u'\n')) {
        if (line.startsWith(u"diff --git "))
            headers.append(line);
    }
    return headers;
}

QStringList changedLines(const QString &diff)
{
    QStringList lines;
    for (const QString &line : diff.split(u'\n')) {
        const bool changed = line.startsWith(u'+') || line.startsWith(u'-');
        if (changed && !line.startsWith(u"+++") && !line.startsWith(u"---"))
            lines.append(line);
    }
    return lines;
}

} // namespace tillery::test
