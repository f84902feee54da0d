#include "mercurial/MercurialCommands.h"

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

} // namespace tillery::mercurial
