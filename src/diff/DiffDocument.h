#pragma once

#include <QList>
#include <QString>
#include <QStringView>

#include <optional>
#include <utility>

namespace tillery {

enum class DiffLineKind { hunk, context, addition, deletion };

// Where a line of the new side stands in a file's conflict: a marker line
// ("<<<<<<<", "|||||||", "=======", ">>>>>>>"), or within the working copy's
// own side, the common ancestor's, or the side merged in.
enum class ConflictPart : quint8 { none, marker, mine, base, theirs };

// One line of the unified layout: a stretch of the document's text, which
// holds it once. `id` is the line's index in the raw text, counting the
// lines that were dropped, so ids rise with gaps. A side without a number
// has noLineNumber.
inline constexpr qint64 noLineNumber = -1;

struct PresentedDiffLine {
    qsizetype start = 0;
    qsizetype length = 0;
    qint64 id = 0;
    qint64 oldLine = noLineNumber;
    qint64 newLine = noLineNumber;
    DiffLineKind kind = DiffLineKind::context;
    ConflictPart conflict = ConflictPart::none;

    friend bool operator==(const PresentedDiffLine &, const PresentedDiffLine &) = default;
};

// One row of the side-by-side layout: the unified lines on each side, by
// index, or -1 for an empty side. (A diff with 2^31 lines would not fit in
// memory in the first place.)
struct SplitDiffLine {
    qint32 left = -1;
    qint32 right = -1;
    bool isHeader = false;

    friend bool operator==(const SplitDiffLine &, const SplitDiffLine &) = default;
};

struct PresentedDiffDocument {
    QString text;
    QList<PresentedDiffLine> unifiedLines;
    QList<SplitDiffLine> splitLines;
    // The unified line that takes the most cells to show (see
    // displayColumns()), and how many; -1 without lines.
    qsizetype widestLine = -1;
    qint64 widestLineColumns = 0;

    QStringView textOf(const PresentedDiffLine &line) const
    {
        return QStringView(text).sliced(line.start, line.length);
    }
    // The row's line on one side, or none.
    const PresentedDiffLine *leftOf(const SplitDiffLine &row) const { return lineAt(row.left); }
    const PresentedDiffLine *rightOf(const SplitDiffLine &row) const { return lineAt(row.right); }

    friend bool operator==(const PresentedDiffDocument &, const PresentedDiffDocument &) = default;

private:
    const PresentedDiffLine *lineAt(qint32 index) const { return index < 0 ? nullptr : &unifiedLines[index]; }
};

// Tabs stop at every eighth cell.
inline constexpr int tabColumns = 8;

// How many cells of a monospace font the text takes: a tab reaches the next
// tab stop, an East Asian wide character or one beyond the first plane
// (emoji) takes two.
qint64 displayColumns(QStringView text);

// Old and new start of a header such as "@@ -12,5 +14,7 @@ name".
std::optional<std::pair<qint64, qint64>> parseHunkHeader(QStringView line);

// Numbers and classifies the lines of a unified diff; file headers, "\ No
// newline" notes and anything unrecognised are dropped.
QList<PresentedDiffLine> classifyDiffLines(QStringView text);

// Pairs each run of deletions with the run of additions right after it.
QList<SplitDiffLine> pairSplitLines(const QList<PresentedDiffLine> &lines);

// The document's text is the diff's, except for a binary file's diff
// without rows: then it is binaryFileNotice().
PresentedDiffDocument buildDiffDocument(const QString &text);
QString binaryFileNotice();

// The document of no diff at all, built once.
const PresentedDiffDocument &emptyDiffDocument();

} // namespace tillery
