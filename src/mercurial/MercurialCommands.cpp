#include "mercurial/MercurialCommands.h"

#include "mercurial/MercurialFileArguments.h"

using namespace Qt::StringLiterals;

namespace tillery::mercurial {

ToolCommand statusCommand()
{
    return {{u"status"_s, u"-0"_s}, {0}};
}

ToolCommand unresolvedFilesCommand()
{
    return {{u"resolve"_s, u"--list"_s}, {0, 1}};
}

ToolCommand historyCommand()
{
    return {{u"log"_s, u"-l"_s, QString::number(historyLimit), u"-Tjson"_s}, {0}};
}

ToolCommand bookmarksCommand()
{
    return {{u"bookmarks"_s, u"-Tjson"_s}, {0, 1}};
}

ToolCommand bookmarkDatesCommand()
{
    return {{u"log"_s, u"-r"_s, u"bookmark()"_s, u"-T"_s, u"{node}\t{date|hgdate}\n"_s}, {0, 1}};
}

ToolCommand currentBranchCommand()
{
    return {{u"branch"_s}, {0}};
}

ToolCommand pathsCommand()
{
    return {{u"paths"_s}, {0, 1}};
}

ToolCommand workingDiffCommand(const QString &path)
{
    return {{u"diff"_s, u"--git"_s, u"--"_s, fileArgument(path)}, {0}};
}

ToolCommand changesetFilesCommand(const QString &node)
{
    return {{u"status"_s, u"--change"_s, node, u"-0"_s}, {0}};
}

ToolCommand changesetDiffCommand(const QString &node, const QString &path)
{
    return {{u"diff"_s, u"--git"_s, u"-c"_s, node, u"--"_s, fileArgument(path)}, {0}};
}

ToolCommand fileContentsCommand(const QString &revision, const QString &path)
{
    QStringList arguments{u"cat"_s, u"-r"_s, revision};
    if (needsLiteralPathPrefix(path))
        arguments.append(u"--"_s);
    arguments.append(fileArgument(path));
    return {arguments, {0}};
}

ToolCommand compareDiffCommand(const QString &target)
{
    return {{u"diff"_s, u"--git"_s, u"--rev"_s, target, u"--rev"_s, u"."_s}, {0}};
}

} // namespace tillery::mercurial
