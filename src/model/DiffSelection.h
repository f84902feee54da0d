#pragma once

#include "diff/DiffDocument.h"
#include "model/Background.h"
#include "records/Changeset.h"
#include "records/Shelf.h"
#include "records/WhitespaceChanges.h"
#include "records/WorkingFile.h"

#include <QFuture>
#include <QImage>
#include <QList>
#include <QObject>
#include <QSet>
#include <QTimer>

#include <optional>

namespace tillery {

class ActivityState;
class ModelSettings;
class Workspace;

// What the diff pane shows and the selections that decide it: the focused
// working file or changeset file, the Changes list's selection, the files
// marked for commit, the loaded document or picture, and the loading
// indicator. At most one load is in flight; a newer selection cancels the
// older load, whose tool run is stopped and whose result is dropped.
class HistoryBrowser;
class DiffSelection final : public QObject {
    Q_OBJECT

public:
    static constexpr int indicatorDelayMilliseconds = 500;

    DiffSelection(Workspace &workspace, const HistoryBrowser &history, ActivityState &activity, ModelSettings &settings,
                  BackgroundPool &pool,
                  QObject *parent = nullptr);
    ~DiffSelection() override;

    const std::optional<WorkingFile> &selectedFile() const { return m_selectedFile; }
    const QSet<WorkingFile> &selectedChangeFiles() const { return m_selectedChangeFiles; }
    const QSet<QString> &selectedFilePaths() const { return m_selectedFilePaths; }
    const std::optional<Changeset> &selectedChangeset() const { return m_selectedChangeset; }
    const QList<WorkingFile> &changesetFiles() const { return m_changesetFiles; }
    const std::optional<WorkingFile> &selectedChangesetFile() const { return m_selectedChangesetFile; }
    const PresentedDiffDocument &diff() const { return m_diff; }
    // What a comparison shown in place of a file's diff is ("Changes on
    // main since topic"); nothing for any other diff. Changes with diff().
    const std::optional<QString> &comparisonTitle() const { return m_comparisonTitle; }
    const QImage &previewImage() const { return m_previewImage; }
    // Said with the picture: "Deleted" for a picture that is gone.
    const QString &previewCaption() const { return m_previewCaption; }
    bool isLoadingDiff() const { return m_isLoadingDiff; }
    // The selected changeset's file list is being read (also while a refresh
    // rereads it; the previous list stays meanwhile).
    bool isLoadingChangesetFiles() const { return m_isLoadingChangesetFiles; }
    bool showDiffLoadingIndicator() const { return m_showDiffLoadingIndicator; }
    // Whether the diffs loaded from now on leave out changes in white space
    // (a setting kept across runs), and whether the one on screen did.
    WhitespaceChanges whitespace() const { return m_whitespace; }
    WhitespaceChanges shownDiffWhitespace() const { return m_shownDiffWhitespace; }
    // Keeps the choice and loads the file's diff on screen again by it.
    void setWhitespace(WhitespaceChanges whitespace);

    void selectFile(const WorkingFile &file);
    // A burst of changes within one turn of the event loop loads once.
    void selectChangeFiles(const QSet<WorkingFile> &files);
    void selectChangeset(const Changeset &changeset);
    void selectChangesetFile(const WorkingFile &file);
    void setSelectedFilePaths(const QSet<QString> &paths);
    // Stops any load and shows nothing.
    void clearShownDiff();
    // Loads a file's diff in a shelf (the Shelves page's own selection).
    void showShelfFile(const Shelf &shelf, const WorkingFile &file);
    // Puts a comparison on screen in place of any focused file's diff or
    // selected changeset.
    void showComparison(const PresentedDiffDocument &document, const QString &title);

    // Everything of the previous repository goes; nothing is loading after.
    void clearForRepositorySwitch();
    // Makes the selections agree with a new snapshot and reloads what is shown.
    void reconcileAfterRefresh();
    // Shows what belongs to the page now on screen.
    void showPage();

    void startDiffLoadingIndicator();
    void stopDiffLoadingIndicator();

Q_SIGNALS:
    void selectedFileChanged();
    void selectedChangeFilesChanged();
    void selectedFilePathsChanged();
    void selectedChangesetChanged();
    void changesetFilesChanged();
    void selectedChangesetFileChanged();
    void diffChanged();
    void previewImageChanged();
    void isLoadingDiffChanged(bool loading);
    void isLoadingChangesetFilesChanged(bool loading);
    void showDiffLoadingIndicatorChanged(bool shown);
    void whitespaceChanged();

private:
    void cancelLoad();
    void cancelPendingSelection();
    void setSelectedFile(const std::optional<WorkingFile> &file);
    void setSelectedChangeFiles(const QSet<WorkingFile> &files);
    void setSelectedChangeset(const std::optional<Changeset> &changeset);
    void setChangesetFiles(const QList<WorkingFile> &files);
    void setSelectedChangesetFile(const std::optional<WorkingFile> &file);
    void setDiff(const PresentedDiffDocument &document, const std::optional<QString> &comparisonTitle = std::nullopt,
                 WhitespaceChanges made = WhitespaceChanges::shown);
    void setPreviewImage(const QImage &image, const QString &caption = QString());
    void setLoadingFlags(bool loading, bool indicatorShown);
    void loadPreview(const std::function<QByteArray()> &readBytes, const QString &caption = QString());
    using DiffLoad = std::function<QString(const std::function<bool()> &isCancelled, WhitespaceChanges whitespace)>;
    void loadDiff(const DiffLoad &loadText, bool clearsActivity);
    void loadChangesetFiles(const Changeset &changeset, const std::optional<WorkingFile> &keep);
    void cancelChangesetFilesLoad();
    void setLoadingChangesetFiles(bool loading);
    void presentLoadFailure(const QString &message);

    Workspace &m_workspace;
    const HistoryBrowser &m_history;
    ActivityState &m_activity;
    ModelSettings &m_settings;
    BackgroundPool &m_pool;

    std::optional<WorkingFile> m_selectedFile;
    QSet<WorkingFile> m_selectedChangeFiles;
    QSet<QString> m_selectedFilePaths;
    std::optional<Changeset> m_selectedChangeset;
    QList<WorkingFile> m_changesetFiles;
    std::optional<WorkingFile> m_selectedChangesetFile;
    PresentedDiffDocument m_diff;
    std::optional<QString> m_comparisonTitle;
    QImage m_previewImage;
    QString m_previewCaption;
    bool m_isLoadingDiff = false;
    bool m_showDiffLoadingIndicator = false;
    bool m_isLoadingChangesetFiles = false;
    WhitespaceChanges m_whitespace;
    WhitespaceChanges m_shownDiffWhitespace = WhitespaceChanges::shown;

    BackgroundTask m_workingDiffTask;
    BackgroundTask m_changesetFilesTask;
    quint64 m_loadGeneration = 0;
    // A diff failed to load while a command of Tillery's own ran.
    bool m_showPageWhenIdle = false;
    QTimer m_pendingSelection;
    std::optional<WorkingFile> m_pendingFile;
    QTimer m_indicatorTimer;
};

} // namespace tillery
