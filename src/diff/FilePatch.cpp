#include "diff/FilePatch.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

struct HunkHeader {
    qint64 oldStart = 0;
    qint64 oldCount = 1;
    qint64 newStart = 0;
    qint64 newCount = 1;
};

std::optional<HunkHeader> parseHeader(QStringView line)
{
    static const QRegularExpression pattern(uR"(^@@ -(\d+)(?:,(\d+))? \+(\d+)(?:,(\d+))? @@)"_s);
    const QRegularExpressionMatch match = pattern.match(line);
    if (!match.hasMatch())
        return std::nullopt;
    const auto number = [&match](int group, qint64 absent) {
        return match.capturedView(group).isEmpty() ? absent : match.capturedView(group).toLongLong();
    };
    return HunkHeader{number(1, 0), number(2, 1), number(3, 0), number(4, 1)};
}

struct SourceLine {
    QStringView text;
    bool endsWithFeed = true;
};

QList<SourceLine> splitAtFeeds(QStringView text)
{
    QList<SourceLine> lines;
    qsizetype start = 0;
    while (start < text.size()) {
        const qsizetype feed = text.indexOf(u'\n', start);
        if (feed < 0) {
            lines.append(SourceLine{text.sliced(start), false});
            break;
        }
        lines.append(SourceLine{text.sliced(start, feed - start), true});
        start = feed + 1;
    }
    return lines;
}

// A new file's diff made without the tool: its lines, each after a "+",
// with no hunk header; a file that ends in a line feed leaves a lone "+".
std::optional<FilePatch> newFileWithoutHunks(QStringView diffText)
{
    const qsizetype header = diffText.indexOf(u"\n+++ ");
    if (header < 0 || !diffText.contains(u"\n--- /dev/null\n"))
        return std::nullopt;
    qsizetype start = diffText.indexOf(u'\n', header + 1) + 1;
    if (start <= 0)
        return std::nullopt;
    PatchHunk hunk{0, 0, 1, 0, start, {}};
    while (start < diffText.size()) {
        qsizetype feed = diffText.indexOf(u'\n', start);
        const bool last = feed < 0;
        if (last)
            feed = diffText.size();
        const QStringView line = diffText.sliced(start, feed - start);
        if (!line.startsWith(u'+'))
            return std::nullopt;
        if (last && line.size() == 1)
            break;
        hunk.lines.append(PatchLine{PatchLineKind::addition, line.sliced(1).toString(), !last, start});
        start = feed + 1;
    }
    if (hunk.lines.isEmpty())
        return std::nullopt;
    hunk.newCount = hunk.lines.size();
    return FilePatch{{hunk}};
}

} // namespace

namespace {

// The header's lines: those before the first hunk.
template <typename Visit>
void visitHeader(QStringView diffText, Visit visit)
{
    for (const QStringView line : diffText.tokenize(u'\n')) {
        if (line.startsWith(u"@@") || visit(line))
            return;
    }
}

} // namespace

bool declaresNewFile(QStringView diffText)
{
    bool isNew = false;
    visitHeader(diffText, [&isNew](QStringView line) { return isNew = line == u"--- /dev/null"; });
    return isNew;
}

std::optional<QString> copiedFrom(QStringView diffText)
{
    std::optional<QString> source;
    visitHeader(diffText, [&source](QStringView line) {
        for (const QStringView marker : {u"copy from ", u"rename from "}) {
            if (line.startsWith(marker) && line.size() > marker.size())
                source = line.sliced(marker.size()).toString();
        }
        return source.has_value();
    });
    return source;
}

QSet<qsizetype> FilePatch::changedLineIds() const
{
    QSet<qsizetype> ids;
    for (const PatchHunk &hunk : hunks) {
        for (const PatchLine &line : hunk.lines) {
            if (line.kind != PatchLineKind::context)
                ids.insert(line.offset);
        }
    }
    return ids;
}

std::optional<FilePatch> parseFilePatch(QStringView diffText)
{
    FilePatch patch;
    qint64 oldLeft = 0;
    qint64 newLeft = 0;
    qsizetype start = 0;
    while (start < diffText.size()) {
        qsizetype feed = diffText.indexOf(u'\n', start);
        if (feed < 0)
            feed = diffText.size();
        const QStringView line = diffText.sliced(start, feed - start);
        const qsizetype offset = start;
        start = feed + 1;
        if (oldLeft > 0 || newLeft > 0) {
            PatchLine patchLine{PatchLineKind::context, line.sliced(std::min<qsizetype>(1, line.size())).toString(),
                                true, offset};
            if (line.startsWith(u' ') && oldLeft > 0 && newLeft > 0) {
                --oldLeft;
                --newLeft;
            } else if (line.startsWith(u'-') && oldLeft > 0) {
                patchLine.kind = PatchLineKind::deletion;
                --oldLeft;
            } else if (line.startsWith(u'+') && newLeft > 0) {
                patchLine.kind = PatchLineKind::addition;
                --newLeft;
            } else if (line.startsWith(u'\\') && !patch.hunks.last().lines.isEmpty()) {
                patch.hunks.last().lines.last().endsWithFeed = false;
                continue;
            } else {
                return std::nullopt;
            }
            patch.hunks.last().lines.append(patchLine);
        } else if (const std::optional<HunkHeader> header = parseHeader(line)) {
            patch.hunks.append(PatchHunk{header->oldStart, header->oldCount, header->newStart, header->newCount,
                                         offset, {}});
            patch.hunks.last().lines.reserve(std::min<qint64>(header->oldCount + header->newCount, diffText.size()));
            oldLeft = header->oldCount;
            newLeft = header->newCount;
        } else if (line.startsWith(u'\\') && !patch.hunks.isEmpty() && !patch.hunks.last().lines.isEmpty()) {
            // The note after a hunk's last line.
            patch.hunks.last().lines.last().endsWithFeed = false;
        } else if (line.startsWith(u"GIT binary patch") || (line.startsWith(u"Binary files ") && line.endsWith(u" differ"))) {
            return std::nullopt;
        }
    }
    if (patch.hunks.isEmpty() && oldLeft == 0 && newLeft == 0)
        return newFileWithoutHunks(diffText);
    if (oldLeft > 0 || newLeft > 0)
        return std::nullopt;
    return patch;
}

namespace {

struct EmittedLine {
    QChar marker;
    QStringView line;
    bool endsWithFeed;
    bool gainsFeed = false;

    bool isChange() const { return marker != u' ' || gainsFeed; }
    qint64 oldLines() const { return marker != u'+' ? 1 : 0; }
    qint64 newLines() const { return marker != u'-' ? 1 : 0; }
};

// Context kept around each change, as diff writes it: enough for git apply,
// little to read when the chosen changes are few in a long hunk.
constexpr qsizetype keptContext = 3;

void appendLine(QString &body, const EmittedLine &line, bool crlfAfter)
{
    // A kept last line without a feed that an addition now follows gets
    // one on the new side, as the file's other lines end.
    if (line.gainsFeed) {
        body += u'-';
        body += line.line;
        body += u"\n\\ No newline at end of file\n+"_s;
        body += line.line;
        body += crlfAfter ? u"\r\n"_s : u"\n"_s;
        return;
    }
    body += line.marker;
    body += line.line;
    body += u'\n';
    if (!line.endsWithFeed)
        body += u"\\ No newline at end of file\n"_s;
}

} // namespace

QString chosenHunksText(const FilePatch &patch, const QSet<qsizetype> &chosen)
{
    QString text;
    qint64 shift = 0;
    for (const PatchHunk &hunk : patch.hunks) {
        QList<EmittedLine> lines;
        for (const PatchLine &line : hunk.lines) {
            const bool isChosen = chosen.contains(line.offset);
            if (line.kind == PatchLineKind::addition && !isChosen)
                continue;
            const QChar marker = line.kind == PatchLineKind::context || !isChosen
                                     ? u' '
                                     : (line.kind == PatchLineKind::addition ? u'+' : u'-');
            lines.append({marker, line.text, line.endsWithFeed});
        }
        for (qsizetype index = 0; index + 1 < lines.size(); ++index)
            lines[index].gainsFeed = !lines[index].endsWithFeed && lines[index].marker == u' ';
        // The hunk splits where more unchanged lines than twice the context lie between changes.
        qint64 oldBefore = 0;
        qsizetype index = 0;
        while (index < lines.size()) {
            qsizetype firstChange = index;
            while (firstChange < lines.size() && !lines[firstChange].isChange())
                ++firstChange;
            if (firstChange == lines.size())
                break;
            const qsizetype from = std::max(index, firstChange - keptContext);
            qsizetype to = firstChange;
            for (qsizetype unchanged = 0; to < lines.size() && unchanged <= 2 * keptContext; ++to)
                unchanged = lines[to].isChange() ? 0 : unchanged + 1;
            while (to > firstChange && !lines[to - 1].isChange())
                --to;
            to = std::min(lines.size(), to + keptContext);
            for (qsizetype skipped = index; skipped < from; ++skipped)
                oldBefore += lines[skipped].oldLines();
            QString body;
            qint64 oldCount = 0;
            qint64 newCount = 0;
            for (qsizetype at = from; at < to; ++at) {
                appendLine(body, lines[at], at + 1 < lines.size() && lines[at + 1].line.endsWith(u'\r'));
                oldCount += lines[at].oldLines();
                newCount += lines[at].newLines();
            }
            const qint64 oldFirst = (hunk.oldCount == 0 ? hunk.oldStart + 1 : hunk.oldStart) + oldBefore;
            const qint64 newFirst = oldFirst + shift;
            text += u"@@ -%1,%2 +%3,%4 @@\n"_s.arg(oldCount == 0 ? oldFirst - 1 : oldFirst)
                        .arg(oldCount)
                        .arg(newCount == 0 ? newFirst - 1 : newFirst)
                        .arg(newCount)
                    + body;
            shift += newCount - oldCount;
            oldBefore += oldCount;
            index = to;
        }
    }
    return text;
}

std::optional<QString> applyChosenChanges(QStringView text, PatchSide side, const FilePatch &patch,
                                          const QSet<qsizetype> &chosen)
{
    const QList<SourceLine> source = splitAtFeeds(text);
    // Lines this side holds, and lines only the other side has.
    const PatchLineKind present = side == PatchSide::old ? PatchLineKind::deletion : PatchLineKind::addition;
    QList<SourceLine> result;
    result.reserve(source.size());
    qsizetype cursor = 0;
    const auto takeSource = [&](const PatchLine &expected, bool keep) {
        if (cursor >= source.size() || source[cursor].text != expected.text
            || source[cursor].endsWithFeed != expected.endsWithFeed)
            return false;
        if (keep)
            result.append(source[cursor]);
        ++cursor;
        return true;
    };
    for (const PatchHunk &hunk : patch.hunks) {
        const qint64 first = side == PatchSide::old ? hunk.oldStart : hunk.newStart;
        const qint64 count = side == PatchSide::old ? hunk.oldCount : hunk.newCount;
        // A hunk with no lines on this side starts after its line, not at it.
        const qint64 startIndex = count == 0 ? first : first - 1;
        if (startIndex < cursor || startIndex > source.size())
            return std::nullopt;
        while (cursor < startIndex)
            result.append(source[cursor++]);
        for (const PatchLine &line : hunk.lines) {
            if (line.kind == PatchLineKind::context) {
                if (!takeSource(line, true))
                    return std::nullopt;
            } else if (line.kind == present) {
                if (!takeSource(line, !chosen.contains(line.offset)))
                    return std::nullopt;
            } else if (chosen.contains(line.offset)) {
                result.append(SourceLine{line.text, line.endsWithFeed});
            }
        }
    }
    while (cursor < source.size())
        result.append(source[cursor++]);

    QString joined;
    joined.reserve(text.size());
    for (qsizetype index = 0; index < result.size(); ++index) {
        joined += result[index].text;
        if (result[index].endsWithFeed)
            joined += u'\n';
        else if (index + 1 < result.size())
            // A last line without a feed that another line now follows gets
            // the line end the file uses.
            joined += result[index + 1].text.endsWith(u'\r') ? u"\r\n"_s : u"\n"_s;
    }
    return joined;
}

} // namespace tillery
