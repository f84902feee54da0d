#include "records/RepositoryKind.h"

using namespace Qt::StringLiterals;

namespace tillery {

QList<RepositoryKind> allRepositoryKinds()
{
    return {RepositoryKind::mercurial, RepositoryKind::git};
}

QString rawValue(RepositoryKind kind)
{
    switch (kind) {
    case RepositoryKind::mercurial:
        return u"mercurial"_s;
    case RepositoryKind::git:
        return u"git"_s;
    }
    Q_UNREACHABLE();
    return QString();
}

std::optional<RepositoryKind> repositoryKindFromRawValue(QStringView raw)
{
    for (const RepositoryKind kind : allRepositoryKinds()) {
        if (raw == rawValue(kind))
            return kind;
    }
    return std::nullopt;
}

} // namespace tillery
