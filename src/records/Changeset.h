#pragma once

#include <QDateTime>
#include <QHashFunctions>
#include <QString>
#include <QStringList>

namespace tillery {

// One history entry: a Mercurial changeset or a Git commit.
struct Changeset {
    qint64 revision = 0;
    QString node;
    QString summary;
    QString description;
    QString author;
    QDateTime date;
    QString branch;
    QStringList bookmarks;
    QStringList tags;
    QStringList files;
    // The parents' ids, the first parent first; none for a root.
    QStringList parents;

    const QString &id() const { return node; }
    friend bool operator==(const Changeset &, const Changeset &) = default;
};

size_t qHash(const Changeset &changeset, size_t seed = 0) noexcept;

} // namespace tillery

Q_DECLARE_TYPEINFO(tillery::Changeset, Q_RELOCATABLE_TYPE);
