#include "RecordPrinting.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

char *print(const QString &text)
{
    return qstrdup(text.toUtf8().constData());
}

QString dateText(const std::optional<QDateTime> &date)
{
    return date ? date->toString(Qt::ISODate) : u"no date"_s;
}

} // namespace

char *toString(const WorkingFile &file)
{
    return print(fileStateLetter(file.state) + u' ' + file.path);
}

char *toString(const Repository &repository)
{
    return print(rawValue(repository.kind) + u' ' + repository.path);
}

char *toString(const Bookmark &bookmark)
{
    return print(u"%1 r%2 %3%4 %5%6"_s.arg(bookmark.name)
                     .arg(bookmark.revision)
                     .arg(bookmark.node, bookmark.active ? u" active"_s : QString(), dateText(bookmark.date),
                          bookmark.needsPush ? u" needs push"_s : QString()));
}

char *toString(const Changeset &changeset)
{
    return print(u"r%1 %2 \"%3\" by %4 on %5 [%6] bookmarks(%7) tags(%8) files(%9)"_s.arg(changeset.revision)
                     .arg(changeset.node, changeset.summary, changeset.author, dateText(changeset.date),
                          changeset.branch, changeset.bookmarks.join(u','), changeset.tags.join(u','),
                          changeset.files.join(u',')));
}

char *toString(const CommandOutput &output)
{
    return print(u"status %1, output %2 bytes \"%3\", error %4 bytes \"%5\""_s.arg(output.status)
                     .arg(output.standardOutput.size())
                     .arg(QString::fromUtf8(output.standardOutput.left(200)))
                     .arg(output.standardError.size())
                     .arg(QString::fromUtf8(output.standardError.left(200))));
}

char *toString(const FileAnnotation &annotation)
{
    static const char *const contents[] = {"text", "binary", "not UTF-8"};
    QString text = QString::fromLatin1(contents[static_cast<int>(annotation.content)]);
    for (const AnnotatedLine &line : annotation.lines)
        text += u"\n  %1 | %2 | %3 | %4"_s.arg(line.node, line.author).arg(line.date).arg(line.text);
    return print(text);
}

} // namespace tillery
