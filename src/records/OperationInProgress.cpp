#include "records/OperationInProgress.h"

using namespace Qt::StringLiterals;

namespace tillery {

QString operationTitle(OperationInProgress operation, RepositoryKind kind)
{
    const bool git = kind == RepositoryKind::git;
    switch (operation) {
    case OperationInProgress::none:
        return QString();
    case OperationInProgress::merge:
        return u"Merge"_s;
    case OperationInProgress::rebase:
        return u"Rebase"_s;
    case OperationInProgress::graft:
        return git ? u"Cherry-Pick"_s : u"Graft"_s;
    case OperationInProgress::unshelve:
        return git ? u"Stash Restore"_s : u"Unshelve"_s;
    }
    return QString();
}

} // namespace tillery
