#include "model/VersionControl.h"

#include "git/GitBackend.h"
#include "mercurial/MercurialBackend.h"

namespace tillery {

const VersionControl &versionControl(RepositoryKind kind)
{
    switch (kind) {
    case RepositoryKind::mercurial:
        return mercurialBackend();
    case RepositoryKind::git:
        return gitBackend();
    }
    Q_UNREACHABLE();
    return mercurialBackend();
}

} // namespace tillery
