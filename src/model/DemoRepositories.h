#pragma once

#include "records/Repository.h"

#include <QList>
#include <QString>

namespace tillery {

// Two small sample repositories, one Mercurial and one Git, each with some
// history, bookmarks or branches and uncommitted changes (a picture among
// them), made in the folder with the installed tools. Throws the tools'
// failures.
QList<Repository> makeDemoRepositories(const QString &folder);

// A small Git repository in the middle of a merge with a conflicted file.
Repository makeMergingDemoRepository(const QString &folder);

} // namespace tillery
