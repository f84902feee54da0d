#include "diff/DiffDocument.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

const QRegularExpression &hunkHeaderPattern()
{
    static const QRegularExpression pattern = [] {
        QRegularExpression compiled(uR"(^@@\s+-(\d+)(?:,\d+)?\s+\+(\d+)(?:,\d+)?\s+@@)"_s,
                                    QRegularExpression::UseUnicodePropertiesOption);
        if (!compiled.isValid())
            qFatal("the hunk header pattern does not compile");
        compiled.optimize();
        return compiled;
    }();
    return pattern;
}

// Lines end at each line feed, except one that follows a carriage return:
// a CR LF pair is one character in the text model these diffs came from,
// and such a text deliberately stays in fewer, longer lines. Each line comes
// with its index and where it starts in the text.
template <typename Visit>
void forEachLine(QStringView text, Visit visit)
{
    qsizetype start = 0;
    qint64 index = 0;
    while (true) {
        qsizetype feed = text.indexOf(u'\n', start);
        while (feed > 0 && text[feed - 1] == u'\r')
            feed = text.indexOf(u'\n', feed + 1);
        if (feed < 0) {
            visit(index, start, text.sliced(start));
            return;
        }
        visit(index++, start, text.sliced(start, feed - start));
        start = feed + 1;
    }
}

bool isBinaryDiff(QStringView text)
{
    static const QRegularExpression marker(uR"(^(GIT binary patch|Binary files .* differ)$)"_s,
                                           QRegularExpression::MultilineOption);
    return marker.match(text).hasMatch();
}

bool isWide(char16_t character)
{
    return (character >= 0x1100 && character <= 0x115F) || (character >= 0x2E80 && character <= 0xA4CF)
           || (character >= 0xAC00 && character <= 0xD7A3) || (character >= 0xF900 && character <= 0xFAFF)
           || (character >= 0xFE30 && character <= 0xFE4F) || (character >= 0xFF00 && character <= 0xFF60)
           || (character >= 0xFFE0 && character <= 0xFFE6);
}

} // namespace

qint64 displayColumns(QStringView text)
{
    qint64 columns = 0;
    const char16_t *unit = text.utf16();
    for (const char16_t *end = unit + text.size(); unit != end; ++unit) {
        if (*unit < 0x1100 && *unit != u'\t')
            ++columns;
        else if (*unit == u'\t')
            columns = (columns / tabColumns + 1) * tabColumns;
        else if (QChar::isHighSurrogate(*unit))
            columns += 2;
        else if (!QChar::isLowSurrogate(*unit))
            columns += isWide(*unit) ? 2 : 1;
    }
    return columns;
}

QString binaryFileNotice()
{
    return u"Binary file"_s;
}

std::optional<std::pair<qint64, qint64>> parseHunkHeader(QStringView line)
{
    // Only a line that starts with "@@" can match the anchored pattern.
    if (!line.startsWith(u"@@"))
        return std::nullopt;
    const QRegularExpressionMatch match = hunkHeaderPattern().match(line);
    if (!match.hasMatch())
        return std::nullopt;
    const QStringView oldStart = match.capturedView(1);
    const QStringView newStart = match.capturedView(2);
    if (oldStart.isEmpty() || newStart.isEmpty())
        return std::nullopt;
    bool oldParsed = false;
    bool newParsed = false;
    const qint64 oldNumber = oldStart.toLongLong(&oldParsed, 10);
    const qint64 newNumber = newStart.toLongLong(&newParsed, 10);
    if (!oldParsed || !newParsed)
        return std::nullopt;
    return std::pair(oldNumber, newNumber);
}

QList<PresentedDiffLine> classifyDiffLines(QStringView text)
{
    QList<PresentedDiffLine> lines;
    lines.reserve(text.count(u'\n') + 1);
    // Numbers count on only once a hunk header has set them.
    qint64 oldLine = noLineNumber;
    qint64 newLine = noLineNumber;
    const auto numbered = [](qint64 &number) { return number == noLineNumber ? noLineNumber : number++; };
    // The part of a conflict the new side's lines are in, as its markers go by.
    ConflictPart part = ConflictPart::none;
    const auto conflictPart = [&part](QStringView newSide) {
        const QChar first = newSide.isEmpty() ? QChar() : newSide.front();
        if (first != u'<' && first != u'|' && first != u'=' && first != u'>')
            return part;
        static constexpr std::pair<QStringView, ConflictPart> markers[] = {{u"<<<<<<< ", ConflictPart::mine},
                                                                           {u"||||||| ", ConflictPart::base},
                                                                           {u"=======", ConflictPart::theirs},
                                                                           {u">>>>>>> ", ConflictPart::none}};
        for (const auto &[marker, after] : markers) {
            const bool isMarker = marker == u"=======" ? newSide.trimmed() == marker : newSide.startsWith(marker);
            // A marker counts only where a conflict would have it next.
            if (isMarker && (after == ConflictPart::mine) == (part == ConflictPart::none)) {
                part = after;
                return ConflictPart::marker;
            }
        }
        return part;
    };

    forEachLine(text, [&](qint64 id, qsizetype start, QStringView line) {
        const auto add = [&](qint64 oldNumber, qint64 newNumber, DiffLineKind kind) {
            const ConflictPart conflict =
                kind == DiffLineKind::addition || kind == DiffLineKind::context ? conflictPart(line.sliced(1))
                                                                                : ConflictPart::none;
            lines.append(PresentedDiffLine{start, line.size(), id, oldNumber, newNumber, kind, conflict});
        };
        if (line.isEmpty())
            return;
        if (const auto header = parseHunkHeader(line)) {
            oldLine = header->first;
            newLine = header->second;
            add(noLineNumber, noLineNumber, DiffLineKind::hunk);
        } else if (line.front() == u'+' && !line.startsWith(u"+++")) {
            add(noLineNumber, numbered(newLine), DiffLineKind::addition);
        } else if (line.front() == u'-' && !line.startsWith(u"---")) {
            add(numbered(oldLine), noLineNumber, DiffLineKind::deletion);
        } else if (line.front() == u' ' && oldLine != noLineNumber && newLine != noLineNumber) {
            const qint64 oldNumber = numbered(oldLine);
            add(oldNumber, numbered(newLine), DiffLineKind::context);
        }
    });
    return lines;
}

QList<SplitDiffLine> pairSplitLines(const QList<PresentedDiffLine> &lines)
{
    QList<SplitDiffLine> rows;
    rows.reserve(lines.size());
    const auto append = [&rows](qsizetype left, qsizetype right, bool isHeader) {
        rows.append(SplitDiffLine{static_cast<qint32>(left), static_cast<qint32>(right), isHeader});
    };
    const auto runEnd = [&lines](qsizetype from, DiffLineKind kind) {
        while (from < lines.size() && lines[from].kind == kind)
            ++from;
        return from;
    };

    qsizetype cursor = 0;
    while (cursor < lines.size()) {
        switch (lines[cursor].kind) {
        case DiffLineKind::addition:
            append(-1, cursor, false);
            ++cursor;
            break;
        case DiffLineKind::hunk:
        case DiffLineKind::context:
            append(cursor, cursor, lines[cursor].kind == DiffLineKind::hunk);
            ++cursor;
            break;
        case DiffLineKind::deletion: {
            const qsizetype deletionsEnd = runEnd(cursor, DiffLineKind::deletion);
            const qsizetype additionsEnd = runEnd(deletionsEnd, DiffLineKind::addition);
            const qsizetype deletions = deletionsEnd - cursor;
            const qsizetype additions = additionsEnd - deletionsEnd;
            for (qsizetype k = 0; k < std::max(deletions, additions); ++k)
                append(k < deletions ? cursor + k : -1, k < additions ? deletionsEnd + k : -1, false);
            cursor = additionsEnd;
            break;
        }
        }
    }
    return rows;
}

PresentedDiffDocument buildDiffDocument(const QString &text)
{
    PresentedDiffDocument document;
    document.unifiedLines = classifyDiffLines(text);
    // A binary file's diff holds no rows but headers and, from Mercurial, an
    // encoded patch: neither means anything to a person.
    document.text = document.unifiedLines.isEmpty() && isBinaryDiff(text) ? binaryFileNotice() : text;
    document.splitLines = pairSplitLines(document.unifiedLines);
    for (qsizetype index = 0; index < document.unifiedLines.size(); ++index) {
        const QStringView line = document.textOf(document.unifiedLines[index]);
        // A line without tabs is no wider than two cells a character.
        if (line.size() * 2 <= document.widestLineColumns && !line.contains(u'\t'))
            continue;
        const qint64 columns = displayColumns(line);
        if (columns > document.widestLineColumns || document.widestLine < 0) {
            document.widestLineColumns = columns;
            document.widestLine = index;
        }
    }
    return document;
}

const PresentedDiffDocument &emptyDiffDocument()
{
    static const PresentedDiffDocument empty = buildDiffDocument(QString());
    return empty;
}

} // namespace tillery
