#include "records/KindTraits.h"

namespace tillery {

QString capitalized(const QString &word)
{
    return word.isEmpty() ? word : word.first(1).toUpper() + word.sliced(1);
}

QString byKind(RepositoryKind kind, const QString &mercurial, const QString &git)
{
    return kind == RepositoryKind::git ? git : mercurial;
}

} // namespace tillery
