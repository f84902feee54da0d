#pragma once

#include "records/HistoryFilter.h"

#include <QString>

namespace tillery {

// Reads what a person typed into the history's search field: plain words
// match the message; "author:name" the author; a word of 7 to 40
// hexadecimal digits with a digit among them a changeset id's start;
// "file:path", or a word with a "/" or a file name's extension, a path.
// Double quotes keep spaces inside one word ("file:my notes.txt").
HistoryFilter parseHistorySearch(const QString &text);

} // namespace tillery
