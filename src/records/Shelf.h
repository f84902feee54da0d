#pragma once

#include <QDateTime>
#include <QString>

namespace tillery {

// Changes set aside: a Mercurial shelf or a Git stash entry.
struct Shelf {
    // What the tool knows it by: the shelf's name, or the stash commit's
    // full id (an entry's stash@{n} changes as others go; its id does not).
    QString id;
    // What the person sees: the shelf's name, or the stash's message.
    QString title;
    QDateTime date;

    friend bool operator==(const Shelf &, const Shelf &) = default;
};

} // namespace tillery
