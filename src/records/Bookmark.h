#pragma once

#include <QDateTime>
#include <QHashFunctions>
#include <QString>

#include <optional>

namespace tillery {

// A Mercurial bookmark or a local Git branch.
struct Bookmark {
    QString name;
    qint64 revision = 0;
    QString node;
    bool active = false;
    std::optional<QDateTime> date;
    bool needsPush = false;

    friend bool operator==(const Bookmark &, const Bookmark &) = default;
};

size_t qHash(const Bookmark &bookmark, size_t seed = 0) noexcept;

} // namespace tillery
