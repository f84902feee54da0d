#include "records/Repository.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {
const QString pathKey = u"path"_s;
const QString kindKey = u"kind"_s;
} // namespace

size_t qHash(const Repository &repository, size_t seed) noexcept
{
    return qHashMulti(seed, repository.path, static_cast<int>(repository.kind));
}

QJsonObject encodeRepository(const Repository &repository)
{
    return QJsonObject{{pathKey, repository.path}, {kindKey, rawValue(repository.kind)}};
}

std::optional<Repository> decodeRepository(const QJsonObject &object)
{
    const QJsonValue path = object.value(pathKey);
    if (!path.isString())
        return std::nullopt;

    Repository repository{path.toString(), RepositoryKind::mercurial};
    const QJsonValue kind = object.value(kindKey);
    if (kind.isUndefined() || kind.isNull()) {
        const bool hasGitEntry = QFileInfo::exists(QDir(repository.path).filePath(u".git"_s));
        repository.kind = hasGitEntry ? RepositoryKind::git : RepositoryKind::mercurial;
        return repository;
    }
    if (!kind.isString())
        return std::nullopt;
    const std::optional<RepositoryKind> decodedKind = repositoryKindFromRawValue(kind.toString());
    if (!decodedKind)
        return std::nullopt;
    repository.kind = *decodedKind;
    return repository;
}

} // namespace tillery
