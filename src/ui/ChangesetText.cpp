#include "ui/ChangesetText.h"

#include <QCoreApplication>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace tillery::changesetText {

QString title(const Changeset &changeset, const KindTraits &traits)
{
    if (!changeset.summary.isEmpty())
        return changeset.summary;
    return QCoreApplication::translate("tillery::ChangesetText", "Untitled %1").arg(traits.changeset);
}

QString authorName(const QString &author)
{
    const qsizetype bracket = author.indexOf(u'<');
    return (bracket < 0 ? author : author.first(bracket)).trimmed();
}

QString shortHash(const QString &node)
{
    return node.first(std::min<qsizetype>(node.size(), 12));
}

QString body(const Changeset &changeset)
{
    QString text = changeset.description.trimmed();
    const QString summary = changeset.summary.trimmed();
    if (!summary.isEmpty() && text.startsWith(summary))
        text = text.sliced(summary.size());
    return text.trimmed();
}

QString longDate(const QDateTime &date)
{
    const QDateTime local = date.toLocalTime();
    const QLocale locale;
    //: A date followed by a time of day.
    return QCoreApplication::translate("tillery::ChangesetText", "%1 at %2")
        .arg(locale.toString(local.date(), QLocale::LongFormat), locale.toString(local.time(), QLocale::ShortFormat));
}

QList<Badge> badges(const Changeset &changeset, const KindTraits &traits, const QSet<QString> &namesNeedingPush)
{
    QList<Badge> shown;
    for (const QString &bookmark : changeset.bookmarks)
        shown.append({Badge::Kind::bookmark, bookmark, namesNeedingPush.contains(bookmark)});
    // A Git commit's "branch" repeats its first branch; only Mercurial has named branches.
    if (!traits.defaultNamedBranch.isEmpty() && !changeset.branch.isEmpty()
        && changeset.branch != traits.defaultNamedBranch)
        shown.append({Badge::Kind::branch, changeset.branch, namesNeedingPush.contains(changeset.branch)});
    for (const QString &tag : changeset.tags) {
        if (tag != u"tip")
            shown.append({Badge::Kind::tag, tag, false});
    }
    return shown;
}

QSet<QString> namesNeedingPush(const QList<Bookmark> &bookmarks)
{
    QSet<QString> names;
    for (const Bookmark &bookmark : bookmarks) {
        if (bookmark.needsPush)
            names.insert(bookmark.name);
    }
    return names;
}

} // namespace tillery::changesetText
