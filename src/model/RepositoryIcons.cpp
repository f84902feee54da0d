#include "model/RepositoryIcons.h"

namespace tillery {

RepositoryIcons::RepositoryIcons(ModelSettings &settings, QString folder, QObject *parent)
    : QObject(parent)
    , m_settings(settings)
    , m_store(std::move(folder))
{
}

const QMap<QString, QString> &RepositoryIcons::readFiles()
{
    m_files = m_settings.repositoryIconFiles();
    return m_files;
}

void RepositoryIcons::takeLoaded(const QMap<QString, QImage> &icons)
{
    for (auto icon = icons.cbegin(); icon != icons.cend(); ++icon) {
        // A picture removed or replaced while the files were read stays so.
        if (m_files.contains(icon.key()) && !m_icons.contains(icon.key()))
            m_icons.insert(icon.key(), icon.value());
    }
    Q_EMIT iconsChanged();
}

void RepositoryIcons::adopt(const QString &repositoryPath, const QString &fileName, const QImage &icon)
{
    const QString previous = m_files.value(repositoryPath);
    m_files.insert(repositoryPath, fileName);
    m_settings.setRepositoryIconFiles(m_files);
    m_icons.insert(repositoryPath, icon);
    if (!previous.isEmpty() && previous != fileName)
        m_store.remove(previous);
    Q_EMIT iconsChanged();
}

void RepositoryIcons::removeIcon(const QString &repositoryPath)
{
    const QString file = m_files.take(repositoryPath);
    m_store.remove(file);
    m_settings.setRepositoryIconFiles(m_files);
    if (m_icons.remove(repositoryPath) > 0 || !file.isEmpty())
        Q_EMIT iconsChanged();
}

} // namespace tillery
