#include "git/GitCommands.h"

#include "git/GitArguments.h"

using namespace Qt::StringLiterals;

namespace tillery::git {

ToolCommand statusCommand()
{
    return {{u"status"_s, u"--porcelain=v1"_s, u"-z"_s, u"--untracked-files=all"_s}, {0}};
}

ToolCommand localBranchesCommand()
{
    return {{u"for-each-ref"_s,
             u"--format=%(refname:short)%09%(objectname)%09%(HEAD)%09%(committerdate:unix)%09"
             "%(upstream:short)%09%(upstream:track)"_s,
             u"refs/heads"_s},
            {0}};
}

ToolCommand remoteBranchesCommand()
{
    return {{u"for-each-ref"_s, u"--format=%(refname:short)"_s, u"refs/remotes"_s}, {0}};
}

ToolCommand unpushedCountCommand(const QString &counterpart, const QString &branch)
{
    return {{u"rev-list"_s, u"--count"_s, counterpart + u"..refs/heads/"_s + branch}, {0}};
}

ToolCommand currentBranchCommand()
{
    return {{u"symbolic-ref"_s, u"--quiet"_s, u"--short"_s, u"HEAD"_s}, {0, 1}};
}

ToolCommand verifyHeadCommand()
{
    return {{u"rev-parse"_s, u"--verify"_s, u"HEAD"_s}, {0, 128}};
}

ToolCommand historyCommand()
{
    return {{u"log"_s, u"--all"_s, u"--date-order"_s, u"-n"_s, QString::number(historyLimit),
             u"--format=%x1e%H%x1f%an <%ae>%x1f%at%x1f%D%x1f%B%x1f"_s, u"--name-only"_s},
            {0}};
}

ToolCommand branchTargetsCommand()
{
    return {{u"for-each-ref"_s, u"--format=%(objectname)%09%(*objectname)%09%(refname:short)"_s,
             u"refs/heads"_s},
            {0}};
}

ToolCommand tagTargetsCommand()
{
    return {{u"for-each-ref"_s, u"--format=%(objectname)%09%(*objectname)%09%(refname:short)"_s,
             u"refs/tags"_s},
            {0}};
}

ToolCommand commitCountCommand()
{
    return {{u"rev-list"_s, u"--count"_s, u"--all"_s}, {0}};
}

ToolCommand remotesCommand()
{
    return {{u"remote"_s}, {0}};
}

ToolCommand remoteUrlCommand(const QString &remote)
{
    // A remote may be named "-x"; "--" keeps such a name from being read as an option.
    if (remote.startsWith(u'-'))
        return {{u"remote"_s, u"get-url"_s, u"--"_s, remote}, {0}};
    return {{u"remote"_s, u"get-url"_s, remote}, {0}};
}

ToolCommand originHeadCommand()
{
    return {{u"symbolic-ref"_s, u"--quiet"_s, u"--short"_s, u"refs/remotes/origin/HEAD"_s}, {0, 1}};
}

ToolCommand upstreamCommand()
{
    return {{u"rev-parse"_s, u"--abbrev-ref"_s, u"--symbolic-full-name"_s, u"@{upstream}"_s}, {0, 128}};
}

ToolCommand workingDiffCommand(const QString &path)
{
    return {{u"diff"_s, u"--no-ext-diff"_s, u"HEAD"_s, u"--"_s, fileArgument(path)}, {0}};
}

ToolCommand stagedDiffCommand(const QString &path)
{
    return {{u"diff"_s, u"--no-ext-diff"_s, u"--cached"_s, u"--"_s, fileArgument(path)}, {0}};
}

ToolCommand commitFilesCommand(const QString &hash)
{
    return {{u"diff-tree"_s, u"--root"_s, u"--no-commit-id"_s, u"--name-status"_s, u"--find-renames"_s,
             u"-r"_s, u"-z"_s, hash},
            {0}};
}

ToolCommand commitDiffCommand(const QString &hash, const QString &path)
{
    return {{u"show"_s, u"--format="_s, u"--no-ext-diff"_s, u"--find-renames"_s, hash, u"--"_s,
             fileArgument(path)},
            {0}};
}

ToolCommand fileContentsCommand(const QString &revision, const QString &path)
{
    return {{u"show"_s, revision + u':' + path}, {0}};
}

ToolCommand compareDiffCommand(const QString &branch)
{
    return {{u"diff"_s, u"--no-ext-diff"_s, branch + u"...HEAD"_s}, {0}};
}

} // namespace tillery::git
