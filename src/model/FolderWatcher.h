#pragma once

#include <QHash>
#include <QObject>
#include <QStringList>

#include <memory>

class QFileSystemWatcher;
class QSocketNotifier;

namespace tillery {

// Folders watched for any change of their entries, a file written in place
// included. QFileSystemWatcher reports a folder only when entries come, go
// or are renamed, so on Linux the folders are watched through inotify
// directly, with the same one watch per folder; elsewhere through
// QFileSystemWatcher.
class FolderWatcher final : public QObject {
    Q_OBJECT

public:
    explicit FolderWatcher(QObject *parent = nullptr);
    ~FolderWatcher() override;

    // The folders that could not be watched (the system's limit reached, or
    // gone meanwhile).
    QStringList addPaths(const QStringList &folders);

Q_SIGNALS:
    void directoryChanged(const QString &folder);

private:
    void readEvents();

    int m_inotify = -1;
    QSocketNotifier *m_notifier = nullptr;
    QHash<int, QString> m_folders;
    QFileSystemWatcher *m_fallback = nullptr;
};

} // namespace tillery
