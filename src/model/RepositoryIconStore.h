#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

#include <optional>

namespace tillery {

// Custom repository pictures as 256 x 256 PNG files in one folder, each under
// a fresh upper-case UUID name that is never reused.
class RepositoryIconStore {
public:
    static constexpr int side = 256;

    // The folder is made (with its parents) when the first picture is stored.
    explicit RepositoryIconStore(QString folder);

    const QString &folder() const { return m_folder; }

    // The picture centred on a transparent square canvas, scaled (up or down)
    // to fill it in its longer dimension; nothing for an empty picture.
    static std::optional<QImage> normalised(const QImage &picture);

    // Decodes, normalises and writes the picture; returns the new file name and
    // the stored image, or nothing when the bytes are not a picture or cannot
    // be written.
    std::optional<std::pair<QString, QImage>> store(const QByteArray &bytes) const;
    QImage load(const QString &fileName) const;
    void remove(const QString &fileName) const;

private:
    QString m_folder;
};

} // namespace tillery
