#include "model/BranchNames.h"

#include "model/VersionControl.h"

#include <QCoreApplication>

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
        return QCoreApplication::translate("tillery::BranchNames", "Enter a name.");
    if (name != name.trimmed())
        return QCoreApplication::translate("tillery::BranchNames", "A name cannot begin or end with a space.");
    if (name.startsWith(u'-'))
        return QCoreApplication::translate("tillery::BranchNames", "A name cannot begin with “-”.");
    if (hasControlCharacter(name))
        return QCoreApplication::translate("tillery::BranchNames",
                                           "A name cannot contain line breaks or other control characters.");
    const VersionControl &backend = versionControl(kind);
    if (const std::optional<QString> problem = backend.bookmarkNameProblem(name))
        return problem;
    for (const Bookmark &bookmark : existing) {
        if (bookmark.name == name)
            return QCoreApplication::translate("tillery::BranchNames", "A %1 named “%2” already exists.")
                .arg(backend.traits().bookmark, name);
    }
    return std::nullopt;
}

} // namespace tillery
