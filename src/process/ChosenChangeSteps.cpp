#include "process/ChosenChangeSteps.h"

#include "diff/FilePatch.h"
#include "process/Failure.h"
#include "process/RepositoryFile.h"
#include "process/VersionControl.h"
#include "records/TextDecoding.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

RefusedInput wholeFileOnly(const QString &path, const QString &reason)
{
    return RefusedInput(u"Only the whole of “%1” can be committed or discarded: %2."_s.arg(path, reason));
}

RefusedInput changedSinceShown(const QString &path)
{
    return RefusedInput(
        u"“%1” changed after its differences were shown. Look at them again and choose the lines anew."_s.arg(path));
}

QString checkedText(const QByteArray &bytes, const QString &path)
{
    std::optional<QString> text = decodeUtf8(bytes);
    if (!text)
        throw wholeFileOnly(path, u"it is not UTF-8 text"_s);
    return *text;
}

QByteArray readWorkingFile(const QString &repositoryPath, const QString &path)
{
    QFile file(QDir(repositoryPath).filePath(path));
    if (!file.open(QIODevice::ReadOnly))
        throw PlatformFailure(u"%1 could not be read: %2"_s.arg(file.fileName(), file.errorString()));
    return file.readAll();
}

// Each file's diff as it is now, which must be the one shown, with the two
// texts it lies between; the tool runs once for all diffs and once for all
// parents.
struct FileSides {
    FilePatch patch;
    QString parent;
    QString working;
};

bool isNew(const WorkingFile &file)
{
    return file.state == FileState::added || file.state == FileState::untracked;
}

QList<FileSides> checkedSides(const VersionControl &backend, const QString &repositoryPath,
                              const QList<ChosenChanges> &chosen)
{
    QStringList tracked;
    QStringList withParent;
    for (const ChosenChanges &changes : chosen) {
        const QString &path = changes.file.path;
        if (changes.file.state == FileState::removed || changes.file.state == FileState::missing)
            throw wholeFileOnly(path, u"it is removed"_s);
        if (QFileInfo(QDir(repositoryPath).filePath(path)).isSymLink())
            throw wholeFileOnly(path, u"it is a link"_s);
        if (changes.file.state != FileState::untracked)
            tracked.append(path);
        if (!isNew(changes.file))
            withParent.append(path);
    }
    const QStringList diffs = tracked.isEmpty() ? QStringList() : backend.trackedFileDiffs(repositoryPath, tracked);
    const QSet<QString> currentDiffs(diffs.cbegin(), diffs.cend());
    const QList<QByteArray> parents =
        withParent.isEmpty() ? QList<QByteArray>() : backend.parentContentsOfFiles(repositoryPath, withParent);
    QList<FileSides> sides;
    qsizetype nextParent = 0;
    for (const ChosenChanges &changes : chosen) {
        const QString &path = changes.file.path;
        std::optional<FilePatch> patch = parseFilePatch(changes.shownDiff);
        if (!patch)
            throw wholeFileOnly(path, u"its differences are not lines of text"_s);
        const bool current = changes.file.state == FileState::untracked
                                 ? backend.workingDiff(repositoryPath, changes.file, [] { return false; })
                                       == changes.shownDiff
                                 : currentDiffs.contains(changes.shownDiff);
        if (!current)
            throw changedSinceShown(path);
        FileSides fileSides{*patch, isNew(changes.file) ? QString() : checkedText(parents.value(nextParent++), path),
                            checkedText(readWorkingFile(repositoryPath, path), path)};
        // A diff shown through a filter, or cut short, would commit something
        // else than the file holds.
        if (applyChosenChanges(fileSides.parent, PatchSide::old, fileSides.patch, fileSides.patch.changedLineIds())
            != fileSides.working)
            throw wholeFileOnly(path, u"its differences do not describe it exactly"_s);
        sides.append(fileSides);
    }
    return sides;
}

QByteArray applied(const QString &text, PatchSide side, const FileSides &sides, const ChosenChanges &chosen)
{
    const std::optional<QString> result = applyChosenChanges(text, side, sides.patch, chosen.lines);
    if (!result)
        throw changedSinceShown(chosen.file.path);
    return result->toUtf8();
}

} // namespace

QList<QByteArray> committedVersions(const VersionControl &backend, const QString &repositoryPath,
                                    const QList<ChosenChanges> &chosen)
{
    const QList<FileSides> sides = checkedSides(backend, repositoryPath, chosen);
    QList<QByteArray> versions;
    for (qsizetype index = 0; index < chosen.size(); ++index)
        versions.append(applied(sides[index].parent, PatchSide::old, sides[index], chosen[index]));
    return versions;
}

QByteArray workingVersionWithout(const VersionControl &backend, const QString &repositoryPath,
                                 const ChosenChanges &chosen)
{
    const FileSides sides = checkedSides(backend, repositoryPath, {chosen}).first();
    return applied(sides.working, PatchSide::changed, sides, chosen);
}

QString backUpWorkingFile(const QString &repositoryPath, const QString &metadataFolder, const QString &path)
{
    const QString folder = u"%1/tillery/discarded/%2"_s.arg(
        metadataFolder, QDateTime::currentDateTime().toString(u"yyyy-MM-dd'T'HH-mm-ss.zzz"_s));
    const QString copy = QDir(folder).filePath(path);
    const QByteArray bytes = readWorkingFile(repositoryPath, path);
    if (!QDir().mkpath(QFileInfo(copy).path()))
        throw PlatformFailure(u"The folder %1 could not be created."_s.arg(QFileInfo(copy).path()));
    if (const std::optional<QString> reason = replaceFile(copy, bytes))
        throw PlatformFailure(*reason);
    return copy;
}

void writeWorkingFile(const QString &repositoryPath, const QString &path, const QByteArray &bytes)
{
    if (const std::optional<QString> reason = overwriteFile(QDir(repositoryPath).filePath(path), bytes))
        throw PlatformFailure(*reason);
}

} // namespace tillery
