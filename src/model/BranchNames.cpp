#include "model/BranchNames.h"

#include "model/VersionControl.h"

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

bool hasControlCharacter(const QString &name)
{
    return std::any_of(name.cbegin(), name.cend(), [](QChar character) {
        return character.category() == QChar::Other_Control || character == u'\u2028' || character == u'\u2029';
    });
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
    const VersionControl &backend = versionControl(kind);
    if (const std::optional<QString> problem = backend.bookmarkNameProblem(name))
        return problem;
    for (const Bookmark &bookmark : existing) {
        if (bookmark.name == name)
            return u"A "_s + backend.traits().bookmark + u" named “"_s + name + u"” already exists."_s;
    }
    return std::nullopt;
}

} // namespace tillery
