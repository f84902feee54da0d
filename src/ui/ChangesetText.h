#pragma once

#include "records/Bookmark.h"
#include "records/Changeset.h"
#include "records/KindTraits.h"

#include <QList>
#include <QSet>
#include <QString>

namespace tillery {

// What a history row and the changeset header show, worked out from the
// record alone.
namespace changesetText {

// The summary, or "Untitled changeset" / "Untitled commit".
QString title(const Changeset &changeset, const KindTraits &traits);
// The author up to the first "<", trimmed: "Ann Harbour <ann@example.com>" gives "Ann Harbour".
QString authorName(const QString &author);
// The first 12 characters of the node (all of a shorter one).
QString shortHash(const QString &node);
// The description's lines after the summary, trimmed; empty when there are none.
QString body(const Changeset &changeset);
// "November 21, 2026 at 15:04": the long date and the time, in local time.
QString longDate(const QDateTime &date);

struct Badge {
    enum class Kind { bookmark, branch, tag };
    Kind kind = Kind::bookmark;
    QString name;
    bool needsPush = false;

    friend bool operator==(const Badge &, const Badge &) = default;
};

// Bookmarks (Git: branches) first, then a named branch other than the
// default one, where the kind has named branches, then tags ("tip" left out, as it only marks the newest).
QList<Badge> badges(const Changeset &changeset, const KindTraits &traits, const QSet<QString> &namesNeedingPush);

// The bookmarks or branches whose local state has not been pushed.
QSet<QString> namesNeedingPush(const QList<Bookmark> &bookmarks);

} // namespace changesetText
} // namespace tillery
