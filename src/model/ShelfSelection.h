#pragma once

#include "model/Background.h"
#include "records/Shelf.h"
#include "records/WorkingFile.h"

#include <QList>
#include <QObject>

#include <optional>

namespace tillery {

class ActivityState;
class DiffSelection;
class Workspace;

// The Shelves page's selection: a shelf (or stash entry) of the snapshot,
// its files, read off the main thread, and the file whose diff the diff
// pane shows.
class ShelfSelection final : public QObject {
    Q_OBJECT

public:
    ShelfSelection(Workspace &workspace, DiffSelection &diff, ActivityState &activity, BackgroundPool &pool,
                   QObject *parent = nullptr);

    const std::optional<Shelf> &selectedShelf() const { return m_selectedShelf; }
    const QList<WorkingFile> &files() const { return m_files; }
    const std::optional<WorkingFile> &selectedFile() const { return m_selectedFile; }
    bool isLoadingFiles() const { return m_isLoadingFiles; }

    // Reads the shelf's files and shows the first one's diff.
    void selectShelf(const Shelf &shelf);
    void selectFile(const WorkingFile &file);
    // Keeps the selected shelf while the snapshot still lists it (else takes
    // the newest) and shows it again; call when the page comes on screen or
    // a refresh brought a new snapshot while it is.
    void showPage();
    void clear();

Q_SIGNALS:
    void selectedShelfChanged();
    void filesChanged();
    void selectedFileChanged();
    void isLoadingFilesChanged(bool loading);

private:
    void setLoadingFiles(bool loading);

    Workspace &m_workspace;
    DiffSelection &m_diff;
    ActivityState &m_activity;
    BackgroundPool &m_pool;
    std::optional<Shelf> m_selectedShelf;
    QList<WorkingFile> m_files;
    std::optional<WorkingFile> m_selectedFile;
    bool m_isLoadingFiles = false;
    BackgroundTask m_filesTask;
};

} // namespace tillery
