#pragma once

#include "records/WorkingFile.h"

#include <QByteArrayView>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace tillery::mercurial {

// "hg shelve --list --quiet": the shelves' names, one per line, newest first.
QStringList parseShelfNames(QByteArrayView output);

// One file's part of a shelf's patch.
struct ShelfFilePatch {
    WorkingFile file;
    // The name a renamed file had, which the shelf removes.
    std::optional<QString> renamedFrom;
    // The part as "hg diff --git" shows it; empty when it is not UTF-8.
    QString text;

    friend bool operator==(const ShelfFilePatch &, const ShelfFilePatch &) = default;
};

// "hg shelve --patch NAME": the shelf's own line, then its patch in git's
// format; each file's part in the patch's order. A file whose names are not
// UTF-8 is left out.
QList<ShelfFilePatch> parseShelfPatch(QByteArrayView output);

// The part that shows the file: its own, or for a renamed file's old name
// the rename's; null when there is none.
const ShelfFilePatch *shelfFilePart(const QList<ShelfFilePatch> &parts, const QString &path);

// The longest shelf name, in bytes of UTF-8, whose files Mercurial can write
// (".<name>.shelve-XXXXXXXX~" is 255 bytes at most).
constexpr qsizetype longestShelfName = 237;

// Why Mercurial would not take the name for a new shelf, in a sentence;
// nothing when it would (an empty name lets Mercurial choose one).
std::optional<QString> shelfNameProblem(const QString &name);

} // namespace tillery::mercurial
