#include "model/VersionControl.h"

#include "git/GitDiffs.h"
#include "git/GitSnapshot.h"
#include "mercurial/MercurialDiffs.h"
#include "mercurial/MercurialSnapshot.h"

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

class MercurialVersionControl final : public VersionControl {
public:
    RepositoryKind kind() const override { return RepositoryKind::mercurial; }

    const VersionControlWording &wording() const override
    {
        static const VersionControlWording words{u"Mercurial"_s, u"changeset"_s, u"bookmark"_s};
        return words;
    }

    RepositorySnapshot loadSnapshot(const QString &repositoryPath) const override
    {
        return loadMercurialSnapshot(repositoryPath);
    }

    QString workingDiff(const QString &repositoryPath, const WorkingFile &file,
                        const CancellationCheck &isCancelled) const override
    {
        return mercurialWorkingDiff(file.path, file.state, repositoryPath, isCancelled);
    }

    QList<WorkingFile> changesetFiles(const QString &repositoryPath, const Changeset &changeset) const override
    {
        return mercurialChangesetFiles(changeset, repositoryPath);
    }

    QString changesetDiff(const QString &repositoryPath, const Changeset &changeset,
                          const QString &path) const override
    {
        return mercurialChangesetDiff(path, changeset, repositoryPath);
    }

    QByteArray fileContents(const QString &repositoryPath, const Changeset &changeset,
                            const WorkingFile &file) const override
    {
        return mercurialFileContents(file.path, file.state, changeset, repositoryPath);
    }

    QString compareDiff(const QString &repositoryPath, const QString &target) const override
    {
        return mercurialCompareDiff(target, repositoryPath);
    }
};

class GitVersionControl final : public VersionControl {
public:
    RepositoryKind kind() const override { return RepositoryKind::git; }

    const VersionControlWording &wording() const override
    {
        static const VersionControlWording words{u"Git"_s, u"commit"_s, u"branch"_s};
        return words;
    }

    RepositorySnapshot loadSnapshot(const QString &repositoryPath) const override
    {
        return loadGitSnapshot(repositoryPath);
    }

    QString workingDiff(const QString &repositoryPath, const WorkingFile &file,
                        const CancellationCheck &isCancelled) const override
    {
        return gitWorkingDiff(repositoryPath, file, isCancelled);
    }

    QList<WorkingFile> changesetFiles(const QString &repositoryPath, const Changeset &changeset) const override
    {
        return gitCommitFiles(repositoryPath, changeset.node);
    }

    QString changesetDiff(const QString &repositoryPath, const Changeset &changeset,
                          const QString &path) const override
    {
        return gitCommitDiff(repositoryPath, changeset.node, path);
    }

    QByteArray fileContents(const QString &repositoryPath, const Changeset &changeset,
                            const WorkingFile &file) const override
    {
        return gitFileContents(repositoryPath, changeset.node, file);
    }

    QString compareDiff(const QString &repositoryPath, const QString &target) const override
    {
        return gitCompareDiff(repositoryPath, target);
    }
};

} // namespace

const VersionControl &versionControl(RepositoryKind kind)
{
    static const MercurialVersionControl mercurial;
    static const GitVersionControl git;
    switch (kind) {
    case RepositoryKind::mercurial:
        return mercurial;
    case RepositoryKind::git:
        return git;
    }
    Q_UNREACHABLE();
    return mercurial;
}

} // namespace tillery
