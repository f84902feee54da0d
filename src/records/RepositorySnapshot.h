#pragma once

#include "records/Bookmark.h"
#include "records/Changeset.h"
#include "records/OperationInProgress.h"
#include "records/Shelf.h"
#include "records/WorkingFile.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>

namespace tillery {

// Everything one refresh of a repository loads, delivered in one piece.
struct RepositorySnapshot {
    QList<WorkingFile> files;
    QList<Changeset> history;
    QList<Bookmark> bookmarks;
    QString branch;
    std::optional<QString> activeBookmark;
    QMap<QString, QString> paths;
    QString defaultBranch;
    bool currentBranchIsPublished = true;
    // The id of the changeset the working copy is based on; empty before the first.
    QString workingParent;
    // Working files that a commit of chosen lines had set aside when it was
    // cut short, which this load put back.
    QStringList restoredWorkingFiles;
    // The shelves or stash entries, newest first.
    QList<Shelf> shelves;
    // What the working copy is in the middle of, and the files of its
    // conflicts already marked resolved (the unresolved ones are among
    // `files`, as unresolved).
    OperationInProgress operation = OperationInProgress::none;
    QStringList resolvedFiles;

    friend bool operator==(const RepositorySnapshot &, const RepositorySnapshot &) = default;
};

} // namespace tillery
