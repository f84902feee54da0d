#include "records/OperationInProgress.h"

#include <QCoreApplication>

namespace tillery {

namespace {

// A text marked for translation with the sense it is used in.
struct Marked {
    const char *source = nullptr;
    const char *comment = nullptr;
};

struct OperationWords {
    Marked title;
    Marked noun;
};

OperationWords wordsOf(OperationInProgress operation, RepositoryKind kind)
{
    const bool git = kind == RepositoryKind::git;
    switch (operation) {
    case OperationInProgress::none:
        return {};
    case OperationInProgress::merge:
        return {QT_TRANSLATE_NOOP3("tillery::OperationInProgress", "Merge", "title"),
                QT_TRANSLATE_NOOP3("tillery::OperationInProgress", "merge", "within a sentence")};
    case OperationInProgress::rebase:
        return {QT_TRANSLATE_NOOP3("tillery::OperationInProgress", "Rebase", "title"),
                QT_TRANSLATE_NOOP3("tillery::OperationInProgress", "rebase", "within a sentence")};
    case OperationInProgress::graft:
        if (git)
            return {QT_TRANSLATE_NOOP3("tillery::OperationInProgress", "Cherry-Pick", "title"),
                    QT_TRANSLATE_NOOP3("tillery::OperationInProgress", "cherry-pick", "within a sentence")};
        return {QT_TRANSLATE_NOOP3("tillery::OperationInProgress", "Graft", "title"),
                QT_TRANSLATE_NOOP3("tillery::OperationInProgress", "graft", "within a sentence")};
    case OperationInProgress::unshelve:
        if (git)
            return {QT_TRANSLATE_NOOP3("tillery::OperationInProgress", "Stash Restore", "title"),
                    QT_TRANSLATE_NOOP3("tillery::OperationInProgress", "stash restore", "within a sentence")};
        return {QT_TRANSLATE_NOOP3("tillery::OperationInProgress", "Unshelve", "title"),
                QT_TRANSLATE_NOOP3("tillery::OperationInProgress", "unshelve", "within a sentence")};
    }
    return {};
}

QString translated(const Marked &text)
{
    return text.source ? QCoreApplication::translate("tillery::OperationInProgress", text.source, text.comment)
                       : QString();
}

} // namespace

QString operationTitle(OperationInProgress operation, RepositoryKind kind)
{
    return translated(wordsOf(operation, kind).title);
}

QString operationNoun(OperationInProgress operation, RepositoryKind kind)
{
    return translated(wordsOf(operation, kind).noun);
}

} // namespace tillery
