#include "git/GitPatchText.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace tillery::git {

namespace {

// As git writes a name in a patch: in double quotes with C escapes when it
// holds a quote, a backslash, a control character or space at either end.
QString patchName(const QString &name)
{
    const bool plain = !name.contains(u'"') && !name.contains(u'\\') && name.trimmed() == name
                       && std::none_of(name.cbegin(), name.cend(), [](QChar c) { return c.unicode() < 0x20; });
    if (plain)
        return name;
    QString quoted = u"\""_s;
    for (const QChar c : name) {
        switch (c.unicode()) {
        case u'"':
            quoted += u"\\\""_s;
            break;
        case u'\\':
            quoted += u"\\\\"_s;
            break;
        case u'\t':
            quoted += u"\\t"_s;
            break;
        case u'\n':
            quoted += u"\\n"_s;
            break;
        default:
            quoted += c.unicode() < 0x20 ? u"\\%1"_s.arg(c.unicode(), 3, 8, QLatin1Char('0')) : QString(c);
        }
    }
    return quoted + u'"';
}

// The text's lines for one side of a hunk, each after the marker, and
// whether the last one ends without a line feed.
void appendLines(QString &patch, const QString &text, QChar marker)
{
    if (text.isEmpty())
        return;
    const QStringList lines = text.split(u'\n');
    const bool endsWithFeed = text.endsWith(u'\n');
    const qsizetype count = endsWithFeed ? lines.size() - 1 : lines.size();
    for (qsizetype index = 0; index < count; ++index)
        patch += marker + lines[index] + u'\n';
    if (!endsWithFeed)
        patch += u"\\ No newline at end of file\n"_s;
}

qsizetype lineCount(const QString &text)
{
    return text.count(u'\n') + (text.isEmpty() || text.endsWith(u'\n') ? 0 : 1);
}

// "-1,3" or, for no lines, "-0,0".
QString range(QChar sign, qsizetype count)
{
    return u"%1%2,%3"_s.arg(sign).arg(count == 0 ? 0 : 1).arg(count);
}

} // namespace

QString filePatch(const QString &path, const QString &hunks, bool isNew, bool executable)
{
    const QString oldName = patchName(u"a/"_s + path);
    const QString newName = patchName(u"b/"_s + path);
    QString patch = u"diff --git "_s + oldName + u' ' + newName + u'\n';
    if (isNew)
        patch += u"new file mode "_s + (executable ? u"100755"_s : u"100644"_s) + u'\n';
    return patch + u"--- "_s + (isNew ? u"/dev/null"_s : oldName) + u"\n+++ "_s + newName + u'\n' + hunks;
}

QString wholeFilePatch(const QString &path, const QString &oldText, const QString &newText, bool isNew,
                       bool executable)
{
    QString hunk;
    if (oldText != newText) {
        hunk = u"@@ "_s + range(u'-', lineCount(oldText)) + u' ' + range(u'+', lineCount(newText)) + u" @@\n"_s;
        appendLines(hunk, oldText, u'-');
        appendLines(hunk, newText, u'+');
    }
    return filePatch(path, hunk, isNew, executable);
}

} // namespace tillery::git
