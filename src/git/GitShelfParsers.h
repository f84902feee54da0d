#pragma once

#include "records/Shelf.h"

#include <QByteArrayView>
#include <QList>
#include <QString>

namespace tillery::git {

// The stash log with "--format=%H%x00%ct%x00%s", newest first: each entry's
// commit id, commit time and subject. A line cut short is left out; a
// subject that is not UTF-8 is read with replacement characters.
QList<Shelf> parseStashList(QByteArrayView output);

// What a person reads of a stash's subject: "On <branch>: <message>" is the
// message alone; "WIP on <branch>: <commit> <subject>" (no message given)
// and any other subject stay as they are.
QString stashTitle(const QString &subject);

// A full commit id: 40 or 64 lowercase hexadecimal digits.
bool isFullCommitId(const QString &text);

} // namespace tillery::git
