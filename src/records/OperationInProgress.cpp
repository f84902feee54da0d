#include "records/OperationInProgress.h"

#include <QCoreApplication>

namespace tillery {

QString operationTitle(OperationInProgress operation, RepositoryKind kind)
{
    const bool git = kind == RepositoryKind::git;
    switch (operation) {
    case OperationInProgress::none:
        return QString();
    case OperationInProgress::merge:
        return QCoreApplication::translate("tillery::OperationInProgress", "Merge", "title");
    case OperationInProgress::rebase:
        return QCoreApplication::translate("tillery::OperationInProgress", "Rebase", "title");
    case OperationInProgress::graft:
        return git ? QCoreApplication::translate("tillery::OperationInProgress", "Cherry-Pick", "title")
                   : QCoreApplication::translate("tillery::OperationInProgress", "Graft", "title");
    case OperationInProgress::unshelve:
        return git ? QCoreApplication::translate("tillery::OperationInProgress", "Stash Restore", "title")
                   : QCoreApplication::translate("tillery::OperationInProgress", "Unshelve", "title");
    }
    return QString();
}

QString operationNoun(OperationInProgress operation, RepositoryKind kind)
{
    const bool git = kind == RepositoryKind::git;
    switch (operation) {
    case OperationInProgress::none:
        return QString();
    case OperationInProgress::merge:
        return QCoreApplication::translate("tillery::OperationInProgress", "merge", "within a sentence");
    case OperationInProgress::rebase:
        return QCoreApplication::translate("tillery::OperationInProgress", "rebase", "within a sentence");
    case OperationInProgress::graft:
        return git ? QCoreApplication::translate("tillery::OperationInProgress", "cherry-pick", "within a sentence")
                   : QCoreApplication::translate("tillery::OperationInProgress", "graft", "within a sentence");
    case OperationInProgress::unshelve:
        return git ? QCoreApplication::translate("tillery::OperationInProgress", "stash restore", "within a sentence")
                   : QCoreApplication::translate("tillery::OperationInProgress", "unshelve", "within a sentence");
    }
    return QString();
}

} // namespace tillery
