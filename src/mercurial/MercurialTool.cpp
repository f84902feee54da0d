#include "mercurial/MercurialTool.h"

#include "mercurial/MercurialFileArguments.h"
#include "process/BackendSteps.h"

using namespace Qt::StringLiterals;
using tillery::mercurial::fileArgument;

namespace tillery {

namespace {

QStringList diffArguments(WhitespaceChanges whitespace)
{
    QStringList arguments{u"diff"_s, u"--git"_s};
    if (whitespace == WhitespaceChanges::ignored)
        arguments.append(u"--ignore-space-change"_s);
    return arguments;
}

} // namespace

ToolCommand MercurialTool::statusCommand()
{
    return {{u"status"_s, u"-0"_s}, {0}};
}

ToolCommand MercurialTool::unresolvedFilesCommand()
{
    return {{u"resolve"_s, u"--list"_s}, {0, 1}};
}

ToolCommand MercurialTool::historyCommand()
{
    return {{u"log"_s, u"-l"_s, QString::number(historyLimit), u"-Tjson"_s}, {0}};
}

ToolCommand MercurialTool::historyPageCommand(const QString &revset, int limit, bool withCopies)
{
    const QString fields = u"json(rev,node,branch,phase,user,date,desc,bookmarks,tags,parents,file_copies)"_s;
    return {{u"log"_s, u"--rev="_s + revset, u"--limit="_s + QString::number(limit),
             u"--template="_s + (withCopies ? fields : u"json"_s)},
            {0}};
}

// A quoted revset string is looked up as one name, never read as an expression.
ToolCommand MercurialTool::resolveChangesetCommand(const QString &name)
{
    return {{u"log"_s, u"--rev="_s + mercurial::revsetString(name), u"--limit=1"_s, u"-T{node}"_s}, {0, 255}};
}

ToolCommand MercurialTool::bookmarksCommand()
{
    return {{u"bookmarks"_s, u"-Tjson"_s}, {0, 1}};
}

ToolCommand MercurialTool::bookmarkDatesCommand()
{
    return {{u"log"_s, u"-r"_s, u"bookmark()"_s, u"-T"_s, u"{node}\t{date|hgdate}\n"_s}, {0, 1}};
}

ToolCommand MercurialTool::currentBranchCommand()
{
    return {{u"branch"_s}, {0}};
}

ToolCommand MercurialTool::workingParentCommand()
{
    return {{u"log"_s, u"--rev=wdir()"_s, u"-T{p1node}\n{p2node}"_s}, {0}};
}

ToolCommand MercurialTool::pathsCommand()
{
    return {{u"paths"_s}, {0, 1}};
}

ToolCommand MercurialTool::workingDiffCommand(const QString &path, WhitespaceChanges whitespace)
{
    return {diffArguments(whitespace) + QStringList{u"--"_s, fileArgument(path)}, {0}};
}

ToolCommand MercurialTool::parentFilesCommand(const QString &folder, const QStringList &paths)
{
    // "%p" is each file's path; a "%" of the folder's own is written "%%".
    return {QStringList{u"cat"_s, u"--rev=."_s, u"--output="_s + QString(folder).replace(u'%', u"%%"_s) + u"/%p"_s,
                        u"--"_s}
                + mappedPaths(paths, fileArgument),
            {0}};
}

ToolCommand MercurialTool::changesetFilesCommand(const QString &node)
{
    return {{u"status"_s, u"--change="_s + node, u"-0"_s}, {0}};
}

ToolCommand MercurialTool::changesetDiffCommand(const QString &node, const QString &path, WhitespaceChanges whitespace)
{
    return {diffArguments(whitespace) + QStringList{u"--change="_s + node, u"--"_s, fileArgument(path)}, {0}};
}

ToolCommand MercurialTool::fileContentsCommand(const QString &revision, const QString &path)
{
    return {{u"cat"_s, u"--rev="_s + revision, u"--"_s, fileArgument(path)}, {0}};
}

ToolCommand MercurialTool::compareDiffCommand(const QString &target)
{
    return {{u"diff"_s, u"--git"_s, u"--rev="_s + target, u"--rev=."_s}, {0}};
}

ToolCommand MercurialTool::annotateCommand(const QString &revision, const QString &path)
{
    return {{u"annotate"_s, u"-Tjson"_s, u"--user"_s, u"--date"_s, u"--changeset"_s, u"--rev="_s + revision, u"--"_s,
             fileArgument(path)},
            {0}};
}

namespace {

QStringList fileArguments(const QStringList &paths)
{
    return mappedPaths(paths, fileArgument);
}

} // namespace

ToolCommand MercurialTool::commitCommand(const QStringList &files, const QString &message, const QString &userName,
                                         bool amend)
{
    QStringList arguments;
    if (!userName.trimmed().isEmpty())
        arguments << u"--config=ui.username="_s + userName;
    arguments << u"commit"_s << u"--message="_s + message;
    if (amend)
        arguments << u"--amend"_s;
    if (!files.isEmpty())
        arguments << u"--"_s << fileArguments(files);
    else if (amend)
        arguments << u"--exclude=path:"_s;
    return {arguments, {0}};
}

ToolCommand MercurialTool::addCommand(const QStringList &files)
{
    return {QStringList{u"add"_s, u"--"_s} + fileArguments(files), {0}};
}

ToolCommand MercurialTool::revertCommand(const QStringList &files)
{
    return {QStringList{u"revert"_s, u"--no-backup"_s, u"--"_s} + fileArguments(files), {0}};
}

ToolCommand MercurialTool::revertAllCommand()
{
    return {{u"revert"_s, u"--all"_s, u"--no-backup"_s}, {0}};
}

ToolCommand MercurialTool::shelveCommand(const QString &name)
{
    return {{u"--config=extensions.shelve="_s, u"shelve"_s, u"--name="_s + name}, {0}};
}

ToolCommand MercurialTool::switchCommand(const QString &target)
{
    return {{u"update"_s, u"--rev="_s + target}, {0}};
}

ToolCommand MercurialTool::mergeCommand(const QString &target)
{
    return {{u"merge"_s, u"--rev="_s + target}, {0}};
}

ToolCommand MercurialTool::rebaseCommand(const QString &destination)
{
    // The rebase extension's option is "--dest"; hg knows no "--destination".
    return {{u"--config=extensions.rebase="_s, u"rebase"_s, u"--dest="_s + destination}, {0}};
}

ToolCommand MercurialTool::createBookmarkCommand(const QString &name)
{
    return {{u"bookmark"_s, u"--"_s, name}, {0}};
}

ToolCommand MercurialTool::renameBookmarkCommand(const QString &oldName, const QString &newName)
{
    return {{u"bookmark"_s, u"--rename="_s + oldName, u"--"_s, newName}, {0}};
}

ToolCommand MercurialTool::deleteBookmarkCommand(const QString &name)
{
    return {{u"bookmark"_s, u"--delete"_s, u"--"_s, name}, {0}};
}

ToolCommand MercurialTool::fetchCommand()
{
    return {{u"pull"_s}, {0}};
}

ToolCommand MercurialTool::pullCommand()
{
    return {{u"pull"_s, u"--update"_s}, {0}};
}

ToolCommand MercurialTool::pushCommand()
{
    return {{u"push"_s}, {0}};
}

ToolCommand MercurialTool::cloneCommand(const QString &source, const QString &destination)
{
    return {{u"clone"_s, u"--"_s, source, destination}, {0}};
}

ToolCommand MercurialTool::initCommand(const QString &path)
{
    return {{u"init"_s, u"--"_s, path}, {0}};
}

ToolCommand MercurialTool::storedDefaultPathCommand()
{
    return {{u"showconfig"_s, u"paths.default"_s}, {0, 1}};
}

// Shelves.

ToolCommand MercurialTool::shelfNamesCommand()
{
    return {{u"--config=extensions.shelve="_s, u"shelve"_s, u"--list"_s, u"--quiet"_s}, {0}};
}

ToolCommand MercurialTool::shelfPatchCommand(const QString &name)
{
    return {{u"--config=extensions.shelve="_s, u"shelve"_s, u"--patch"_s, u"--"_s, name}, {0}};
}

ToolCommand MercurialTool::unshelveCommand(const QString &name, bool keep)
{
    QStringList arguments{u"--config=extensions.shelve="_s, u"unshelve"_s, u"--tool=:merge"_s};
    if (keep)
        arguments.append(u"--keep"_s);
    return {arguments + QStringList{u"--"_s, name}, {0}};
}

ToolCommand MercurialTool::deleteShelfCommand(const QString &name)
{
    return {{u"--config=extensions.shelve="_s, u"shelve"_s, u"--delete"_s, u"--"_s, name}, {0}};
}

ToolCommand MercurialTool::forgetMissingCommand(const QStringList &files)
{
    return {QStringList{u"remove"_s, u"--after"_s, u"--"_s} + fileArguments(files), {0}};
}

ToolCommand MercurialTool::shelveFilesCommand(const QString &name, const QStringList &files)
{
    QStringList arguments{u"--config=extensions.shelve="_s, u"shelve"_s, u"--unknown"_s};
    if (!name.isEmpty())
        arguments.append(u"--name="_s + name);
    return {arguments + QStringList{u"--"_s} + fileArguments(files), {0}};
}

// Conflicts of the operation in progress.

ToolCommand MercurialTool::resolveWithToolCommand(const QStringList &files, const QString &tool)
{
    return {QStringList{u"resolve"_s, u"--tool="_s + tool, u"--"_s} + fileArguments(files), {0}};
}

ToolCommand MercurialTool::markResolvedCommand(const QStringList &files, bool resolved)
{
    return {QStringList{u"resolve"_s, resolved ? u"--mark"_s : u"--unmark"_s, u"--"_s} + fileArguments(files), {0}};
}

ToolCommand MercurialTool::mergeToolSettingsCommand()
{
    return {{u"config"_s, u"-Tjson"_s, u"ui.merge"_s, u"merge-tools"_s}, {0, 1}};
}

ToolCommand MercurialTool::mergeAgainCommand(const QString &file)
{
    return {{u"resolve"_s, u"--"_s, fileArgument(file)}, {0}};
}

namespace {

// The operation's command, with the extension it needs.
QStringList operationCommand(OperationInProgress operation)
{
    switch (operation) {
    case OperationInProgress::rebase:
        return {u"--config=extensions.rebase="_s, u"rebase"_s};
    case OperationInProgress::graft:
        return {u"graft"_s};
    case OperationInProgress::unshelve:
        return {u"--config=extensions.shelve="_s, u"unshelve"_s};
    default:
        return {u"merge"_s};
    }
}

} // namespace

ToolCommand MercurialTool::continueCommand(OperationInProgress operation, const QString &message)
{
    if (operation == OperationInProgress::merge)
        return {{u"commit"_s, u"--message="_s + message}, {0}};
    return {operationCommand(operation) << u"--continue"_s, {0}};
}

ToolCommand MercurialTool::abortCommand(OperationInProgress operation)
{
    return {operationCommand(operation) << u"--abort"_s, {0}};
}

// Amending and undoing the last commit

ToolCommand MercurialTool::parentPhaseCommand()
{
    return {{u"log"_s, u"--rev=."_s, u"-T{node}\n{phase}\n"_s}, {0}};
}

ToolCommand MercurialTool::undoLastCommitCommand()
{
    return {{u"--config=extensions.uncommit="_s, u"uncommit"_s, u"--allow-dirty-working-copy"_s}, {0}};
}

} // namespace tillery
