#include "model/CommitIdentity.h"

#include "git/GitParsers.h"

namespace tillery {

bool isUsableGitIdentity(const QString &userName)
{
    return git::parseIdentity(userName).has_value();
}

} // namespace tillery
