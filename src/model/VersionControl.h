#pragma once

#include "process/CancellableRun.h"
#include "records/Changeset.h"
#include "records/RepositoryKind.h"
#include "records/RepositorySnapshot.h"
#include "records/WorkingFile.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace tillery {

// The words that differ between the kinds: "changeset" or "commit",
// "bookmark" or "branch".
struct VersionControlWording {
    QString toolName;
    QString changeset;
    QString bookmark;
};

// One way to reach either backend, so that the model never branches on the
// kind for tool work. Implementations are stateless; every call blocks except
// workingDiff, which stops as soon as its check reports cancellation.
class VersionControl {
public:
    virtual ~VersionControl() = default;

    virtual RepositoryKind kind() const = 0;
    virtual const VersionControlWording &wording() const = 0;

    virtual RepositorySnapshot loadSnapshot(const QString &repositoryPath) const = 0;
    virtual QString workingDiff(const QString &repositoryPath, const WorkingFile &file,
                                const CancellationCheck &isCancelled) const = 0;
    virtual QList<WorkingFile> changesetFiles(const QString &repositoryPath, const Changeset &changeset) const = 0;
    virtual QString changesetDiff(const QString &repositoryPath, const Changeset &changeset,
                                  const QString &path) const = 0;
    virtual QByteArray fileContents(const QString &repositoryPath, const Changeset &changeset,
                                    const WorkingFile &file) const = 0;
    // The diff between a bookmark or branch and the working copy's base.
    virtual QString compareDiff(const QString &repositoryPath, const QString &target) const = 0;
};

// The backend for a kind; it lives for the life of the process.
const VersionControl &versionControl(RepositoryKind kind);

} // namespace tillery
