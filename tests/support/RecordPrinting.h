#pragma once

// Readable failure messages for records compared with QCOMPARE.

#include "records/Annotation.h"
#include "records/Bookmark.h"
#include "records/Changeset.h"
#include "records/CommandOutput.h"
#include "records/Repository.h"
#include "records/WorkingFile.h"

namespace tillery {

char *toString(const WorkingFile &file);
char *toString(const Repository &repository);
char *toString(const Bookmark &bookmark);
char *toString(const Changeset &changeset);
char *toString(const CommandOutput &output);
char *toString(const FileAnnotation &annotation);

} // namespace tillery
