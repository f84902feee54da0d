#include "model/RepositoryIcons.h"

namespace tillery {

RepositoryIcons::RepositoryIcons(ModelSettings &settings, QString folder, QObject *parent)
    : QObject(parent)
    , m_settings(settings)
    , m_store(std::move(folder))
{
}

void RepositoryIcons::load()
{
    m_files = m_settings.repositoryIconFiles();
    m_icons.clear();
    for (auto entry = m_files.cbegin(); entry != m_files.cend(); ++entry) {
        const QImage image = m_store.load(entry.value());
        if (!image.isNull())
            m_icons.insert(entry.key(), image);
    }
    Q_EMIT iconsChanged();
}

bool RepositoryIcons::setIcon(const QString &repositoryPath, const QByteArray &bytes)
{
    const auto stored = m_store.store(bytes);
    if (!stored)
        return false;
    const QString previous = m_files.value(repositoryPath);
    m_files.insert(repositoryPath, stored->first);
    m_settings.setRepositoryIconFiles(m_files);
    m_icons.insert(repositoryPath, stored->second);
    if (!previous.isEmpty() && previous != stored->first)
        m_store.remove(previous);
    Q_EMIT iconsChanged();
    return true;
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
