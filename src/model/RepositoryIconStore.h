#pragma once

#include <QByteArray>
#include <QImage>
#include <QMap>
#include <QString>

#include <optional>

namespace tillery {

// Custom repository pictures as 256 x 256 PNG files in one folder, each under
// a fresh upper-case UUID name that is never reused. Its reading, decoding and
// writing belong on a worker thread.
class RepositoryIconStore {
public:
    static constexpr int side = 256;
    // Larger files are not read: no picture worth an icon is this big.
    static constexpr qint64 largestPictureFile = 32 * 1024 * 1024;

    // The bytes of a picture file (a regular file of at most the largest
    // size), or nothing when it cannot be read.
    static std::optional<QByteArray> readPictureFile(const QString &path);

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
    // The pictures of the stored files, by repository path; one that cannot
    // be read is left out.
    QMap<QString, QImage> loadAll(const QMap<QString, QString> &filesByRepository) const;
    void remove(const QString &fileName) const;

private:
    QString m_folder;
};

} // namespace tillery
