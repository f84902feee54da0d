#include "model/DiffSelection.h"

#include "model/ActivityState.h"
#include "model/Background.h"
#include "model/HistoryBrowser.h"
#include "model/ImageFiles.h"
#include "model/ModelSettings.h"
#include "model/VersionControl.h"
#include "model/Workspace.h"
#include "process/WorkingFileRead.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <utility>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

// The caption of a deleted image's preview.
QString deletedCaption()
{
    return QCoreApplication::translate("tillery::DiffSelection", "Deleted");
}

PresentedDiffDocument documentOf(const QString &text, WhitespaceChanges whitespace)
{
    if (!text.isEmpty())
        return buildDiffDocument(text);
    return buildDiffDocument(
        whitespace == WhitespaceChanges::ignored
            ? QCoreApplication::translate("tillery::DiffSelection",
                                          "No textual diff is available for this file with white space changes "
                                          "ignored.")
            : QCoreApplication::translate("tillery::DiffSelection", "No textual diff is available for this file."));
}

std::optional<WorkingFile> fileWithPath(const QList<WorkingFile> &files, const QString &path)
{
    for (const WorkingFile &file : files) {
        if (file.path == path)
            return file;
    }
    return std::nullopt;
}

bool isDeleted(const WorkingFile &file)
{
    return file.state == FileState::removed || file.state == FileState::missing;
}

bool isStillOnDisk(const QString &repositoryPath, const WorkingFile &file)
{
    return !isDeleted(file) && QFileInfo(repositoryPath + u'/' + file.path).isFile();
}

} // namespace

DiffSelection::DiffSelection(Workspace &workspace, const HistoryBrowser &history, ActivityState &activity,
                             ModelSettings &settings, BackgroundPool &pool, QObject *parent)
    : QObject(parent)
    , m_workspace(workspace)
    , m_history(history)
    , m_activity(activity)
    , m_settings(settings)
    , m_pool(pool)
    , m_diff(emptyDiffDocument())
    , m_whitespace(settings.diffWhitespace())
{
    m_pendingSelection.setSingleShot(true);
    m_pendingSelection.setInterval(0);
    connect(&m_pendingSelection, &QTimer::timeout, this, [this] {
        if (m_pendingFile && m_selectedChangeFiles.contains(*m_pendingFile))
            selectFile(*m_pendingFile);
    });
    m_indicatorTimer.setSingleShot(true);
    m_indicatorTimer.setInterval(indicatorDelayMilliseconds);
    connect(&m_indicatorTimer, &QTimer::timeout, this, [this] {
        if (m_isLoadingDiff)
            setLoadingFlags(true, true);
    });
    connect(&m_activity, &ActivityState::isBusyChanged, this, [this](bool busy) {
        if (!busy && std::exchange(m_showPageWhenIdle, false))
            showPage();
    });
}

DiffSelection::~DiffSelection()
{
    m_workingDiffTask.cancel();
    m_changesetFilesTask.cancel();
}

void DiffSelection::cancelLoad()
{
    ++m_loadGeneration;
    m_workingDiffTask.cancel();
}

void DiffSelection::cancelPendingSelection()
{
    m_pendingSelection.stop();
    m_pendingFile.reset();
}

void DiffSelection::startDiffLoadingIndicator()
{
    setLoadingFlags(true, false);
    m_indicatorTimer.start();
}

void DiffSelection::stopDiffLoadingIndicator()
{
    m_indicatorTimer.stop();
    setLoadingFlags(false, false);
}

void DiffSelection::setLoadingFlags(bool loading, bool indicatorShown)
{
    if (m_isLoadingDiff != loading) {
        m_isLoadingDiff = loading;
        Q_EMIT isLoadingDiffChanged(loading);
    }
    if (m_showDiffLoadingIndicator != indicatorShown) {
        m_showDiffLoadingIndicator = indicatorShown;
        Q_EMIT showDiffLoadingIndicatorChanged(indicatorShown);
    }
}

void DiffSelection::selectFile(const WorkingFile &file)
{
    const std::optional<Repository> repository = m_workspace.selectedRepository();
    if (!repository)
        return;
    cancelLoad();
    setSelectedFile(file);
    m_settings.rememberSelectedFile(repository->path, file.path);
    setPreviewImage(QImage());

    const QString repositoryPath = repository->path;
    const VersionControl *backend = &versionControl(repository->kind);
    if (isImageFile(file.path) && isStillOnDisk(repositoryPath, file)) {
        stopDiffLoadingIndicator();
        setDiff(emptyDiffDocument());
        loadPreview([repositoryPath, path = file.path] {
            const WorkingFileContents contents = readWorkingFile(repositoryPath, path, workingFileShowLimit, {});
            return contents.kind == WorkingFileContents::Kind::regularFile ? contents.bytes : QByteArray();
        });
        return;
    }
    if (isImageFile(file.path) && isDeleted(file)) {
        stopDiffLoadingIndicator();
        setDiff(emptyDiffDocument());
        loadPreview(
            [backend, repositoryPath, path = file.path] { return backend->parentContents(repositoryPath, path); },
            deletedCaption());
        return;
    }
    startDiffLoadingIndicator();
    loadDiff(
        [backend, repositoryPath, file](const std::function<bool()> &isCancelled, WhitespaceChanges whitespace) {
            return backend->workingDiff(repositoryPath, file, isCancelled, whitespace);
        },
        false);
}

void DiffSelection::loadPreview(const std::function<QByteArray()> &readBytes, const QString &caption)
{
    m_activity.setActivity(tr("Loading icon preview"));
    const quint64 generation = m_loadGeneration;
    m_workingDiffTask = runInBackground(
        &m_pool, this, [readBytes] { return decodeImage(readBytes()); },
        [this, generation, caption](Outcome<QImage> outcome) {
            if (generation != m_loadGeneration)
                return;
            m_activity.setActivity(QString());
            if (outcome.succeeded() && !outcome.value->isNull())
                setPreviewImage(*outcome.value, caption);
            else if (outcome.succeeded())
                setDiff(buildDiffDocument(tr("This image file could not be previewed.")));
            else
                presentLoadFailure(outcome.failure);
        });
}

void DiffSelection::loadDiff(const DiffLoad &loadText, bool clearsActivity)
{
    const quint64 generation = m_loadGeneration;
    m_workingDiffTask = runCancellableInBackground(
        &m_pool, this,
        [loadText, whitespace = m_whitespace](const CancellationCheck &isCancelled) {
            return documentOf(loadText(isCancelled, whitespace), whitespace);
        },
        [this, generation, clearsActivity, whitespace = m_whitespace](Outcome<PresentedDiffDocument> outcome) {
            if (generation != m_loadGeneration)
                return;
            stopDiffLoadingIndicator();
            if (clearsActivity)
                m_activity.setActivity(QString());
            if (outcome.succeeded())
                setDiff(*outcome.value, std::nullopt, whitespace);
            // The command may have been changing the file as the tool read it
            // (a discard rewriting it, say): the diff is loaded again after it.
            else if (m_activity.isBusy())
                m_showPageWhenIdle = true;
            else
                presentLoadFailure(outcome.failure);
        });
}

void DiffSelection::setWhitespace(WhitespaceChanges whitespace)
{
    if (m_whitespace == whitespace)
        return;
    m_whitespace = whitespace;
    m_settings.setDiffWhitespace(whitespace);
    Q_EMIT whitespaceChanged();
    if (m_comparisonTitle)
        return;
    if (m_workspace.tab() == WorkspaceTab::changes && m_selectedFile)
        selectFile(*m_selectedFile);
    else if (m_workspace.tab() == WorkspaceTab::history && m_selectedChangesetFile)
        selectChangesetFile(*m_selectedChangesetFile);
}

void DiffSelection::presentLoadFailure(const QString &message)
{
    m_activity.present(tr("Loading diff"), message);
}

void DiffSelection::selectChangeFiles(const QSet<WorkingFile> &files)
{
    setSelectedChangeFiles(files);
    if (files.isEmpty()) {
        cancelPendingSelection();
        cancelLoad();
        setSelectedFile(std::nullopt);
        setPreviewImage(QImage());
        setDiff(emptyDiffDocument());
        stopDiffLoadingIndicator();
        return;
    }
    if (m_selectedFile && files.contains(*m_selectedFile))
        return;
    for (const WorkingFile &file : m_workspace.snapshot().files) {
        if (files.contains(file)) {
            m_pendingFile = file;
            m_pendingSelection.start();
            return;
        }
    }
}

void DiffSelection::selectChangeset(const Changeset &changeset)
{
    if (!m_workspace.selectedRepository())
        return;
    cancelLoad();
    cancelPendingSelection();
    stopDiffLoadingIndicator();
    setSelectedChangeset(changeset);
    setChangesetFiles({});
    setSelectedChangesetFile(std::nullopt);
    setPreviewImage(QImage());
    setDiff(emptyDiffDocument());
    loadChangesetFiles(changeset, std::nullopt);
}

void DiffSelection::loadChangesetFiles(const Changeset &changeset, const std::optional<WorkingFile> &keep)
{
    const Repository repository = *m_workspace.selectedRepository();
    const VersionControl *backend = &versionControl(repository.kind);
    const RepositoryKind kind = repository.kind;
    m_activity.setActivity(byKind(kind, tr("Loading changeset files"), tr("Loading commit files")));
    m_changesetFilesTask.cancel();
    setLoadingChangesetFiles(true);
    m_changesetFilesTask = runInBackground(
        &m_pool, this, [backend, repository, changeset] { return backend->changesetFiles(repository.path, changeset); },
        [this, changeset, keep, kind](Outcome<QList<WorkingFile>> outcome) {
            if (!m_selectedChangeset || m_selectedChangeset->node != changeset.node)
                return;
            setLoadingChangesetFiles(false);
            m_activity.setActivity(QString());
            if (!outcome.succeeded()) {
                presentLoadFailure(outcome.failure);
                return;
            }
            setChangesetFiles(*outcome.value);
            if (outcome.value->isEmpty()) {
                setDiff(buildDiffDocument(
                    byKind(kind, tr("This changeset has no changed files."), tr("This commit has no changed files."))));
                return;
            }
            std::optional<WorkingFile> kept = keep ? fileWithPath(*outcome.value, keep->path) : std::nullopt;
            if (!kept)
                kept = m_history.fileOfInterest(changeset, *outcome.value);
            selectChangesetFile(kept.value_or(outcome.value->first()));
        });
}

void DiffSelection::cancelChangesetFilesLoad()
{
    m_changesetFilesTask.cancel();
    setLoadingChangesetFiles(false);
}

void DiffSelection::setLoadingChangesetFiles(bool loading)
{
    if (m_isLoadingChangesetFiles == loading)
        return;
    m_isLoadingChangesetFiles = loading;
    Q_EMIT isLoadingChangesetFilesChanged(loading);
}

void DiffSelection::selectChangesetFile(const WorkingFile &file)
{
    const std::optional<Repository> repository = m_workspace.selectedRepository();
    if (!repository || !m_selectedChangeset)
        return;
    cancelLoad();
    setSelectedChangesetFile(file);
    setPreviewImage(QImage());

    const VersionControl *backend = &versionControl(repository->kind);
    const QString repositoryPath = repository->path;
    const Changeset changeset = *m_selectedChangeset;
    if (isImageFile(file.path)) {
        stopDiffLoadingIndicator();
        setDiff(emptyDiffDocument());
        loadPreview([backend, repositoryPath, changeset,
                     file] { return backend->fileContents(repositoryPath, changeset, file); },
                    file.state == FileState::removed ? deletedCaption() : QString());
        return;
    }
    m_activity.setActivity(tr("Loading file diff"));
    startDiffLoadingIndicator();
    loadDiff(
        [backend, repositoryPath, changeset, file](const std::function<bool()> &isCancelled,
                                                   WhitespaceChanges whitespace) {
            return backend->changesetDiff(repositoryPath, changeset, file.path, isCancelled, whitespace);
        },
        true);
}

void DiffSelection::showShelfFile(const Shelf &shelf, const WorkingFile &file)
{
    const std::optional<Repository> repository = m_workspace.selectedRepository();
    if (!repository)
        return;
    cancelLoad();
    setPreviewImage(QImage());
    const VersionControl *backend = &versionControl(repository->kind);
    m_activity.setActivity(tr("Loading file diff"));
    startDiffLoadingIndicator();
    loadDiff(
        [backend, repositoryPath = repository->path, shelf, file](const std::function<bool()> &isCancelled,
                                                                   WhitespaceChanges) {
            return backend->shelfDiff(repositoryPath, shelf, file.path, isCancelled);
        },
        true);
}

void DiffSelection::setSelectedFilePaths(const QSet<QString> &paths)
{
    if (m_selectedFilePaths == paths)
        return;
    m_selectedFilePaths = paths;
    Q_EMIT selectedFilePathsChanged();
}

void DiffSelection::showComparison(const PresentedDiffDocument &document, const QString &title)
{
    cancelPendingSelection();
    cancelLoad();
    cancelChangesetFilesLoad();
    stopDiffLoadingIndicator();
    setSelectedFile(std::nullopt);
    setSelectedChangeFiles({});
    setSelectedChangeset(std::nullopt);
    setChangesetFiles({});
    setSelectedChangesetFile(std::nullopt);
    setPreviewImage(QImage());
    setDiff(document, title);
}

void DiffSelection::clearShownDiff()
{
    cancelLoad();
    stopDiffLoadingIndicator();
    setPreviewImage(QImage());
    setDiff(emptyDiffDocument());
}

void DiffSelection::clearForRepositorySwitch()
{
    cancelPendingSelection();
    cancelChangesetFilesLoad();
    clearShownDiff();
    setChangesetFiles({});
    setSelectedChangeFiles({});
    setSelectedFilePaths({});
    setSelectedFile(std::nullopt);
    setSelectedChangeset(std::nullopt);
    setSelectedChangesetFile(std::nullopt);
}

void DiffSelection::reconcileAfterRefresh()
{
    const RepositorySnapshot &snapshot = m_workspace.snapshot();
    QSet<QString> paths;
    for (const WorkingFile &file : snapshot.files)
        paths.insert(file.path);

    QSet<QString> marked;
    for (const QString &path : std::as_const(m_selectedFilePaths)) {
        if (paths.contains(path))
            marked.insert(path);
    }
    setSelectedFilePaths(marked);
    QSet<WorkingFile> selected;
    for (const WorkingFile &file : std::as_const(m_selectedChangeFiles)) {
        if (const std::optional<WorkingFile> current = fileWithPath(snapshot.files, file.path))
            selected.insert(*current);
    }
    setSelectedChangeFiles(selected);
    showPage();
}

void DiffSelection::showPage()
{
    const RepositorySnapshot &snapshot = m_workspace.snapshot();
    if (m_workspace.tab() == WorkspaceTab::changes) {
        std::optional<WorkingFile> focus =
            m_selectedFile ? fileWithPath(snapshot.files, m_selectedFile->path) : std::nullopt;
        if (!focus && m_workspace.selectedRepository()) {
            const QString remembered =
                m_settings.selectedFilesByRepository().value(m_workspace.selectedRepository()->path);
            if (!remembered.isEmpty())
                focus = fileWithPath(snapshot.files, remembered);
        }
        if (focus) {
            // The list shows the focused file selected, as if it were clicked.
            if (!m_selectedChangeFiles.contains(*focus))
                setSelectedChangeFiles({*focus});
            selectFile(*focus);
        } else {
            setSelectedFile(std::nullopt);
            clearShownDiff();
        }
        return;
    }
    // The Shelves page keeps a selection of its own.
    if (m_workspace.tab() == WorkspaceTab::shelves)
        return;
    const QList<Changeset> &rows = m_history.changesets();
    std::optional<Changeset> kept;
    if (m_selectedChangeset) {
        const qsizetype row = m_history.rowOf(m_selectedChangeset->node);
        if (row >= 0)
            kept = rows.at(row);
        // Its page, or a search's first matches, are on the way.
        else if (m_history.isRevealing(m_selectedChangeset->node) || (rows.isEmpty() && m_history.isLoading()))
            return;
    }
    if (!kept && !rows.isEmpty()) {
        // Opening History shows the newest changeset (or the first match).
        selectChangeset(rows.first());
        return;
    }
    if (!kept) {
        cancelChangesetFilesLoad();
        setSelectedChangeset(std::nullopt);
        setChangesetFiles({});
        setSelectedChangesetFile(std::nullopt);
        clearShownDiff();
        return;
    }
    setSelectedChangeset(kept);
    loadChangesetFiles(*kept, m_selectedChangesetFile);
}

void DiffSelection::setSelectedFile(const std::optional<WorkingFile> &file)
{
    if (m_selectedFile == file)
        return;
    m_selectedFile = file;
    Q_EMIT selectedFileChanged();
}

void DiffSelection::setSelectedChangeFiles(const QSet<WorkingFile> &files)
{
    if (m_selectedChangeFiles == files)
        return;
    m_selectedChangeFiles = files;
    Q_EMIT selectedChangeFilesChanged();
}

void DiffSelection::setSelectedChangeset(const std::optional<Changeset> &changeset)
{
    if (m_selectedChangeset == changeset)
        return;
    m_selectedChangeset = changeset;
    Q_EMIT selectedChangesetChanged();
}

void DiffSelection::setChangesetFiles(const QList<WorkingFile> &files)
{
    if (m_changesetFiles == files)
        return;
    m_changesetFiles = files;
    Q_EMIT changesetFilesChanged();
}

void DiffSelection::setSelectedChangesetFile(const std::optional<WorkingFile> &file)
{
    if (m_selectedChangesetFile == file)
        return;
    m_selectedChangesetFile = file;
    Q_EMIT selectedChangesetFileChanged();
}

void DiffSelection::setDiff(const PresentedDiffDocument &document, const std::optional<QString> &comparisonTitle,
                            WhitespaceChanges made)
{
    m_diff = document;
    m_comparisonTitle = comparisonTitle;
    m_shownDiffWhitespace = made;
    Q_EMIT diffChanged();
}

void DiffSelection::setPreviewImage(const QImage &image, const QString &caption)
{
    if (m_previewImage.isNull() && image.isNull())
        return;
    m_previewImage = image;
    m_previewCaption = image.isNull() ? QString() : caption;
    Q_EMIT previewImageChanged();
}

} // namespace tillery
