#include "process/RepositoryFile.h"

#include "records/TextDecoding.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

bool isInside(const QString &path, const QString &folder)
{
    return path == folder || path.startsWith(folder + u'/');
}

} // namespace

std::variant<RepositoryTextFile, RepositoryFileProblem> readRepositoryTextFile(const QString &repositoryPath,
                                                                              const QString &relativePath)
{
    QString path = repositoryPath + u'/' + relativePath;
    const QFileInfo info(path);
    if (info.isSymLink()) {
        const QString root = QFileInfo(repositoryPath).canonicalFilePath();
        const QString target = QDir::cleanPath(QDir(info.absolutePath()).absoluteFilePath(info.symLinkTarget()));
        const QFileInfo targetInfo(target);
        const QString resolved = targetInfo.exists() ? targetInfo.canonicalFilePath() : target;
        if (root.isEmpty() || !isInside(resolved, root))
            return RepositoryFileProblem::linksOutside;
        path = resolved;
    }

    QFile file(path);
    if (!file.exists())
        return RepositoryTextFile{path, QString()};
    if (!file.open(QIODevice::ReadOnly))
        return RepositoryFileProblem::unreadable;
    const std::optional<QString> text = decodeUtf8(file.readAll());
    if (!text)
        return RepositoryFileProblem::notUtf8;
    return RepositoryTextFile{path, *text};
}

std::optional<QString> replaceTextFile(const QString &path, const QString &text)
{
    const QFileInfo existing(path);
    QSaveFile file(path);
    file.setDirectWriteFallback(false);
    bool written = file.open(QIODevice::WriteOnly);
    if (written && existing.exists())
        written = file.setPermissions(existing.permissions());
    const QByteArray bytes = text.toUtf8();
    written = written && file.write(bytes) == bytes.size() && file.commit();
    if (!written)
        return u"%1 could not be written: %2"_s.arg(path, file.errorString());
    return std::nullopt;
}

} // namespace tillery
