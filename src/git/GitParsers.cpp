#include "git/GitParsers.h"


#include "records/LocalizedOrder.h"
#include "records/TextDecoding.h"
#include "records/TextSplitting.h"

#include <QCryptographicHash>
#include <QHash>

#include <algorithm>
#include <cctype>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tillery::git {

namespace {

// The pieces of the output between separator bytes, empty ones left out.
QList<QByteArrayView> splitBytes(QByteArrayView output, char separator)
{
    QList<QByteArrayView> pieces;
    qsizetype start = 0;
    while (start < output.size()) {
        qsizetype end = output.indexOf(separator, start);
        if (end < 0)
            end = output.size();
        if (end > start)
            pieces.append(output.sliced(start, end - start));
        start = end + 1;
    }
    return pieces;
}

// Every piece that ends in the separator; what follows the last one is dropped.
QList<QByteArrayView> terminatedPieces(QByteArrayView output, char terminator)
{
    QList<QByteArrayView> pieces;
    qsizetype start = 0;
    for (qsizetype end = output.indexOf(terminator); end >= 0; end = output.indexOf(terminator, start)) {
        pieces.append(output.sliced(start, end - start));
        start = end + 1;
    }
    return pieces;
}

// The whole text as a decimal number; white space around it is not allowed.
std::optional<double> parseNumber(QStringView text)
{
    if (text.isEmpty() || text.front().isSpace() || text.back().isSpace())
        return std::nullopt;
    bool parsed = false;
    const double value = text.toDouble(&parsed);
    if (!parsed || !std::isfinite(value))
        return std::nullopt;
    return value;
}

QDateTime dateFromSeconds(double seconds)
{
    return QDateTime::fromMSecsSinceEpoch(std::llround(seconds * 1000.0), Qt::UTC);
}

bool isRenameOrCopy(char code)
{
    return code == 'R' || code == 'C';
}

FileState stateOfStatus(QStringView code)
{
    static const QStringList conflicts{u"DD"_s, u"AU"_s, u"UD"_s, u"UA"_s, u"DU"_s, u"AA"_s, u"UU"_s};
    if (code == u"??")
        return FileState::untracked;
    if (conflicts.contains(code))
        return FileState::unresolved;
    if (code.contains(u'D'))
        return FileState::removed;
    if (code.contains(u'A'))
        return FileState::added;
    return FileState::modified;
}

QString firstLine(const QString &text)
{
    qsizetype end = text.indexOf(u'\n');
    if (end < 0)
        return text;
    if (end > 0 && text[end - 1] == u'\r')
        --end;
    return text.first(end);
}

} // namespace

QList<WorkingFile> parseStatus(QByteArrayView output)
{
    QList<WorkingFile> files;
    const QList<QByteArrayView> pieces = splitBytes(output, '\0');
    for (qsizetype index = 0; index < pieces.size(); ++index) {
        const QByteArrayView piece = pieces[index];
        // The source of a rename or copy follows as a piece of its own.
        if (piece.size() >= 2 && (isRenameOrCopy(piece[0]) || isRenameOrCopy(piece[1])))
            ++index;
        const std::optional<QString> text = decodeUtf8(piece);
        if (!text || text->size() < 4)
            continue;
        const QString path = text->sliced(3);
        if (path.isEmpty())
            continue;
        files.append(WorkingFile{path, stateOfStatus(QStringView(*text).first(2))});
    }
    sortLocalized(files, [](const WorkingFile &file) { return file.path; });
    return files;
}

bool personEnablesFilesystemMonitor(QByteArrayView output)
{
    const QString text = decodeUtf8OrEmpty(output);
    return text.startsWith(u"global\t"_s) || text.startsWith(u"system\t"_s);
}

QStringList parseLines(QByteArrayView output)
{
    QStringList lines;
    for (const QByteArrayView line : splitBytes(output, '\n')) {
        if (const std::optional<QString> text = decodeUtf8(line))
            lines.append(*text);
    }
    return lines;
}

QList<LocalBranchRecord> parseLocalBranches(QByteArrayView output)
{
    QList<LocalBranchRecord> branches;
    for (const QString &line : parseLines(output)) {
        const QStringList fields = line.split(u'\t');
        if (fields.size() < 6)
            continue;
        LocalBranchRecord branch{fields[0], fields[1], fields[2] == u"*", std::nullopt, fields[4], fields[5]};
        if (const std::optional<double> seconds = parseNumber(fields[3]))
            branch.date = dateFromSeconds(*seconds);
        branches.append(std::move(branch));
    }
    return branches;
}

bool trackingNeedsPush(const QString &tracking)
{
    return tracking.contains(u"ahead") || tracking.contains(u"gone");
}

std::optional<QString> remoteCounterpart(const QString &branch, const QStringList &remoteBranches)
{
    const QString suffix = u'/' + branch;
    std::optional<QString> first;
    for (const QString &remoteBranch : remoteBranches) {
        if (!remoteBranch.endsWith(suffix))
            continue;
        if (remoteBranch == u"refs/remotes/origin"_s + suffix)
            return remoteBranch;
        if (!first)
            first = remoteBranch;
    }
    return first;
}

std::optional<qint64> parseCount(QByteArrayView output)
{
    const QString text = decodeUtf8OrEmpty(output).trimmed();
    bool parsed = false;
    const qint64 count = text.toLongLong(&parsed, 10);
    return parsed ? std::optional(count) : std::nullopt;
}

std::optional<QString> parseCurrentBranch(QByteArrayView output)
{
    const QString branch = decodeUtf8OrEmpty(output).trimmed();
    return branch.isEmpty() ? std::nullopt : std::optional(branch);
}

void sortBranches(QList<Bookmark> &branches)
{
    sortLocalized(branches, [](const Bookmark &branch) { return branch.name; });
    std::stable_partition(branches.begin(), branches.end(), [](const Bookmark &branch) { return branch.active; });
}

QHash<QString, QStringList> parseRefTargets(QByteArrayView output)
{
    QHash<QString, QStringList> targets;
    for (const QString &line : parseLines(output)) {
        const QStringList fields = line.split(u'\t');
        if (fields.size() != 3)
            continue;
        const QString &commit = fields[1].isEmpty() ? fields[0] : fields[1];
        targets[commit].append(fields[2]);
    }
    return targets;
}

QList<Changeset> parseHistory(QByteArrayView output, qint64 totalCommits,
                              const QHash<QString, QStringList> &branchesByCommit,
                              const QHash<QString, QStringList> &tagsByCommit)
{
    // Every piece ends in a NUL, which no message, name or path can hold. A
    // record starts with "/" + hash, which no path can begin with; its files
    // follow its message, the first after a line feed.
    const QList<QByteArrayView> pieces = terminatedPieces(output, '\0');
    const auto startsRecord = [](QByteArrayView piece) { return piece.startsWith('/'); };
    constexpr qsizetype headerPieces = 5;

    QList<Changeset> history;
    qsizetype index = 0;
    qint64 recordNumber = 0;
    while (index < pieces.size()) {
        if (!startsRecord(pieces[index])) {
            ++index;
            continue;
        }
        const qint64 number = recordNumber++;
        if (index + headerPieces > pieces.size())
            break;
        const QByteArrayView node = pieces[index].sliced(1);
        const QString parents = decodeUtf8OrEmpty(pieces[index + 1]);
        const std::optional<QString> author = decodeUtf8(pieces[index + 2]);
        const std::optional<QString> date = decodeUtf8(pieces[index + 3]);
        const std::optional<QString> message = decodeUtf8(pieces[index + 4]);
        index += headerPieces;
        QStringList files;
        for (bool first = true; index < pieces.size() && !startsRecord(pieces[index]); ++index, first = false) {
            const QByteArrayView name =
                first && pieces[index].startsWith('\n') ? pieces[index].sliced(1) : pieces[index];
            if (const std::optional<QString> path = decodeUtf8(name); path && !path->isEmpty())
                files.append(*path);
        }
        Changeset changeset;
        changeset.node = decodeUtf8OrEmpty(node).trimmed();
        if (changeset.node.isEmpty() || !author || !date || !message)
            continue;
        changeset.revision = std::max<qint64>(totalCommits - number - 1, 0);
        changeset.author = *author;
        changeset.date = dateFromSeconds(parseNumber(*date).value_or(0));
        changeset.description = message->trimmed();
        changeset.summary = firstLine(changeset.description);
        changeset.bookmarks = branchesByCommit.value(changeset.node);
        changeset.branch = changeset.bookmarks.isEmpty() ? u"Git"_s : changeset.bookmarks.first();
        changeset.tags = tagsByCommit.value(changeset.node);
        changeset.files = files;
        changeset.parents = parents.split(u' ', Qt::SkipEmptyParts);
        history.append(std::move(changeset));
    }
    return history;
}

qsizetype historyRecordsEnd(QByteArrayView output, qsizetype count)
{
    // The same walk as parseHistory's: five header pieces, then file
    // pieces up to the next piece that starts with "/".
    constexpr qsizetype headerPieces = 5;
    qsizetype records = 0;
    qsizetype headerLeft = 0;
    for (qsizetype start = 0; start < output.size();) {
        const qsizetype end = output.indexOf('\0', start);
        if (end < 0)
            return -1;
        if (headerLeft > 0) {
            --headerLeft;
        } else if (output[start] == '/') {
            if (records++ == count)
                return start;
            headerLeft = headerPieces - 1;
        }
        start = end + 1;
    }
    return -1;
}

std::optional<QString> parseOriginHead(QByteArrayView output)
{
    const QString text = decodeUtf8OrEmpty(output).trimmed();
    const QList<QStringView> pieces = QStringView(text).split(u'/', Qt::SkipEmptyParts);
    if (pieces.isEmpty() || pieces.last().isEmpty())
        return std::nullopt;
    return pieces.last().toString();
}

QString chooseDefaultBranch(const std::optional<QString> &originHead, const QList<Bookmark> &sortedBranches,
                            const std::optional<QString> &currentBranch)
{
    if (originHead)
        return *originHead;
    const auto exists = [&sortedBranches](const QString &name) {
        return std::any_of(sortedBranches.cbegin(), sortedBranches.cend(),
                           [&name](const Bookmark &branch) { return branch.name == name; });
    };
    for (const QString &conventional : {u"main"_s, u"master"_s}) {
        if (exists(conventional))
            return conventional;
    }
    if (currentBranch)
        return *currentBranch;
    return sortedBranches.isEmpty() ? u"main"_s : sortedBranches.first().name;
}

std::optional<GitIdentity> parseIdentity(const QString &text)
{
    const QString trimmed = text.trimmed();
    const qsizetype open = trimmed.lastIndexOf(u'<');
    const qsizetype close = trimmed.lastIndexOf(u'>');
    if (open < 0 || close < 0 || close < open)
        return std::nullopt;
    const QString name = trimmedSpacesAndTabs(QStringView(trimmed).first(open)).toString();
    const QString email = trimmedSpacesAndTabs(QStringView(trimmed).sliced(open + 1, close - open - 1)).toString();
    if (name.isEmpty() || email.isEmpty())
        return std::nullopt;
    return GitIdentity{name, email};
}

QList<WorkingFile> parseCommitFiles(QByteArrayView output)
{
    // A name that is not UTF-8 stays in place as an empty token, so that the
    // walk keeps its step and only that file is left out.
    QStringList tokens;
    for (const QByteArrayView piece : splitBytes(output, '\0'))
        tokens.append(decodeUtf8OrEmpty(piece));

    QList<WorkingFile> files;
    qsizetype index = 0;
    while (index < tokens.size()) {
        QString status = tokens[index++];
        QStringList paths;
        if (const qsizetype tab = status.indexOf(u'\t'); tab >= 0) {
            paths.append(status.sliced(tab + 1));
            status.truncate(tab);
        }
        const int wanted = status.startsWith(u'R') || status.startsWith(u'C') ? 2 : 1;
        while (paths.size() < wanted && index < tokens.size())
            paths.append(tokens[index++]);
        const QString path = paths.isEmpty() ? QString() : paths.last();
        if (path.isEmpty())
            continue;
        FileState state = FileState::modified;
        if (status.startsWith(u'A') || status.startsWith(u'C'))
            state = FileState::added;
        else if (status.startsWith(u'D'))
            state = FileState::removed;
        files.append(WorkingFile{path, state});
    }
    sortLocalized(files, [](const WorkingFile &file) { return file.path; });
    return files;
}

namespace {

bool isObjectId(QByteArrayView word)
{
    return (word.size() == 40 || word.size() == 64) && std::all_of(word.begin(), word.end(), [](char c) {
               return std::isxdigit(static_cast<unsigned char>(c));
           });
}

} // namespace

FileAnnotation parseBlame(QByteArrayView output)
{
    // Porcelain names a commit's author only at its first line; later lines
    // of the same commit carry just its id.
    struct Commit {
        QString node;
        QString name;
        QString mail;
        QString author;
        qint64 date = 0;
    };
    QHash<QByteArray, Commit> commits;
    // Valid until the next insertion, which only the next header line makes.
    Commit *commit = nullptr;
    FileAnnotation annotation;
    for (const QByteArrayView line : splitBytes(output, '\n')) {
        if (line.front() == '\t') {
            const QByteArrayView bytes = line.sliced(1);
            if (bytes.contains('\0'))
                return FileAnnotation{FileAnnotation::Content::binary, {}};
            if (!commit || annotation.content != FileAnnotation::Content::text)
                continue;
            const std::optional<QString> text = decodeUtf8(bytes);
            if (!text) {
                // A NUL further down still makes the file binary.
                annotation = FileAnnotation{FileAnnotation::Content::notUtf8, {}};
                continue;
            }
            if (commit->author.isNull())
                commit->author = commit->mail.isEmpty() ? commit->name : commit->name + u' ' + commit->mail;
            annotation.lines.append({commit->node, commit->author, commit->date, withoutLineEnding(*text).toString()});
            continue;
        }
        const qsizetype space = line.indexOf(' ');
        const QByteArrayView key = space < 0 ? line : line.first(space);
        const QByteArrayView value = space < 0 ? QByteArrayView() : line.sliced(space + 1);
        if (isObjectId(key)) {
            commit = &commits[key.toByteArray()];
            if (commit->node.isEmpty())
                commit->node = QString::fromLatin1(key);
        } else if (!commit) {
            continue;
        } else if (key == "author") {
            commit->name = QString::fromUtf8(value);
        } else if (key == "author-mail") {
            commit->mail = QString::fromUtf8(value);
        } else if (key == "author-time") {
            commit->date = value.toLongLong();
        }
    }
    return annotation;
}

QHash<QString, QString> parseTreeBlobs(QByteArrayView output)
{
    QHash<QString, QString> blobs;
    for (const QByteArray &entry : output.toByteArray().split('\0')) {
        const qsizetype tab = entry.indexOf('\t');
        const QList<QByteArray> fields = entry.first(std::max<qsizetype>(tab, 0)).split(' ');
        if (tab < 0 || fields.size() != 3)
            continue;
        if (const std::optional<QString> path = decodeUtf8(entry.sliced(tab + 1)))
            blobs.insert(*path, QString::fromLatin1(fields[2]));
    }
    return blobs;
}

QString blobId(const QByteArray &bytes, qsizetype idLength)
{
    QCryptographicHash hash(idLength == 64 ? QCryptographicHash::Sha256 : QCryptographicHash::Sha1);
    hash.addData("blob " + QByteArray::number(bytes.size()) + '\0');
    hash.addData(bytes);
    return QString::fromLatin1(hash.result().toHex());
}

} // namespace tillery::git
