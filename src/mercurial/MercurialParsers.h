#pragma once

#include "records/Annotation.h"
#include "records/Bookmark.h"
#include "records/Changeset.h"
#include "records/WorkingFile.h"

#include <QByteArray>
#include <QDateTime>
#include <QHash>
#include <QList>
#include <QMap>
#include <QSet>
#include <QString>

namespace tillery {

// "hg status -0": NUL-separated "X path" records, sorted in the file
// browser's order. Short, undecodable and unknown records are skipped.
QList<WorkingFile> parseMercurialStatus(QByteArrayView output);

namespace mercurial {

// "hg resolve --list": the paths of the lines that start with "U".
QSet<QString> parseUnresolvedPaths(QByteArrayView output);

// Marks the listed files unresolved; files absent from the list stay absent.
void markUnresolved(QList<WorkingFile> &files, const QSet<QString> &unresolvedPaths);

// "hg log -Tjson", newest first. Fails with PlatformFailure when the output is
// not JSON and with MercurialFailure when it is not an array of objects.
QList<Changeset> parseHistory(const QByteArray &output);

// "hg log -r bookmark() -T '{node}\t{date|hgdate}\n'": node to date.
QHash<QString, QDateTime> parseBookmarkDates(QByteArrayView output);

// "hg bookmarks -Tjson", in the tool's order, dated from the map.
QList<Bookmark> parseBookmarks(const QByteArray &output, const QHash<QString, QDateTime> &dates);

// "hg annotate -Tjson --user --date --changeset" of one file: the entry of
// that path (a binary file's has no lines). Output that is not UTF-8 means
// the file is not. Fails with MercurialFailure when the output holds no
// entry of that path.
FileAnnotation parseAnnotation(const QByteArray &output, const QString &path);

// "hg log -T json(…,file_copies)": for each changeset, its copied or renamed
// files, each with the name it was copied from.
QList<QHash<QString, QString>> parseFileCopies(const QByteArray &output);

// "hg branch".
QString parseCurrentBranch(QByteArrayView output);
// The working copy's (first) parent's id, the first line of the output;
// empty before the first changeset (the null id).
QString parseWorkingParent(QByteArrayView output);

// "hg paths": "name = address" lines; passwords stay masked as the tool prints them.
QMap<QString, QString> parsePaths(QByteArrayView output);

// The first non-empty line of a message.
QString summaryOf(const QString &description);

} // namespace mercurial
} // namespace tillery
