#include "git/GitTool.h"

#include "git/GitArguments.h"
#include "process/BackendSteps.h"

using namespace Qt::StringLiterals;
using tillery::git::fileArgument;

namespace tillery {

namespace {

// A diff as Tillery reads it, whatever the person's configuration says about
// colour, external tools, path prefixes and quoting.
QStringList diffArguments(const QString &command = u"diff"_s,
                          WhitespaceChanges whitespace = WhitespaceChanges::shown)
{
    QStringList arguments{u"-c"_s,
                          u"core.quotePath=false"_s,
                          command,
                          u"--no-ext-diff"_s,
                          u"--no-color"_s,
                          u"--src-prefix=a/"_s,
                          u"--dst-prefix=b/"_s};
    if (whitespace == WhitespaceChanges::ignored)
        arguments.append(u"--ignore-space-change"_s);
    return arguments;
}

QStringList fileArguments(const QStringList &paths)
{
    return mappedPaths(paths, fileArgument);
}

} // namespace

ToolCommand GitTool::statusCommand()
{
    return {{u"status"_s, u"--porcelain=v1"_s, u"-z"_s, u"--untracked-files=all"_s}, {0}};
}

ToolCommand GitTool::filesystemMonitorScopeCommand()
{
    return {{u"config"_s, u"--show-scope"_s, u"--get"_s, u"core.fsmonitor"_s}, {0, 1}};
}

ToolCommand GitTool::withoutFilesystemMonitor(ToolCommand command)
{
    command.arguments = QStringList{u"-c"_s, u"core.fsmonitor=false"_s} + command.arguments;
    return command;
}

ToolCommand GitTool::localBranchesCommand()
{
    return {{u"for-each-ref"_s,
             u"--format=%(refname:short)%09%(objectname)%09%(HEAD)%09%(committerdate:unix)%09"
             "%(upstream:short)%09%(upstream:track)"_s,
             u"refs/heads"_s},
            {0}};
}

ToolCommand GitTool::remoteBranchesCommand()
{
    return {{u"for-each-ref"_s, u"--format=%(refname)"_s, u"refs/remotes"_s}, {0}};
}

ToolCommand GitTool::unpushedCountCommand(const QString &counterpart, const QString &branch)
{
    return {{u"rev-list"_s, u"--count"_s, counterpart + u"..refs/heads/"_s + branch}, {0}};
}

ToolCommand GitTool::currentBranchCommand()
{
    return {{u"symbolic-ref"_s, u"--quiet"_s, u"--short"_s, u"HEAD"_s}, {0, 1}};
}

ToolCommand GitTool::verifyHeadCommand()
{
    return {{u"rev-parse"_s, u"--verify"_s, u"HEAD"_s}, {0, 128}};
}

ToolCommand GitTool::historyCommand()
{
    return {{u"log"_s, u"--all"_s, u"--date-order"_s, u"-n"_s, QString::number(historyLimit), u"-z"_s,
             u"--format=/%H%x00%P%x00%an <%ae>%x00%at%x00%B"_s, u"--name-only"_s, u"--encoding=UTF-8"_s,
             u"--no-color"_s, u"--no-show-signature"_s},
            {0}};
}

ToolCommand GitTool::historyStreamCommand(const HistoryFilter &filter, const std::optional<QString> &commit)
{
    QStringList arguments = historyCommand().arguments;
    arguments.remove(arguments.indexOf(u"-n"_s), 2);
    if (!filter.words.isEmpty())
        arguments.append(u"--all-match"_s);
    for (const QString &word : filter.words)
        arguments.append(u"--grep="_s + word);
    for (const QString &author : filter.authors)
        arguments.append(u"--author="_s + author);
    // Every pattern is a literal string, case ignored.
    arguments += QStringList{u"--fixed-strings"_s, u"--regexp-ignore-case"_s};
    if (commit)
        arguments.replace(arguments.indexOf(u"--all"_s), u"--no-walk"_s);
    if (!filter.path.isEmpty() && filter.followsRenames)
        arguments.append(u"--follow"_s);
    arguments.append(u"--end-of-options"_s);
    if (commit)
        arguments.append(*commit);
    if (!filter.path.isEmpty())
        arguments += QStringList{u"--"_s, u":(literal)"_s + filter.path};
    return {arguments, {0}};
}

ToolCommand GitTool::resolveChangesetCommand(const QString &name)
{
    return {{u"rev-parse"_s, u"--verify"_s, u"--quiet"_s, u"--end-of-options"_s, name + u"^{commit}"_s},
            {0, 1, 128}};
}

ToolCommand GitTool::tagTargetsCommand()
{
    return {{u"for-each-ref"_s, u"--format=%(objectname)%09%(*objectname)%09%(refname:short)"_s, u"refs/tags"_s}, {0}};
}

ToolCommand GitTool::allRefsCommand()
{
    return {{u"for-each-ref"_s, u"--format=%(objectname) %(refname)"_s}, {0}};
}

ToolCommand GitTool::shallowFileCommand()
{
    return {{u"rev-parse"_s, u"--git-path"_s, u"shallow"_s}, {0}};
}

ToolCommand GitTool::commitCountCommand()
{
    return {{u"rev-list"_s, u"--count"_s, u"--all"_s}, {0}};
}

ToolCommand GitTool::remotesCommand()
{
    return {{u"remote"_s}, {0}};
}

ToolCommand GitTool::remoteUrlCommand(const QString &remote)
{
    // A remote may be named "-x"; "--" keeps such a name from being read as an option.
    return {{u"remote"_s, u"get-url"_s, u"--"_s, remote}, {0}};
}

ToolCommand GitTool::originHeadCommand()
{
    return {{u"symbolic-ref"_s, u"--quiet"_s, u"--short"_s, u"refs/remotes/origin/HEAD"_s}, {0, 1}};
}

ToolCommand GitTool::upstreamCommand()
{
    return {{u"rev-parse"_s, u"--abbrev-ref"_s, u"--symbolic-full-name"_s, u"@{upstream}"_s}, {0, 128}};
}

ToolCommand GitTool::workingDiffCommand(const QString &path, WhitespaceChanges whitespace)
{
    return {diffArguments(u"diff"_s, whitespace) + QStringList{u"HEAD"_s, u"--"_s, fileArgument(path)}, {0}};
}

ToolCommand GitTool::stagedDiffCommand(const QString &path, WhitespaceChanges whitespace)
{
    return {diffArguments(u"diff"_s, whitespace) + QStringList{u"--cached"_s, u"--"_s, fileArgument(path)}, {0}};
}

ToolCommand GitTool::changesetFilesCommand(const QString &hash)
{
    return {{u"diff-tree"_s, u"--root"_s, u"--no-commit-id"_s, u"--name-status"_s, u"--find-renames"_s, u"-r"_s,
             u"-z"_s, hash},
            {0}};
}

ToolCommand GitTool::changesetDiffCommand(const QString &hash, const QString &path, WhitespaceChanges whitespace)
{
    return {diffArguments(u"show"_s, whitespace)
                + QStringList{u"--format="_s, u"--no-show-signature"_s, u"--find-renames"_s, hash, u"--"_s,
                              fileArgument(path)},
            {0}};
}

ToolCommand GitTool::fileContentsCommand(const QString &revision, const QString &path)
{
    return {{u"show"_s, revision + u':' + path}, {0}};
}

ToolCommand GitTool::compareDiffCommand(const QString &branch)
{
    return {diffArguments() + QStringList{branch + u"...HEAD"_s}, {0}};
}

ToolCommand GitTool::annotateCommand(const QString &revision, const QString &path)
{
    return {{u"-c"_s, u"i18n.logOutputEncoding=UTF-8"_s, u"blame"_s, u"--porcelain"_s, u"--no-textconv"_s, revision,
             u"--"_s, path},
            {0}};
}


ToolCommand GitTool::stageFilesCommand(const QStringList &paths)
{
    // update-index reads paths as they are; unlike add it takes a removal
    // that is already staged, with the file gone from the index too.
    return {QStringList{u"update-index"_s, u"--add"_s, u"--remove"_s, u"--"_s} + paths, {0}};
}

ToolCommand GitTool::commitCommand(const QStringList &paths, const QString &message,
                                   const std::optional<git::GitIdentity> &identity, bool amend)
{
    ToolCommand command = commitIndexCommand(message, identity, amend);
    if (paths.isEmpty() && amend)
        command.arguments << u"--only"_s;
    else
        command.arguments << u"--"_s << fileArguments(paths);
    return command;
}

ToolCommand GitTool::readHeadTreeCommand(bool hasHead)
{
    return {{u"read-tree"_s, hasHead ? u"HEAD"_s : u"--empty"_s}, {0}};
}

ToolCommand GitTool::headEntriesCommand(const QStringList &paths)
{
    // ls-tree reads paths as they are, never as patterns.
    return {QStringList{u"ls-tree"_s, u"-z"_s, u"HEAD"_s, u"--"_s} + paths, {0}};
}

ToolCommand GitTool::applyToIndexCommand()
{
    return {{u"apply"_s, u"--cached"_s, u"--whitespace=nowarn"_s}, {0, 1}};
}

ToolCommand GitTool::commitIndexCommand(const QString &message, const std::optional<git::GitIdentity> &identity,
                                        bool amend)
{
    QStringList arguments;
    if (identity)
        arguments << u"-c"_s << u"user.name="_s + identity->name << u"-c"_s << u"user.email="_s + identity->email;
    arguments << u"commit"_s << u"--message="_s + message;
    if (amend)
        arguments << u"--amend"_s;
    return {arguments, {0}};
}

ToolCommand GitTool::stagedNamesCommand()
{
    return {{u"diff-index"_s, u"--cached"_s, u"--name-only"_s, u"--no-renames"_s, u"-z"_s, u"HEAD"_s, u"--"_s},
            {0, 128}};
}

ToolCommand GitTool::gitFolderCommand()
{
    return {{u"rev-parse"_s, u"--absolute-git-dir"_s}, {0}};
}

ToolCommand GitTool::trackedFilesCommand()
{
    return {{u"ls-tree"_s, u"-r"_s, u"-z"_s, u"--name-only"_s, u"HEAD"_s}, {0}};
}

ToolCommand GitTool::restoreCommand(const QStringList &paths)
{
    return {QStringList{u"restore"_s, u"--source=HEAD"_s, u"--staged"_s, u"--worktree"_s, u"--"_s}
                + fileArguments(paths),
            {0}};
}

ToolCommand GitTool::forgetNewFilesCommand(const QStringList &paths)
{
    return {QStringList{u"rm"_s, u"--cached"_s, u"--ignore-unmatch"_s, u"--"_s} + fileArguments(paths), {0}};
}

ToolCommand GitTool::stashCommand(const QString &message)
{
    return {{u"stash"_s, u"push"_s, u"--include-untracked"_s, u"--message="_s + message}, {0}};
}

ToolCommand GitTool::createBookmarkCommand(const QString &name)
{
    return {{u"checkout"_s, u"-b"_s, name}, {0}};
}

ToolCommand GitTool::renameBookmarkCommand(const QString &oldName, const QString &newName)
{
    return {{u"branch"_s, u"-m"_s, oldName, newName}, {0}};
}

ToolCommand GitTool::detachCommand()
{
    return {{u"checkout"_s, u"--detach"_s}, {0}};
}

ToolCommand GitTool::deleteBookmarkCommand(const QString &name)
{
    return {{u"branch"_s, u"-D"_s, name}, {0}};
}

ToolCommand GitTool::switchCommand(const QString &target)
{
    // The closing "--" makes the target a revision only: a name that is no
    // branch must fail rather than restore a file of that name.
    return {{u"checkout"_s, target, u"--"_s}, {0}};
}

ToolCommand GitTool::mergeCommand(const QString &name)
{
    return {{u"merge"_s, name}, {0}};
}

ToolCommand GitTool::squashMergeCommand(const QString &name)
{
    return {{u"merge"_s, u"--squash"_s, name}, {0}};
}

ToolCommand GitTool::rebaseCommand(const QString &name)
{
    return {{u"rebase"_s, name}, {0}};
}

ToolCommand GitTool::fetchCommand()
{
    return {{u"fetch"_s, u"--all"_s, u"--prune"_s, u"--progress"_s}, {0}};
}

ToolCommand GitTool::pullCommand()
{
    return {{u"pull"_s, u"--progress"_s}, {0}};
}

ToolCommand GitTool::pushCommand()
{
    return {{u"push"_s, u"--progress"_s}, {0}};
}

ToolCommand GitTool::publishCommand(const QString &branch)
{
    return {{u"push"_s, u"--progress"_s, u"--set-upstream"_s, u"origin"_s, branch}, {0}};
}

ToolCommand GitTool::cloneCommand(const QString &source, const QString &destination)
{
    return {{u"clone"_s, u"--progress"_s, source, destination}, {0}};
}

ToolCommand GitTool::initCommand(const QString &path)
{
    return {{u"init"_s, path}, {0}};
}

ToolCommand GitTool::originUrlCommand()
{
    return {{u"config"_s, u"--get"_s, u"remote.origin.url"_s}, {0, 1}};
}

ToolCommand GitTool::setOriginCommand(const QString &address)
{
    return {{u"remote"_s, u"set-url"_s, u"origin"_s, address}, {0}};
}

ToolCommand GitTool::addOriginCommand(const QString &address)
{
    return {{u"remote"_s, u"add"_s, u"origin"_s, address}, {0}};
}

// Shelves: stash entries.

namespace {

// The log that "git stash list" runs, in one process instead of two; no
// stash yet lists nothing.
ToolCommand stashLog(const QString &format)
{
    return {{u"log"_s, u"--walk-reflogs"_s, u"--first-parent"_s, u"--ignore-missing"_s, u"--format="_s + format,
             u"--encoding=UTF-8"_s, u"--no-color"_s, u"--no-show-signature"_s, u"refs/stash"_s, u"--"_s},
            {0}};
}

} // namespace

ToolCommand GitTool::stashListCommand()
{
    return stashLog(u"%H%x00%ct%x00%s"_s);
}

ToolCommand GitTool::stashIdsCommand()
{
    return stashLog(u"%H"_s);
}

ToolCommand GitTool::stashFilesCommand(const QString &id)
{
    return {{u"diff-tree"_s, u"-r"_s, u"-z"_s, u"--name-status"_s, u"--find-renames"_s, id + u"^1"_s, id}, {0}};
}

ToolCommand GitTool::stashUntrackedFilesCommand(const QString &id)
{
    return {{u"diff-tree"_s, u"--root"_s, u"--no-commit-id"_s, u"-r"_s, u"-z"_s, u"--name-status"_s, id + u"^3"_s},
            {0, 128}};
}

ToolCommand GitTool::stashDiffCommand(const QString &id, const QString &path)
{
    return {diffArguments() + QStringList{u"--find-renames"_s, id + u"^1"_s, id, u"--"_s, fileArgument(path)}, {0}};
}

ToolCommand GitTool::stashUntrackedDiffCommand(const QString &id, const QString &path)
{
    return {diffArguments(u"show"_s)
                + QStringList{u"--format="_s, u"--no-show-signature"_s, id + u"^3"_s, u"--"_s, fileArgument(path)},
            {0, 128}};
}

ToolCommand GitTool::stashApplyCommand(const QString &id)
{
    return {{u"stash"_s, u"apply"_s, id}, {0}};
}

ToolCommand GitTool::stashDropCommand(const QString &reference)
{
    return {{u"stash"_s, u"drop"_s, reference}, {0}};
}

ToolCommand GitTool::unmergedFilesCommand()
{
    return {{u"ls-files"_s, u"--unmerged"_s, u"-z"_s}, {0}};
}

ToolCommand GitTool::unstageCommand(const QStringList &paths)
{
    return {QStringList{u"reset"_s, u"--quiet"_s, u"HEAD"_s, u"--"_s} + fileArguments(paths), {0}};
}

ToolCommand GitTool::stashFilesPushCommand(const QString &message, const QStringList &paths)
{
    return {QStringList{u"stash"_s, u"push"_s, u"--include-untracked"_s, u"--message="_s + message, u"--"_s}
                + fileArguments(paths),
            {0}};
}

// Conflicts of the operation in progress.

ToolCommand GitTool::unmergedEntriesCommand(const QStringList &paths)
{
    return {QStringList{u"ls-files"_s, u"-z"_s, u"--unmerged"_s, u"--"_s} + fileArguments(paths), {0}};
}

ToolCommand GitTool::resolveUndoCommand(const QStringList &paths)
{
    return {QStringList{u"ls-files"_s, u"-z"_s, u"--resolve-undo"_s, u"--"_s} + fileArguments(paths), {0}};
}

ToolCommand GitTool::indexInfoCommand()
{
    return {{u"update-index"_s, u"-z"_s, u"--index-info"_s}, {0}};
}

ToolCommand GitTool::checkoutSideCommand(const QStringList &paths, bool ours)
{
    return {QStringList{u"checkout"_s, ours ? u"--ours"_s : u"--theirs"_s, u"--"_s} + fileArguments(paths), {0}};
}

ToolCommand GitTool::removeFilesCommand(const QStringList &paths)
{
    return {QStringList{u"rm"_s, u"--quiet"_s, u"--force"_s, u"--"_s} + fileArguments(paths), {0}};
}

ToolCommand GitTool::mergeToolSettingsCommand()
{
    return {{u"config"_s, u"--show-scope"_s, u"-z"_s, u"--get-regexp"_s, u"^merge\\.tool$|^mergetool\\."_s}, {0, 1}};
}

ToolCommand GitTool::mergeToolCommand(const QString &path)
{
    return {{u"mergetool"_s, u"--no-prompt"_s, u"--"_s, fileArgument(path)}, {0}};
}

namespace {

QString operationCommand(OperationInProgress operation)
{
    switch (operation) {
    case OperationInProgress::rebase:
        return u"rebase"_s;
    case OperationInProgress::graft:
        return u"cherry-pick"_s;
    default:
        return u"merge"_s;
    }
}

} // namespace

ToolCommand GitTool::continueCommand(OperationInProgress operation, const QString &message)
{
    if (operation == OperationInProgress::merge)
        return {{u"commit"_s, message.isEmpty() ? u"--no-edit"_s : u"--message="_s + message}, {0}};
    return {{operationCommand(operation), u"--continue"_s}, {0}};
}

ToolCommand GitTool::abortCommand(OperationInProgress operation)
{
    return {{operationCommand(operation), u"--abort"_s}, {0}};
}

ToolCommand GitTool::stashCommitIdsCommand()
{
    return {{u"stash"_s, u"list"_s, u"--format=%H"_s}, {0}};
}

ToolCommand GitTool::changedPathsCommand(const QString &commit)
{
    return {{u"diff-tree"_s, u"-r"_s, u"-z"_s, u"--name-only"_s, u"--no-renames"_s, commit + u'^', commit, u"--"_s},
            {0}};
}

ToolCommand GitTool::changesPatchCommand(const QString &commit, const QStringList &paths)
{
    return {QStringList{u"diff-tree"_s, u"-r"_s, u"-p"_s, u"--binary"_s, u"--full-index"_s, u"--no-renames"_s,
                        u"--no-color"_s, u"--src-prefix=a/"_s, u"--dst-prefix=b/"_s, commit + u'^', commit, u"--"_s}
                + fileArguments(paths),
            {0}};
}

ToolCommand GitTool::untrackedPartCommand(const QString &stash)
{
    return {{u"rev-parse"_s, u"--verify"_s, u"--quiet"_s, stash + u"^3"_s}, {0, 1}};
}

ToolCommand GitTool::reverseApplyCommand(bool check)
{
    QStringList arguments{u"apply"_s, u"--reverse"_s, u"--index"_s, u"--whitespace=nowarn"_s};
    if (check)
        arguments.append(u"--check"_s);
    return {arguments, {0, 1}};
}

ToolCommand GitTool::treeEntriesCommand(const QString &tree, const QStringList &paths)
{
    return {QStringList{u"ls-tree"_s, u"-r"_s, u"-z"_s, tree, u"--"_s} + paths, {0}};
}

// Amending and undoing the last commit

ToolCommand GitTool::headAndParentCommand()
{
    return {{u"rev-list"_s, u"--first-parent"_s, u"--max-count=2"_s, u"HEAD"_s, u"--"_s}, {0, 128}};
}

ToolCommand GitTool::headOnUpstreamCommand()
{
    return {{u"merge-base"_s, u"--is-ancestor"_s, u"HEAD"_s, u"@{upstream}"_s}, {0, 1, 128}};
}

ToolCommand GitTool::upstreamNameCommand()
{
    return {{u"rev-parse"_s, u"--abbrev-ref"_s, u"--symbolic-full-name"_s, u"@{upstream}"_s}, {0}};
}

ToolCommand GitTool::undoLastCommitCommand()
{
    return {{u"reset"_s, u"--soft"_s, u"--quiet"_s, u"HEAD~1"_s, u"--"_s}, {0}};
}

} // namespace tillery
