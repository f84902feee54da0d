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

    // Loads every stored picture; one that cannot be read gives no icon.
    void load();
    // False when the bytes are not a picture (nothing changes then). The
    // repository's previous picture file is deleted.
    bool setIcon(const QString &repositoryPath, const QByteArray &bytes);
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
