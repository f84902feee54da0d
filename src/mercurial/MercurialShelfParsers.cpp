#include "mercurial/MercurialShelfParsers.h"

#include "records/TextDecoding.h"

#include <QByteArray>
#include <QCoreApplication>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tillery::mercurial {

namespace {

constexpr QByteArrayView fileHeader = "diff --git ";

// The names a file's part gives in its header lines, up to its first hunk.
struct PartHeader {
    QByteArray path;
    std::optional<QByteArray> renamedFrom;
    FileState state = FileState::modified;
};

PartHeader readHeader(QByteArrayView part)
{
    PartHeader header;
    qsizetype lineEnd = part.indexOf('\n');
    // "a/<name> b/<name>": both halves hold the same name unless the file
    // was copied or renamed, when the lines below give the names.
    const QByteArrayView names = part.first(lineEnd < 0 ? part.size() : lineEnd).sliced(fileHeader.size());
    const qsizetype length = (names.size() - 5) / 2;
    if (length > 0 && names.startsWith("a/") && names.sliced(2 + length).startsWith(" b/")
        && names.sliced(5 + length) == names.sliced(2, length))
        header.path = names.sliced(2, length).toByteArray();
    while (lineEnd >= 0) {
        const qsizetype lineStart = lineEnd + 1;
        lineEnd = part.indexOf('\n', lineStart);
        const QByteArrayView line = part.sliced(lineStart, (lineEnd < 0 ? part.size() : lineEnd) - lineStart);
        if (line.startsWith("--- ") || line.startsWith("@@") || line.startsWith("GIT binary patch"))
            break;
        if (line.startsWith("new file mode") || line.startsWith("copy to ")) {
            header.state = FileState::added;
        } else if (line.startsWith("deleted file mode")) {
            header.state = FileState::removed;
        } else if (line.startsWith("rename from ")) {
            header.renamedFrom = line.sliced(12).toByteArray();
            header.state = FileState::added;
        }
        if (line.startsWith("rename to ") || line.startsWith("copy to "))
            header.path = line.sliced(line.indexOf(" to ") + 4).toByteArray();
    }
    return header;
}

} // namespace

QStringList parseShelfNames(QByteArrayView output)
{
    QStringList names;
    for (const QByteArray &line : output.toByteArray().split('\n')) {
        if (const std::optional<QString> name = decodeUtf8(line); name && !line.isEmpty())
            names.append(*name);
    }
    return names;
}

QList<ShelfFilePatch> parseShelfPatch(QByteArrayView output)
{
    // Where each file's part begins; the shelf's own line comes first.
    QList<qsizetype> starts;
    for (qsizetype lineStart = output.indexOf('\n') + 1; lineStart > 0 && lineStart < output.size();) {
        if (output.sliced(lineStart).startsWith(fileHeader))
            starts.append(lineStart);
        lineStart = output.indexOf('\n', lineStart) + 1;
    }
    QList<ShelfFilePatch> parts;
    for (qsizetype index = 0; index < starts.size(); ++index) {
        const qsizetype end = index + 1 < starts.size() ? starts[index + 1] : output.size();
        const QByteArrayView part = output.sliced(starts[index], end - starts[index]);
        const PartHeader header = readHeader(part);
        const std::optional<QString> path = decodeUtf8(header.path);
        std::optional<QString> renamedFrom;
        if (header.renamedFrom)
            renamedFrom = decodeUtf8(*header.renamedFrom);
        if (!path || path->isEmpty() || (header.renamedFrom && !renamedFrom))
            continue;
        parts.append(ShelfFilePatch{WorkingFile{*path, header.state}, renamedFrom, decodeUtf8OrEmpty(part)});
    }
    return parts;
}

const ShelfFilePatch *shelfFilePart(const QList<ShelfFilePatch> &parts, const QString &path)
{
    auto part =
        std::find_if(parts.cbegin(), parts.cend(), [&](const ShelfFilePatch &each) { return each.file.path == path; });
    if (part == parts.cend())
        part = std::find_if(parts.cbegin(), parts.cend(),
                            [&](const ShelfFilePatch &each) { return each.renamedFrom == path; });
    return part == parts.cend() ? nullptr : &*part;
}

std::optional<QString> shelfNameProblem(const QString &name)
{
    if (name.contains(u'/') || name.contains(u'\\'))
        return QCoreApplication::translate("tillery::MercurialShelfParsers",
                                           "A shelf name cannot contain “/” or “\\”.");
    if (name.startsWith(u'.'))
        return QCoreApplication::translate("tillery::MercurialShelfParsers", "A shelf name cannot begin with “.”.");
    if (std::any_of(name.cbegin(), name.cend(),
                    [](QChar character) { return character.category() == QChar::Other_Control; }))
        return QCoreApplication::translate(
            "tillery::MercurialShelfParsers",
            "A shelf name cannot contain line breaks, tabs or other control characters.");
    if (name.toUtf8().size() > longestShelfName)
        return QCoreApplication::translate("tillery::MercurialShelfParsers",
                                           "A shelf name can be at most %n bytes long in UTF-8.", nullptr,
                                           int(longestShelfName));
    return std::nullopt;
}

} // namespace tillery::mercurial
