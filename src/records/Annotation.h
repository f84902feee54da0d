#pragma once

#include <QList>
#include <QString>
#include <QStringView>

namespace tillery {

// One line of a file as of a changeset, with the changeset that last changed
// it: its full id, its author ("Name <address>", or Mercurial's user text)
// and its date in seconds since 1970.
struct AnnotatedLine {
    QString node;
    QString author;
    qint64 date = 0;
    // The line without its line ending.
    QString text;

    friend bool operator==(const AnnotatedLine &, const AnnotatedLine &) = default;
};

// The lines of a file as of a changeset. A binary file, or one that is not
// UTF-8, has no lines, only the reason.
struct FileAnnotation {
    enum class Content { text, binary, notUtf8 };

    Content content = Content::text;
    QList<AnnotatedLine> lines;

    friend bool operator==(const FileAnnotation &, const FileAnnotation &) = default;
};

// A line as the tools print it, without its "\n" or "\r\n".
QStringView withoutLineEnding(QStringView line);

} // namespace tillery
