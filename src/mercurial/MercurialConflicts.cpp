#include "mercurial/MercurialConflicts.h"

#include "mercurial/MercurialConflictParsers.h"
#include "mercurial/MercurialParsers.h"
#include "mercurial/MercurialTool.h"
#include "process/Failure.h"

#include <QCoreApplication>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace tillery::mercurial {

namespace {

using Tool = MercurialTool;

void refuseWhileUnresolved(const QString &repositoryPath)
{
    if (!parseUnresolvedPaths(Tool::run(Tool::unresolvedFilesCommand(), repositoryPath).standardOutput).isEmpty())
        throw RefusedInput(QCoreApplication::translate("tillery::MercurialConflicts",
                                                       "Some files still have conflicts; resolve them first."));
}

} // namespace

OperationInProgress operationInProgress(const QString &repositoryPath, bool hasSecondParent)
{
    const auto has = [&repositoryPath](const QString &name) {
        return QFileInfo::exists(repositoryPath + u"/.hg/"_s + name);
    };
    if (has(u"rebasestate"_s))
        return OperationInProgress::rebase;
    if (has(u"graftstate"_s))
        return OperationInProgress::graft;
    // An unshelve that conflicted merges with two parents too.
    if (has(u"shelvedstate"_s))
        return OperationInProgress::unshelve;
    return hasSecondParent ? OperationInProgress::merge : OperationInProgress::none;
}

void resolveWithSide(const QString &repositoryPath, const QStringList &paths, ConflictSide side)
{
    if (paths.isEmpty())
        return;
    Tool::run(Tool::markResolvedCommand(paths, false), repositoryPath);
    Tool::run(Tool::resolveWithToolCommand(paths, side == ConflictSide::mine ? u":local"_s : u":other"_s),
              repositoryPath);
}

void markResolved(const QString &repositoryPath, const QStringList &paths, bool resolved)
{
    if (!paths.isEmpty())
        Tool::run(Tool::markResolvedCommand(paths, resolved), repositoryPath);
}

void openInMergeTool(const QString &repositoryPath, const QString &path)
{
    const MergeToolSettings settings =
        parseMergeToolSettings(Tool::run(Tool::mergeToolSettingsCommand(), repositoryPath).standardOutput,
                               QFileInfo(repositoryPath).canonicalFilePath());
    if (!settings.repositoryKeys.isEmpty())
        throw RefusedInput(QCoreApplication::translate("tillery::MercurialConflicts",
                                                       "This repository's own configuration sets a merge tool (%1); "
                                                       "Tillery runs only one that you set in your own Mercurial "
                                                       "configuration.")
                               .arg(settings.repositoryKeys.join(u", "_s)));
    if (!settings.toolChosen && !qEnvironmentVariableIsSet("HGMERGE"))
        throw RefusedInput(QCoreApplication::translate(
            "tillery::MercurialConflicts", "No merge tool is set in your Mercurial configuration (ui.merge)."));
    Tool::run(Tool::markResolvedCommand({path}, false), repositoryPath);
    // The tool may run for as long as the person keeps it open: never on a command server.
    RunControl control;
    control.ownProcess = true;
    Tool::run(Tool::mergeAgainCommand(path), repositoryPath, control);
}

void continueOperation(const QString &repositoryPath, OperationInProgress operation, const QString &message)
{
    if (operation == OperationInProgress::none)
        return;
    refuseWhileUnresolved(repositoryPath);
    if (operation == OperationInProgress::merge && message.trimmed().isEmpty())
        throw RefusedInput(
            QCoreApplication::translate("tillery::MercurialConflicts", "A merge needs a commit message."));
    Tool::run(Tool::continueCommand(operation, message), repositoryPath);
}

void abortOperation(const QString &repositoryPath, OperationInProgress operation)
{
    if (operation != OperationInProgress::none)
        Tool::run(Tool::abortCommand(operation), repositoryPath);
}

} // namespace tillery::mercurial
