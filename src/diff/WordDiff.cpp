#include "diff/WordDiff.h"

#include <QChar>

#include <algorithm>
#include <array>
#include <vector>

namespace tillery {

namespace {

// A comparison stops after this many steps (diagonals tried plus tokens
// matched along them) and marks nothing. A line of typical code with a few
// changed words takes tens to hundreds; a thousand-character line with ten
// words edited under 4,000, with forty (a fifth of its words) about 11,000.
// Past this the marks would be noise, and a screenful of the costliest pairs
// stays near 2 ms.
constexpr int maxComparisonSteps = 20000;

// Marks help only when the eye can see what stayed: with less than
// 1 / commonShareDenominator (a third) of the shorter line's characters in
// common they would cover nearly all of it.
// Whitespace counts on neither side, or shared indentation alone would pass
// two unrelated lines.
constexpr int commonShareDenominator = 3;

enum class TokenClass : quint8 { word, space, other };

struct Token {
    qsizetype start = 0;
    qsizetype length = 0;
    size_t hash = 0;
    TokenClass tokenClass = TokenClass::other;
};

using Tokens = std::vector<Token>;

constexpr auto asciiClasses = [] {
    std::array<TokenClass, 0x80> classes{};
    for (char32_t character = 0; character < 0x80; ++character) {
        if ((character | 0x20) - u'a' < 26 || character - u'0' < 10 || character == u'_')
            classes[character] = TokenClass::word;
        else if (character == u' ' || character - u'\t' < 5)
            classes[character] = TokenClass::space;
        else
            classes[character] = TokenClass::other;
    }
    return classes;
}();

// A combining mark stays with the letters before it, so an accented letter
// written in two code points is one word with them.
TokenClass classOf(char32_t character)
{
    if (QChar::isLetterOrNumber(character) || QChar::isMark(character))
        return TokenClass::word;
    return QChar::isSpace(character) ? TokenClass::space : TokenClass::other;
}

// Runs of word characters, runs of whitespace and every other character
// alone, after the marker; a lone surrogate is a character of its own.
// `visible` adds up the units outside whitespace.
Tokens tokenize(QStringView line, qsizetype &visible)
{
    const char16_t *units = line.utf16();
    const qsizetype size = line.size();
    // The class of the character at `at`, and how many units it takes.
    const auto classAt = [&](qsizetype at, qsizetype &length) {
        length = 1;
        if (units[at] < 0x80)
            return asciiClasses[units[at]];
        if (QChar::isHighSurrogate(units[at]) && at + 1 < size && QChar::isLowSurrogate(units[at + 1])) {
            length = 2;
            return classOf(QChar::surrogateToUcs4(units[at], units[at + 1]));
        }
        return classOf(units[at]);
    };
    Tokens tokens;
    tokens.reserve(static_cast<size_t>(size / 3 + 1));
    visible = 0;
    qsizetype at = size == 0 ? 0 : 1;
    while (at < size) {
        qsizetype length = 0;
        const TokenClass tokenClass = classAt(at, length);
        qsizetype end = at + length;
        while (tokenClass != TokenClass::other && end < size && classAt(end, length) == tokenClass)
            end += length;
        // A cheap hash: equal hashes are still compared unit by unit.
        size_t hash = static_cast<size_t>(end - at);
        for (qsizetype unit = at; unit < end; ++unit)
            hash = hash * 31 + units[unit];
        tokens.push_back(Token{at, end - at, hash, tokenClass});
        visible += tokenClass == TokenClass::space ? 0 : end - at;
        at = end;
    }
    return tokens;
}

// The tokens of both lines that a shortest edit script leaves unmatched,
// found by Myers' O(ND) comparison over the tokens between the common prefix
// and suffix.
class TokenComparison {
public:
    TokenComparison(QStringView removedLine, QStringView addedLine)
        : m_removedLine(removedLine)
        , m_addedLine(addedLine)
        , m_removed(tokenize(removedLine, m_removedVisible))
        , m_added(tokenize(addedLine, m_addedVisible))
        , m_removedChanged(m_removed.size(), false)
        , m_addedChanged(m_added.size(), false)
    {
    }

    // False when the comparison would take more than maxComparisonSteps.
    bool run()
    {
        const int removedCount = static_cast<int>(m_removed.size());
        const int addedCount = static_cast<int>(m_added.size());
        while (m_prefix < removedCount && m_prefix < addedCount && same(m_prefix, m_prefix)) {
            match(m_prefix, m_prefix);
            ++m_prefix;
        }
        int suffix = 0;
        while (suffix < removedCount - m_prefix && suffix < addedCount - m_prefix
               && same(removedCount - 1 - suffix, addedCount - 1 - suffix)) {
            match(removedCount - 1 - suffix, addedCount - 1 - suffix);
            ++suffix;
        }
        m_n = removedCount - m_prefix - suffix;
        m_m = addedCount - m_prefix - suffix;
        std::fill(m_removedChanged.begin() + m_prefix, m_removedChanged.end() - suffix, true);
        std::fill(m_addedChanged.begin() + m_prefix, m_addedChanged.end() - suffix, true);
        return m_n == 0 || m_m == 0 || compareMiddle();
    }

    WordChanges changes() const { return {spans(m_removed, m_removedChanged), spans(m_added, m_addedChanged)}; }
    bool hasChanges() const
    {
        // The common prefix and suffix end where tokens differ.
        return m_n > 0 || m_m > 0;
    }
    bool sharesEnough() const
    {
        return m_common > 0 && m_common * commonShareDenominator >= std::min(m_removedVisible, m_addedVisible);
    }

private:
    bool same(int removed, int added) const
    {
        const Token &left = m_removed[static_cast<size_t>(removed)];
        const Token &right = m_added[static_cast<size_t>(added)];
        return left.hash == right.hash && left.length == right.length
               && std::equal(m_removedLine.utf16() + left.start, m_removedLine.utf16() + left.start + left.length,
                             m_addedLine.utf16() + right.start);
    }
    void match(int removed, int added)
    {
        m_removedChanged[static_cast<size_t>(removed)] = false;
        m_addedChanged[static_cast<size_t>(added)] = false;
        const Token &token = m_removed[static_cast<size_t>(removed)];
        if (token.tokenClass != TokenClass::space)
            m_common += token.length;
    }

    // The furthest x that diagonal k reaches with one more edit, given the
    // furthest points `v` of the diagonals after the edits before; -1 when
    // it is out of reach. `down` says the edit was an added token.
    struct Move {
        int x = -1;
        bool down = false;
    };
    Move furthest(const int *v, int k) const
    {
        const bool canRight = v[k - 1] >= 0 && v[k - 1] < m_n;
        const bool canDown = v[k + 1] >= 0 && v[k + 1] - k <= m_m;
        if (canRight && (!canDown || v[k - 1] + 1 > v[k + 1]))
            return {v[k - 1] + 1, false};
        return canDown ? Move{v[k + 1], true} : Move{};
    }

    // Rounds of Myers' comparison: round d finds how far each diagonal k
    // (x - y) gets with d edits, from the points of round d - 1 that the
    // trace keeps for the walk back.
    struct Round {
        size_t start = 0; // where the trace holds diagonal `low - 1`
        int low = 0;
    };
    const int *pointsBefore(const std::vector<int> &trace, const Round &round) const
    {
        return trace.data() + round.start - (round.low - 1);
    }

    bool compareMiddle()
    {
        const int maxEdits = m_n + m_m;
        const int offset = maxEdits + 1;
        std::vector<int> v(static_cast<size_t>(2 * maxEdits + 3), -1);
        v[static_cast<size_t>(offset + 1)] = 0;
        std::vector<int> trace;
        std::vector<Round> rounds;
        int steps = 0;
        for (int d = 0; d <= maxEdits; ++d) {
            // Diagonals outside [-m, n] lead off the grid.
            const int low = std::max(-d, -m_m) + ((std::max(-d, -m_m) + d) & 1);
            const int high = std::min(d, m_n) - ((std::min(d, m_n) + d) & 1);
            rounds.push_back(Round{trace.size(), low});
            trace.insert(trace.end(), v.begin() + offset + low - 1, v.begin() + offset + high + 2);
            const int *before = pointsBefore(trace, rounds.back());
            for (int k = low; k <= high; k += 2) {
                int x = furthest(before, k).x;
                if (x >= 0) {
                    while (x < m_n && x - k < m_m && same(m_prefix + x, m_prefix + x - k)) {
                        ++x;
                        ++steps;
                    }
                }
                v[static_cast<size_t>(offset + k)] = x;
                if (x == m_n && x - k == m_m) {
                    walkBack(trace, rounds, d);
                    return true;
                }
                if (++steps > maxComparisonSteps)
                    return false;
            }
        }
        return false;
    }

    void walkBack(const std::vector<int> &trace, const std::vector<Round> &rounds, int edits)
    {
        int x = m_n;
        int y = m_m;
        for (int d = edits; d > 0; --d) {
            const Move move = furthest(pointsBefore(trace, rounds[static_cast<size_t>(d)]), x - y);
            while (x > move.x) {
                --x;
                --y;
                match(m_prefix + x, m_prefix + y);
            }
            if (move.down)
                --y;
            else
                --x;
        }
        while (x > 0) {
            --x;
            --y;
            match(m_prefix + x, m_prefix + y);
        }
    }

    // Changed tokens next to each other, or with a single unchanged
    // whitespace token between them, make one span.
    static QList<ChangedSpan> spans(const Tokens &tokens, const std::vector<bool> &changed)
    {
        QList<ChangedSpan> spans;
        const size_t count = tokens.size();
        for (size_t index = 0; index < count; ++index) {
            if (!changed[index])
                continue;
            const size_t first = index;
            while (true) {
                if (index + 1 < count && changed[index + 1])
                    index += 1;
                else if (index + 2 < count && tokens[index + 1].tokenClass == TokenClass::space && changed[index + 2])
                    index += 2;
                else
                    break;
            }
            spans.append(
                ChangedSpan{tokens[first].start, tokens[index].start + tokens[index].length - tokens[first].start});
        }
        return spans;
    }

    QStringView m_removedLine;
    QStringView m_addedLine;
    qsizetype m_removedVisible = 0;
    qsizetype m_addedVisible = 0;
    Tokens m_removed;
    Tokens m_added;
    std::vector<bool> m_removedChanged;
    std::vector<bool> m_addedChanged;
    int m_prefix = 0;
    int m_n = 0;
    int m_m = 0;
    qsizetype m_common = 0;
};

} // namespace

std::optional<WordChanges> diffWords(QStringView removedLine, QStringView addedLine)
{
    if (removedLine.size() > wordDiffMaxLineLength || addedLine.size() > wordDiffMaxLineLength)
        return std::nullopt;
    TokenComparison comparison(removedLine, addedLine);
    if (!comparison.run())
        return std::nullopt;
    if (!comparison.hasChanges())
        return WordChanges{};
    if (!comparison.sharesEnough())
        return std::nullopt;
    return comparison.changes();
}

QHash<qsizetype, QList<ChangedSpan>> wordChangesInRange(const PresentedDiffDocument &document, qsizetype first,
                                                        qsizetype last)
{
    // The split rows hold the pairing. Their keys (the left line, or the
    // right one of a row without a left) rise strictly, so the rows of the
    // range are found by bisection and a run that the range cuts need not
    // be walked from its start.
    const QList<PresentedDiffLine> &lines = document.unifiedLines;
    const QList<SplitDiffLine> &rows = document.splitLines;
    QHash<qsizetype, QList<ChangedSpan>> changes;
    first = std::max<qsizetype>(first, 0);
    last = std::min(last, lines.size() - 1);
    if (first > last || rows.isEmpty())
        return changes;
    const auto key = [](const SplitDiffLine &row) { return row.left >= 0 ? row.left : row.right; };
    const auto isPair = [](const SplitDiffLine &row) {
        return row.left >= 0 && row.right >= 0 && row.left != row.right;
    };
    const auto compare = [&](const SplitDiffLine &row) {
        const auto found = diffWords(document.textOf(lines[row.left]), document.textOf(lines[row.right]));
        if (found && !found->removed.isEmpty())
            changes.insert(row.left, found->removed);
        if (found && !found->added.isEmpty())
            changes.insert(row.right, found->added);
    };

    // Pairs whose deletion is in the range.
    const auto firstRow =
        std::partition_point(rows.begin(), rows.end(), [&](const SplitDiffLine &row) { return key(row) < first; });
    for (auto row = firstRow; row != rows.end() && key(*row) <= last; ++row) {
        if (isPair(*row))
            compare(*row);
    }
    if (firstRow == rows.begin())
        return changes;

    // Pairs whose addition alone is in the range belong to the run of
    // deletions that the row before holds. Its pairs take consecutive lines
    // on both sides, so they are counted back from any one of them; a row
    // that does not continue them is before the run, as no line of the run
    // can be on its right.
    const auto pairsBefore = [&](qsizetype known) {
        const SplitDiffLine &from = rows[known];
        for (qsizetype back = std::max<qsizetype>(0, from.right - last); from.right - back >= first; ++back) {
            const qsizetype at = known - back;
            if (at < 0 || rows[at].left != from.left - back || rows[at].right != from.right - back)
                break;
            compare(rows[at]);
        }
    };
    qsizetype before = firstRow - rows.begin() - 1;
    if (isPair(rows[before])) {
        pairsBefore(before);
    } else if (rows[before].left >= 0 && rows[before].right < 0) {
        // An unpaired deletion: its run's pairs come before it, and matter
        // only when the run goes on into the range and its additions reach it.
        if (lines[first].kind == DiffLineKind::deletion && lines[first - 1].kind != DiffLineKind::deletion)
            return changes;
        qsizetype after = first;
        while (after <= last && lines[after].kind == DiffLineKind::deletion)
            ++after;
        if (after > last || lines[after].kind != DiffLineKind::addition)
            return changes;
        while (before > 0 && rows[before].right < 0)
            --before;
        if (isPair(rows[before]) && rows[before].right >= first)
            pairsBefore(before);
    }
    return changes;
}

} // namespace tillery
