#pragma once

#include "process/Cancellation.h"
#include "records/Bookmark.h"
#include "records/Changeset.h"
#include "records/WorkingFile.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// The steps both backends take the same way.
namespace tillery {

// Refuses a source or destination that would be read as an option.
void refuseCloneArguments(const QString &source, const QString &destination);

// Refuses a folder that would be read as an option, then makes it and its
// parents; fails with PlatformFailure when it cannot.
void makeRepositoryFolder(const QString &path);

// The changeset's id, refused when it would be read as an option.
const QString &checkedChangesetId(const Changeset &changeset);

// The working-copy diff that needs no tool: an untracked file's "new file"
// diff. Throws CancellationFailure when the check already says so.
std::optional<QString> diffWithoutTool(const QString &repositoryPath, const WorkingFile &file,
                                       const CancellationCheck &isCancelled);

QStringList pathsOf(const QList<WorkingFile> &files);

// Each path as `argument` passes it to the tool.
QStringList mappedPaths(const QStringList &paths, QString (*argument)(const QString &));

// The name of the first active bookmark or branch.
std::optional<QString> activeBookmarkName(const QList<Bookmark> &bookmarks);

} // namespace tillery
