#pragma once

#include "process/BackendSteps.h"
#include "process/ChosenChangeSteps.h"
#include "process/Failure.h"
#include "process/OptionLike.h"
#include "process/VersionControl.h"
#include "records/TextDecoding.h"

#include <QDir>

namespace tillery {

// The recipes both backends follow, written once over a tool: `Tool` says how
// a command runs (run, root) and what each command's arguments are. A backend
// derives from it and adds what its kind does its own way.
template <typename Tool>
class ToolBackend : public VersionControl {
public:
    QString workingDiff(const QString &repositoryPath, const WorkingFile &file, const CancellationCheck &isCancelled,
                        WhitespaceChanges whitespace = WhitespaceChanges::shown) const override
    {
        if (std::optional<QString> diff = diffWithoutTool(repositoryPath, file, isCancelled))
            return *diff;
        return trackedFileDiff(repositoryPath, file.path, RunControl{isCancelled, {}}, whitespace);
    }

    QString changesetDiff(const QString &repositoryPath, const Changeset &changeset, const QString &path,
                          const CancellationCheck &isCancelled = {},
                          WhitespaceChanges whitespace = WhitespaceChanges::shown) const override
    {
        return text(Tool::changesetDiffCommand(checkedChangesetId(changeset), path, whitespace), repositoryPath,
                    RunControl{isCancelled, {}});
    }

    QByteArray fileContents(const QString &repositoryPath, const Changeset &changeset,
                            const WorkingFile &file) const override
    {
        const QString &node = checkedChangesetId(changeset);
        const QString revision = file.state == FileState::removed ? Tool::firstParentOf(node) : node;
        return outputOf(Tool::fileContentsCommand(revision, file.path), repositoryPath);
    }

    std::optional<QString> resolveChangeset(const QString &repositoryPath, const QString &name) const override
    {
        const CommandOutput resolved = Tool::run(Tool::resolveChangesetCommand(name), repositoryPath);
        const QString node = decodeUtf8OrEmpty(resolved.standardOutput).trimmed();
        return resolved.status == 0 && !node.isEmpty() ? std::optional(node) : std::nullopt;
    }

    QByteArray parentContents(const QString &repositoryPath, const QString &path) const override
    {
        return outputOf(Tool::fileContentsCommand(Tool::workingParent(), path), repositoryPath);
    }

    QString compareDiff(const QString &repositoryPath, const QString &target) const override
    {
        refuseName(target);
        return text(Tool::compareDiffCommand(target), repositoryPath);
    }

    void createBookmark(const QString &repositoryPath, const QString &name) const override
    {
        runNamed(Tool::createBookmarkCommand, name, repositoryPath);
    }

    void renameBookmark(const QString &repositoryPath, const QString &oldName, const QString &newName) const override
    {
        refuseName(oldName);
        refuseName(newName);
        Tool::run(Tool::renameBookmarkCommand(oldName, newName), repositoryPath);
    }

    void deleteBookmark(const QString &repositoryPath, const QString &name) const override
    {
        runNamed(Tool::deleteBookmarkCommand, name, repositoryPath);
    }

    void switchTo(const QString &repositoryPath, const QString &target) const override
    {
        runNamed(Tool::switchCommand, target, repositoryPath);
    }

    void merge(const QString &repositoryPath, const QString &target) const override
    {
        runNamed(Tool::mergeCommand, target, repositoryPath);
    }

    void rebase(const QString &repositoryPath, const QString &destination) const override
    {
        runNamed(Tool::rebaseCommand, destination, repositoryPath);
    }

    void fetch(const QString &repositoryPath, const RunControl &control) const override
    {
        Tool::run(Tool::fetchCommand(), repositoryPath, control);
    }

    void pull(const QString &repositoryPath, const RunControl &control) const override
    {
        Tool::run(Tool::pullCommand(), repositoryPath, control);
    }

    void clone(const QString &source, const QString &destination, const RunControl &control) const override
    {
        refuseOptionLike(source, QT_TRANSLATE_NOOP("tillery::OptionLike", "A clone source cannot begin with “-”."));
        refuseOptionLike(destination,
                         QT_TRANSLATE_NOOP("tillery::OptionLike", "A clone destination cannot begin with “-”."));
        Tool::run(Tool::cloneCommand(source, destination), std::nullopt, control);
    }

    Repository createRepository(const QString &path) const override
    {
        refuseOptionLike(path, QT_TRANSLATE_NOOP("tillery::OptionLike", "A repository folder cannot begin with “-”."));
        if (!QDir().mkpath(path))
            throw PlatformFailure::folderNotCreated(path);
        Tool::run(Tool::initCommand(path), std::nullopt);
        return Repository{Tool::root(path), kind()};
    }

    QString discardChosen(const QString &repositoryPath, const ChosenChanges &chosen) const override
    {
        const QByteArray kept = workingVersionWithout(repositoryPath, chosen);
        const QString copy = backUpWorkingFile(repositoryPath, metadataFolder(repositoryPath), chosen.file.path);
        writeWorkingFile(repositoryPath, chosen.file.path, kept);
        return copy;
    }

protected:
    // Where the tool keeps the repository's own data (.hg, .git).
    virtual QString metadataFolder(const QString &repositoryPath) const = 0;

    // The diff of a file the tool tracks.
    virtual QString trackedFileDiff(const QString &repositoryPath, const QString &path, const RunControl &control,
                                    WhitespaceChanges whitespace) const
    {
        return text(Tool::workingDiffCommand(path, whitespace), repositoryPath, control);
    }

    QByteArray outputOf(const ToolCommand &command, const QString &repositoryPath, const RunControl &control = {}) const
    {
        return Tool::run(command, repositoryPath, control).standardOutput;
    }

    // What the command prints, as text; empty when it is not UTF-8.
    QString text(const ToolCommand &command, const QString &repositoryPath, const RunControl &control = {}) const
    {
        return decodeUtf8OrEmpty(outputOf(command, repositoryPath, control));
    }

    // The revision a file is annotated as of: the changeset, refused when it
    // would be read as an option, or else the working copy's parent.
    static QString annotatedRevision(const std::optional<QString> &node)
    {
        if (!node)
            return Tool::workingParent();
        refuseOptionLike(*node, QT_TRANSLATE_NOOP("tillery::OptionLike", "A revision cannot begin with “-”."));
        return *node;
    }

    // A bookmark or branch name that would be read as an option is refused.
    void refuseName(const QString &name) const
    {
        refuseOptionLike(name,
                         kind() == RepositoryKind::git
                             ? QT_TRANSLATE_NOOP("tillery::OptionLike", "A branch name cannot begin with “-”.")
                             : QT_TRANSLATE_NOOP("tillery::OptionLike", "A bookmark name cannot begin with “-”."));
    }

    void runNamed(ToolCommand (*command)(const QString &), const QString &name, const QString &repositoryPath) const
    {
        refuseName(name);
        Tool::run(command(name), repositoryPath);
    }
};

} // namespace tillery
