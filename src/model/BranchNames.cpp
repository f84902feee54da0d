#include "model/BranchNames.h"

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

bool hasControlCharacter(const QString &name)
{
    return std::any_of(name.cbegin(), name.cend(), [](QChar character) {
        return character.category() == QChar::Other_Control || character == u'\u2028' || character == u'\u2029';
    });
}

std::optional<QString> mercurialProblem(const QString &name)
{
    if (name.contains(u':'))
        return u"A bookmark name cannot contain “:”."_s;
    bool number = false;
    name.toLongLong(&number);
    if (number)
        return u"A bookmark name cannot be a number."_s;
    if (name == u"." || name == u"null" || name == u"tip")
        return u"“"_s + name + u"” is a name Mercurial keeps for itself."_s;
    return std::nullopt;
}

std::optional<QString> gitProblem(const QString &name)
{
    static const QString forbidden = u" ~^:?*[\\"_s;
    if (std::any_of(name.cbegin(), name.cend(), [](QChar character) { return forbidden.contains(character); }))
        return u"A branch name cannot contain spaces or any of ~ ^ : ? * [ \\."_s;
    if (name.contains(u".."_s))
        return u"A branch name cannot contain “..”."_s;
    if (name.contains(u"@{"_s) || name == u"@")
        return u"A branch name cannot be “@” or contain “@{”."_s;
    if (name.startsWith(u'/') || name.endsWith(u'/') || name.contains(u"//"_s))
        return u"A branch name cannot begin or end with “/” or hold “//”."_s;
    if (name.endsWith(u'.') || name.endsWith(u".lock"_s))
        return u"A branch name cannot end with “.” or “.lock”."_s;
    const QStringList parts = name.split(u'/');
    if (std::any_of(parts.cbegin(), parts.cend(), [](const QString &part) { return part.startsWith(u'.'); }))
        return u"No part of a branch name can begin with “.”."_s;
    if (name == u"HEAD")
        return u"“HEAD” is a name Git keeps for itself."_s;
    return std::nullopt;
}

} // namespace

std::optional<QString> branchNameProblem(const QString &name, RepositoryKind kind, const QList<Bookmark> &existing)
{
    if (name.trimmed().isEmpty())
        return u"Enter a name."_s;
    if (name != name.trimmed())
        return u"A name cannot begin or end with a space."_s;
    if (name.startsWith(u'-'))
        return u"A name cannot begin with “-”."_s;
    if (hasControlCharacter(name))
        return u"A name cannot contain line breaks or other control characters."_s;
    if (const std::optional<QString> problem = kind == RepositoryKind::git ? gitProblem(name) : mercurialProblem(name))
        return problem;
    for (const Bookmark &bookmark : existing) {
        if (bookmark.name == name) {
            return (kind == RepositoryKind::git ? u"A branch named “"_s : u"A bookmark named “"_s) + name
                   + u"” already exists."_s;
        }
    }
    return std::nullopt;
}

} // namespace tillery
