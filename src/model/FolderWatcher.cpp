#include "model/FolderWatcher.h"

#include <QFile>
#include <QFileSystemWatcher>
#include <QSet>
#include <QSocketNotifier>

#ifdef Q_OS_LINUX
#include <sys/inotify.h>
#include <unistd.h>
#endif

namespace tillery {

FolderWatcher::FolderWatcher(QObject *parent)
    : QObject(parent)
{
#ifdef Q_OS_LINUX
    m_inotify = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (m_inotify >= 0) {
        m_notifier = new QSocketNotifier(m_inotify, QSocketNotifier::Read, this);
        connect(m_notifier, &QSocketNotifier::activated, this, &FolderWatcher::readEvents);
        return;
    }
#endif
    m_fallback = new QFileSystemWatcher(this);
    connect(m_fallback, &QFileSystemWatcher::directoryChanged, this, &FolderWatcher::directoryChanged);
}

FolderWatcher::~FolderWatcher()
{
#ifdef Q_OS_LINUX
    if (m_inotify >= 0)
        ::close(m_inotify);
#endif
}

QStringList FolderWatcher::addPaths(const QStringList &folders)
{
    if (m_fallback)
        return folders.isEmpty() ? QStringList() : m_fallback->addPaths(folders);
    QStringList unwatched;
#ifdef Q_OS_LINUX
    constexpr uint32_t changes = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_CLOSE_WRITE | IN_MODIFY
                                 | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
    for (const QString &folder : folders) {
        const int watch = inotify_add_watch(m_inotify, QFile::encodeName(folder).constData(), changes);
        if (watch < 0)
            unwatched.append(folder);
        else
            m_folders.insert(watch, folder);
    }
#endif
    return unwatched;
}

void FolderWatcher::readEvents()
{
#ifdef Q_OS_LINUX
    // One signal per folder for all the events that have come, however many.
    QSet<int> changed;
    alignas(inotify_event) char buffer[16384];
    for (;;) {
        const ssize_t length = ::read(m_inotify, buffer, sizeof buffer);
        if (length <= 0)
            break;
        for (ssize_t offset = 0; offset < length;) {
            const auto *event = reinterpret_cast<const inotify_event *>(buffer + offset);
            changed.insert(event->wd);
            offset += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
        }
    }
    for (const int watch : std::as_const(changed)) {
        const QString folder = m_folders.value(watch);
        if (folder.isEmpty())
            continue;
        // A folder that is gone takes its watch with it.
        if (!QFile::exists(folder))
            m_folders.remove(watch);
        Q_EMIT directoryChanged(folder);
    }
#endif
}

} // namespace tillery
