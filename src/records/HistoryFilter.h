#pragma once

#include <QString>
#include <QStringList>

namespace tillery {

// What narrows the history down; every part must match. Each is a literal
// the person typed, never a pattern or an expression of the tool's.
struct HistoryFilter {
    // Each word appears in the message (case ignored).
    QStringList words;
    // Each is part of the author (case ignored).
    QStringList authors;
    // The start of a changeset's id, in hexadecimal digits.
    QString hashPrefix;
    // A file or folder, relative to the repository's root.
    QString path;
    // Only with a path: follow the file back through its renames.
    bool followsRenames = false;

    bool isEmpty() const { return words.isEmpty() && authors.isEmpty() && hashPrefix.isEmpty() && path.isEmpty(); }
    friend bool operator==(const HistoryFilter &, const HistoryFilter &) = default;
};

} // namespace tillery
