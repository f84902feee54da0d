#pragma once

#include <QList>
#include <QSet>
#include <QString>
#include <QStringView>

#include <optional>

namespace tillery {

// One file's unified diff, read for applying some of its changes. Lines
// end at every line feed (a carriage return before it stays in the text),
// so a file with CR LF line ends is split as the file is.
enum class PatchLineKind { context, addition, deletion };

struct PatchLine {
    PatchLineKind kind = PatchLineKind::context;
    // Without the marker and the line feed.
    QString text;
    // False for a file's last line when it has no line feed.
    bool endsWithFeed = true;
    // Where the line (its marker) starts in the diff text: the line's id.
    qsizetype offset = 0;
};

struct PatchHunk {
    qint64 oldStart = 0;
    qint64 oldCount = 0;
    qint64 newStart = 0;
    qint64 newCount = 0;
    // Where the "@@" header starts in the diff text.
    qsizetype offset = 0;
    QList<PatchLine> lines;
};

struct FilePatch {
    QList<PatchHunk> hunks;

    // The ids of every added and removed line.
    QSet<qsizetype> changedLineIds() const;
};

// The hunks of a single file's diff; nothing for a binary diff, one without
// hunks, or one whose hunks do not add up to their headers.
std::optional<FilePatch> parseFilePatch(QStringView diffText);

// Whether a diff's header says the file is new ("--- /dev/null" before the
// first hunk), whatever the tool's status said.
bool declaresNewFile(QStringView diffText);

// The file that a diff with a git-style header shows this one copied or
// renamed from ("copy from", "rename from" before the first hunk), as the
// tool wrote its name; nothing for any other diff.
std::optional<QString> copiedFrom(QStringView diffText);

// Which side of the patch a text is.
enum class PatchSide {
    // The old text: the chosen changes are made (what a partial commit records).
    old,
    // The new text: the chosen changes are undone (what a partial discard leaves).
    changed,
};

// The hunks of a patch that makes only the chosen changes to the old text
// (the same old lines, the unchosen removals kept as context, the unchosen
// additions left out), as unified diff text; empty when nothing is chosen.
QString chosenHunksText(const FilePatch &patch, const QSet<qsizetype> &chosen);

// The text with only the chosen changes (by line id) made, or undone; the
// rest of the text is left exactly as it was. Nothing when the text does not
// match the patch: it changed since the diff was made.
std::optional<QString> applyChosenChanges(QStringView text, PatchSide side, const FilePatch &patch,
                                          const QSet<qsizetype> &chosen);

} // namespace tillery
