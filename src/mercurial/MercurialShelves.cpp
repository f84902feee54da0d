#include "mercurial/MercurialShelves.h"

#include "mercurial/MercurialShelfParsers.h"
#include "mercurial/MercurialTool.h"
#include "process/BackendSteps.h"
#include "records/LocalizedOrder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tillery::mercurial {

namespace {

using Tool = MercurialTool;

QString shelfFolder(const QString &repositoryPath)
{
    return repositoryPath + u"/.hg/shelved"_s;
}

// As Mercurial dates a shelf: by its ".shelve" file, or the ".patch" file
// of a shelf made before there were any.
QDateTime shelfDate(const QString &folder, const QString &name)
{
    const QString base = folder + u'/' + name;
    QFileInfo file(base + u".shelve"_s);
    if (!file.exists())
        file.setFile(base + u".patch"_s);
    return file.exists() ? file.lastModified().toUTC() : QDateTime();
}

QStringList shelfNames(const QString &repositoryPath)
{
    // What Mercurial lists is found only there (a folder that all went from stays).
    if (QDir(shelfFolder(repositoryPath)).isEmpty())
        return {};
    return parseShelfNames(Tool::run(Tool::shelfNamesCommand(), repositoryPath).standardOutput);
}

const QString &existingShelfName(const QString &repositoryPath, const Shelf &shelf)
{
    if (!shelfNames(repositoryPath).contains(shelf.id))
        throw RefusedInput(
            QCoreApplication::translate("tillery::MercurialShelves", "The shelf “%1” no longer exists.").arg(shelf.id));
    return shelf.id;
}

QList<ShelfFilePatch> shelfPatch(const QString &repositoryPath, const Shelf &shelf, const RunControl &control = {})
{
    return parseShelfPatch(Tool::run(Tool::shelfPatchCommand(shelf.id), repositoryPath, control).standardOutput);
}

} // namespace

QList<Shelf> listShelves(const QString &repositoryPath)
{
    QStringList names;
    try {
        names = shelfNames(repositoryPath);
    } catch (const MercurialFailure &) {
        // A Mercurial without the shelve extension has no shelves to show.
        return {};
    }
    const QString folder = shelfFolder(repositoryPath);
    QList<Shelf> shelves;
    for (const QString &name : names)
        shelves.append(Shelf{name, name, shelfDate(folder, name)});
    // Mercurial orders by whole seconds; shelves of one second keep their order here.
    std::stable_sort(shelves.begin(), shelves.end(),
                     [](const Shelf &left, const Shelf &right) { return left.date > right.date; });
    return shelves;
}

QList<WorkingFile> shelfFiles(const QString &repositoryPath, const Shelf &shelf)
{
    QList<WorkingFile> files;
    for (const ShelfFilePatch &part : shelfPatch(repositoryPath, shelf)) {
        files.append(part.file);
        if (part.renamedFrom)
            files.append(WorkingFile{*part.renamedFrom, FileState::removed});
    }
    sortLocalized(files, [](const WorkingFile &file) { return file.path; });
    return files;
}

QString shelfDiff(const QString &repositoryPath, const Shelf &shelf, const QString &path,
                  const CancellationCheck &isCancelled)
{
    const QList<ShelfFilePatch> parts = shelfPatch(repositoryPath, shelf, RunControl{isCancelled, {}});
    const ShelfFilePatch *part = shelfFilePart(parts, path);
    return part ? part->text : QString();
}

void unshelve(const QString &repositoryPath, const Shelf &shelf, bool keep)
{
    Tool::run(Tool::unshelveCommand(existingShelfName(repositoryPath, shelf), keep), repositoryPath);
}

void deleteShelf(const QString &repositoryPath, const Shelf &shelf)
{
    Tool::run(Tool::deleteShelfCommand(existingShelfName(repositoryPath, shelf)), repositoryPath);
}

void shelveFiles(const QString &repositoryPath, const QString &name, const QList<WorkingFile> &files)
{
    if (const std::optional<QString> problem = shelfNameProblem(name))
        throw RefusedInput(*problem);
    if (files.isEmpty())
        return;
    if (!name.isEmpty() && shelfNames(repositoryPath).contains(name))
        throw RefusedInput(
            QCoreApplication::translate("tillery::MercurialShelves", "A shelf named “%1” already exists.").arg(name));
    // "shelve --unknown" takes untracked files but fails on missing ones.
    QList<WorkingFile> missing = files;
    missing.removeIf([](const WorkingFile &file) { return file.state != FileState::missing; });
    if (!missing.isEmpty())
        Tool::run(Tool::forgetMissingCommand(pathsOf(missing)), repositoryPath);
    Tool::run(Tool::shelveFilesCommand(name, pathsOf(files)), repositoryPath);
}

} // namespace tillery::mercurial
