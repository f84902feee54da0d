#include "integrations/IgnoreFile.h"

#include "process/Failure.h"
#include "process/RepositoryFile.h"
#include "records/TextSplitting.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace tillery {

QString ignoreFileName(RepositoryKind kind)
{
    return kind == RepositoryKind::mercurial ? u".hgignore"_s : u".gitignore"_s;
}

QString normalisedIgnorePattern(const QString &pattern, RepositoryKind kind)
{
    if (kind == RepositoryKind::git)
        return pattern;
    QString normalised = pattern.startsWith(u'/') ? pattern.sliced(1) : pattern;
    if (normalised.endsWith(u'/')) {
        normalised.chop(1);
        normalised += u"/**"_s;
    }
    return normalised;
}

std::optional<QString> ignoreTextWithEntry(const QString &text, const QString &pattern, RepositoryKind kind)
{
    const QString entry = normalisedIgnorePattern(pattern, kind);
    for (const QStringView line : QStringTokenizer(text, u'\n', Qt::SkipEmptyParts)) {
        if (line == entry)
            return std::nullopt;
    }
    QString result = text;
    if (!result.isEmpty() && !result.endsWith(u'\n'))
        result += u'\n';
    // The header goes before every entry, so that the entry is a glob whatever
    // syntax an earlier part of the file chose.
    if (kind == RepositoryKind::mercurial)
        result += u"syntax: glob\n"_s;
    return result + entry + u'\n';
}

void addIgnoreEntry(const QString &pattern, const QString &repositoryPath, RepositoryKind kind)
{
    if (pattern.contains(u'\n') || pattern.contains(u'\r') || pattern.trimmed().isEmpty())
        throw PlatformFailure(
            QCoreApplication::translate("tillery::IgnoreFile", "An ignore entry must be one line of text."));
    const QString name = ignoreFileName(kind);
    const auto read = readRepositoryTextFile(repositoryPath, name);
    if (const auto *problem = std::get_if<RepositoryFileProblem>(&read)) {
        switch (*problem) {
        case RepositoryFileProblem::isLink:
            throw PlatformFailure(
                QCoreApplication::translate("tillery::IgnoreFile",
                                            "%1 is a symbolic link, which Tillery never writes through; it "
                                            "was left unchanged. Edit the file it leads to yourself.")
                    .arg(name));
        case RepositoryFileProblem::unreadable:
            throw PlatformFailure(
                QCoreApplication::translate("tillery::IgnoreFile", "%1 could not be read; it was left unchanged.")
                    .arg(name));
        case RepositoryFileProblem::notUtf8:
            throw PlatformFailure(
                QCoreApplication::translate("tillery::IgnoreFile", "%1 is not UTF-8 text; it was left unchanged.")
                    .arg(name));
        }
    }
    const RepositoryTextFile &file = std::get<RepositoryTextFile>(read);
    const std::optional<QString> text = ignoreTextWithEntry(file.text, pattern, kind);
    if (!text)
        return;
    if (const std::optional<QString> reason = replaceTextFile(file.path, *text))
        throw PlatformFailure(*reason);
}

} // namespace tillery
