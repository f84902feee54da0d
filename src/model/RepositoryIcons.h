#pragma once

#include "model/ModelSettings.h"
#include "model/RepositoryIconStore.h"

#include <QImage>
#include <QMap>
#include <QObject>

namespace tillery {

// The custom pictures of repositories: the images by repository path, and
// the stored file of each, persisted as one map.
class RepositoryIcons final : public QObject {
    Q_OBJECT

public:
    RepositoryIcons(ModelSettings &settings, QString folder, QObject *parent = nullptr);

    const QMap<QString, QImage> &icons() const { return m_icons; }
    const RepositoryIconStore &store() const { return m_store; }

    // The stored files, read from the settings; their pictures come later
    // (see RepositoryIconStore::loadAll), off the main thread.
    const QMap<QString, QString> &readFiles();
    void takeLoaded(const QMap<QString, QImage> &icons);
    // A picture the store has just written; the repository's previous
    // picture file is deleted.
    void adopt(const QString &repositoryPath, const QString &fileName, const QImage &icon);
    void removeIcon(const QString &repositoryPath);

Q_SIGNALS:
    void iconsChanged();

private:
    ModelSettings &m_settings;
    RepositoryIconStore m_store;
    QMap<QString, QString> m_files;
    QMap<QString, QImage> m_icons;
};

} // namespace tillery
