#include "process/ChosenChangeSteps.h"

#include "diff/FilePatch.h"
#include "process/Concurrently.h"
#include "process/Failure.h"
#include "process/RepositoryFile.h"
#include "process/VersionControl.h"
#include "records/TextDecoding.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

// `refusal` names the file with %1 and says why only the whole of it can be taken.
RefusedInput wholeFileOnly(const QString &path, const char *refusal)
{
    return RefusedInput(QCoreApplication::translate("tillery::ChosenChangeSteps", refusal).arg(path));
}

RefusedInput changedSinceShown(const QString &path)
{
    return RefusedInput(QCoreApplication::translate("tillery::ChosenChangeSteps",
                                                    "“%1” changed after its differences were shown. Look at them "
                                                    "again and choose the lines anew.")
                            .arg(path));
}

QString checkedText(const QByteArray &bytes, const QString &path)
{
    std::optional<QString> text = decodeUtf8(bytes);
    if (!text)
        throw wholeFileOnly(path, QT_TRANSLATE_NOOP("tillery::ChosenChangeSteps",
                                                    "Only the whole of “%1” can be committed or discarded: it is not "
                                                    "UTF-8 text."));
    return *text;
}

QByteArray readWorkingFile(const QString &repositoryPath, const QString &path)
{
    QFile file(QDir(repositoryPath).filePath(path));
    if (!file.open(QIODevice::ReadOnly))
        throw PlatformFailure::unreadableFile(file.fileName(), file.errorString());
    return file.readAll();
}

bool isNew(const WorkingFile &file)
{
    return file.state == FileState::added || file.state == FileState::untracked;
}

} // namespace

std::optional<QString> comparedParentPath(const ChosenChanges &chosen)
{
    if (declaresNewFile(chosen.shownDiff))
        return std::nullopt;
    if (std::optional<QString> source = copiedFrom(chosen.shownDiff))
        return source;
    return isNew(chosen.file) ? std::nullopt : std::optional(chosen.file.path);
}

namespace {

// The diff's patch, refused when the working text does not fit it, with
// the parent the working text gives when all the diff's changes are undone.
struct FittedPatch {
    FilePatch patch;
    QString parent;
};

FittedPatch fittedPatch(const ChosenChanges &chosen, const QString &working)
{
    const QString &path = chosen.file.path;
    std::optional<FilePatch> patch = parseFilePatch(chosen.shownDiff);
    if (!patch)
        throw wholeFileOnly(path, QT_TRANSLATE_NOOP("tillery::ChosenChangeSteps",
                                                    "Only the whole of “%1” can be committed or discarded: its "
                                                    "differences are not lines of text."));
    std::optional<QString> parent = applyChosenChanges(working, PatchSide::changed, *patch, patch->changedLineIds());
    if (!parent || (!comparedParentPath(chosen) && !parent->isEmpty()))
        throw changedSinceShown(path);
    return {std::move(*patch), std::move(*parent)};
}

QString checkedWorkingText(const QString &repositoryPath, const WorkingFile &file)
{
    if (file.state == FileState::removed || file.state == FileState::missing)
        throw wholeFileOnly(file.path, QT_TRANSLATE_NOOP("tillery::ChosenChangeSteps",
                                                         "Only the whole of “%1” can be committed or discarded: it is "
                                                         "removed."));
    if (QFileInfo(QDir(repositoryPath).filePath(file.path)).isSymLink())
        throw wholeFileOnly(file.path, QT_TRANSLATE_NOOP("tillery::ChosenChangeSteps",
                                                         "Only the whole of “%1” can be committed or discarded: it is "
                                                         "a link."));
    return checkedText(readWorkingFile(repositoryPath, file.path), file.path);
}

} // namespace

QList<ChosenVersion> committedVersions(const QString &repositoryPath, const QList<ChosenChanges> &chosen)
{
    return mappedInTwo(chosen.size(), [&](qsizetype index) {
        const ChosenChanges &changes = chosen[index];
        FittedPatch fitted = fittedPatch(changes, checkedWorkingText(repositoryPath, changes.file));
        QString committed = applyChosenChanges(fitted.parent, PatchSide::old, fitted.patch, changes.lines)
                                .value_or(fitted.parent);
        return ChosenVersion{std::move(fitted.parent), std::move(committed), std::move(fitted.patch)};
    });
}

void checkParents(const QList<ChosenChanges> &chosen, const QList<ChosenVersion> &versions,
                  const std::function<QList<QByteArray>(const QStringList &paths)> &readParents)
{
    QStringList paths;
    QList<qsizetype> places;
    for (qsizetype index = 0; index < chosen.size(); ++index) {
        if (const std::optional<QString> path = comparedParentPath(chosen[index])) {
            paths.append(*path);
            places.append(index);
        }
    }
    if (paths.isEmpty())
        return;
    const QList<QByteArray> parents = readParents(paths);
    for (qsizetype index = 0; index < paths.size(); ++index) {
        if (parents.value(index) != versions[places[index]].parent.toUtf8())
            throw changedSinceShown(chosen[places[index]].file.path);
    }
}

QByteArray workingVersionWithout(const QString &repositoryPath, const ChosenChanges &chosen)
{
    const QString working = checkedWorkingText(repositoryPath, chosen.file);
    const FittedPatch fitted = fittedPatch(chosen, working);
    return applyChosenChanges(working, PatchSide::changed, fitted.patch, chosen.lines).value_or(working).toUtf8();
}

void refuseAsChanged(const QList<ChosenChanges> &chosen)
{
    if (chosen.size() == 1)
        throw changedSinceShown(chosen.first().file.path);
    throw RefusedInput(QCoreApplication::translate("tillery::ChosenChangeSteps",
                                                   "Some of the files changed after their differences were shown. "
                                                   "Look at them again and choose the lines anew."));
}

QString backUpWorkingFile(const QString &repositoryPath, const QString &metadataFolder, const QString &path)
{
    const QString folder = u"%1/tillery/discarded/%2"_s.arg(
        metadataFolder, QDateTime::currentDateTime().toString(u"yyyy-MM-dd'T'HH-mm-ss.zzz"_s));
    const QString copy = QDir(folder).filePath(path);
    const QByteArray bytes = readWorkingFile(repositoryPath, path);
    if (!QDir().mkpath(QFileInfo(copy).path()))
        throw PlatformFailure::folderNotCreated(QFileInfo(copy).path());
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
