#include "model/VersionControl.h"

#include "git/GitDiffs.h"
#include "git/GitOperations.h"
#include "git/GitSnapshot.h"
#include "mercurial/MercurialDiffs.h"
#include "mercurial/MercurialOperations.h"
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

    QString changesetDiff(const QString &repositoryPath, const Changeset &changeset, const QString &path,
                          const CancellationCheck &isCancelled) const override
    {
        return mercurialChangesetDiff(path, changeset, repositoryPath, isCancelled);
    }

    QByteArray parentContents(const QString &repositoryPath, const QString &path) const override
    {
        return mercurialParentContents(path, repositoryPath);
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

    void commit(const QString &repositoryPath, const QList<WorkingFile> &files, const QString &summary,
                const QString &description, const QString &userName) const override
    {
        QStringList untracked;
        QStringList paths;
        for (const WorkingFile &file : files) {
            paths.append(file.path);
            if (file.state == FileState::untracked)
                untracked.append(file.path);
        }
        mercurial::add(untracked, repositoryPath);
        mercurial::commit(paths, summary, description, userName, repositoryPath);
    }

    void discard(const QString &repositoryPath, const QStringList &paths) const override
    {
        mercurial::discard(paths, repositoryPath);
    }

    void discardAll(const QString &repositoryPath) const override { mercurial::discardAll(repositoryPath); }

    void stash(const QString &repositoryPath, const QString &name) const override
    {
        mercurial::shelve(name, repositoryPath);
    }

    void createBookmark(const QString &repositoryPath, const QString &name) const override
    {
        mercurial::createBookmark(name, repositoryPath);
    }

    void renameBookmark(const QString &repositoryPath, const QString &oldName, const QString &newName) const override
    {
        mercurial::renameBookmark(oldName, newName, repositoryPath);
    }

    void deleteBookmark(const QString &repositoryPath, const QString &name) const override
    {
        mercurial::deleteBookmark(name, repositoryPath);
    }

    void switchTo(const QString &repositoryPath, const QString &target) const override
    {
        mercurial::update(target, repositoryPath);
    }

    void merge(const QString &repositoryPath, const QString &target) const override
    {
        mercurial::merge(target, repositoryPath);
    }

    void squashMerge(const QString &repositoryPath, const QString &target) const override
    {
        mercurial::squashMerge(target, repositoryPath);
    }

    void rebase(const QString &repositoryPath, const QString &destination) const override
    {
        mercurial::rebase(destination, repositoryPath);
    }

    void fetch(const QString &repositoryPath, const RunControl &control) const override
    {
        mercurial::fetch(repositoryPath, control);
    }

    void pull(const QString &repositoryPath, const RunControl &control) const override
    {
        mercurial::pullAndUpdate(repositoryPath, control);
    }

    void push(const QString &repositoryPath, const RunControl &control) const override
    {
        mercurial::push(repositoryPath, control);
    }

    void clone(const QString &source, const QString &destination, const RunControl &control) const override
    {
        mercurial::clone(source, destination, control);
    }

    Repository createRepository(const QString &path) const override { return mercurial::createRepository(path); }

    void setRemoteAddress(const QString &repositoryPath, const QString &address) const override
    {
        mercurial::setDefaultRemote(address, repositoryPath);
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

    QString changesetDiff(const QString &repositoryPath, const Changeset &changeset, const QString &path,
                          const CancellationCheck &isCancelled) const override
    {
        return gitCommitDiff(repositoryPath, changeset.node, path, isCancelled);
    }

    QByteArray parentContents(const QString &repositoryPath, const QString &path) const override
    {
        return gitHeadContents(repositoryPath, path);
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

    void commit(const QString &repositoryPath, const QList<WorkingFile> &files, const QString &summary,
                const QString &description, const QString &userName) const override
    {
        QStringList paths;
        for (const WorkingFile &file : files)
            paths.append(file.path);
        git::commit(repositoryPath, paths, summary, description, userName);
    }

    void discard(const QString &repositoryPath, const QStringList &paths) const override
    {
        git::discard(repositoryPath, paths);
    }

    void discardAll(const QString &repositoryPath) const override { git::discardAll(repositoryPath); }

    void stash(const QString &repositoryPath, const QString &name) const override
    {
        git::stash(repositoryPath, name);
    }

    void createBookmark(const QString &repositoryPath, const QString &name) const override
    {
        git::createBranch(repositoryPath, name);
    }

    void renameBookmark(const QString &repositoryPath, const QString &oldName, const QString &newName) const override
    {
        git::renameBranch(repositoryPath, oldName, newName);
    }

    void deleteBookmark(const QString &repositoryPath, const QString &name) const override
    {
        git::deleteBranch(repositoryPath, name);
    }

    void switchTo(const QString &repositoryPath, const QString &target) const override
    {
        git::switchTo(repositoryPath, target);
    }

    void merge(const QString &repositoryPath, const QString &target) const override
    {
        git::merge(repositoryPath, target);
    }

    void squashMerge(const QString &repositoryPath, const QString &target) const override
    {
        git::squashMerge(repositoryPath, target);
    }

    void rebase(const QString &repositoryPath, const QString &destination) const override
    {
        git::rebase(repositoryPath, destination);
    }

    void fetch(const QString &repositoryPath, const RunControl &control) const override
    {
        git::fetch(repositoryPath, control);
    }

    void pull(const QString &repositoryPath, const RunControl &control) const override
    {
        git::pull(repositoryPath, control);
    }

    void push(const QString &repositoryPath, const RunControl &control) const override
    {
        git::push(repositoryPath, control);
    }

    void clone(const QString &source, const QString &destination, const RunControl &control) const override
    {
        git::clone(source, destination, control);
    }

    Repository createRepository(const QString &path) const override { return git::createRepository(path); }

    void setRemoteAddress(const QString &repositoryPath, const QString &address) const override
    {
        git::setRemoteAddress(repositoryPath, address);
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
