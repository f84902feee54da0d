#pragma once

#include "records/RepositoryKind.h"

#include <QString>

// What the clone sheet works out from what is typed into it.
namespace tillery {

// The kind an address most likely is: ".git" addresses, the scp form and the
// well-known Git hosts are Git, as is a local Git repository; anything else
// is taken for Mercurial.
RepositoryKind guessCloneKind(const QString &address);

// The folder name a clone of the address gets: its last part, less ".git".
QString cloneFolderName(const QString &address);

// Why a clone of `address` into `parentFolder`/`name` cannot start; empty when it can.
QString cloneProblem(const QString &address, const QString &parentFolder, const QString &name);

} // namespace tillery
