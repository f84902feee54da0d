#include "git/GitShelfParsers.h"

#include "records/TextDecoding.h"

#include <QByteArray>
#include <QDateTime>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tillery::git {

QList<Shelf> parseStashList(QByteArrayView output)
{
    QList<Shelf> stashes;
    for (const QByteArray &line : output.toByteArray().split('\n')) {
        const QList<QByteArray> fields = line.split('\0');
        if (fields.size() != 3)
            continue;
        const QString id = decodeUtf8OrEmpty(fields[0]);
        bool isNumber = false;
        const qint64 seconds = fields[1].toLongLong(&isNumber);
        if (!isFullCommitId(id) || !isNumber)
            continue;
        // A subject in another encoding still names an entry that is there.
        const QString subject = QString::fromUtf8(fields[2]);
        stashes.append(Shelf{id, stashTitle(subject), QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC)});
    }
    return stashes;
}

QString stashTitle(const QString &subject)
{
    // Branch names cannot hold ":", so the first ": " ends the branch.
    const qsizetype end = subject.indexOf(u": "_s);
    if (!subject.startsWith(u"On "_s) || end < 0)
        return subject;
    return subject.sliced(end + 2);
}

bool isFullCommitId(const QString &text)
{
    return (text.size() == 40 || text.size() == 64) && std::all_of(text.cbegin(), text.cend(), [](QChar character) {
               return (character >= u'0' && character <= u'9') || (character >= u'a' && character <= u'f');
           });
}

} // namespace tillery::git
