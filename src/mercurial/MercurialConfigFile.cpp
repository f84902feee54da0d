#include "mercurial/MercurialConfigFile.h"

#include "mercurial/IniText.h"
#include "process/Failure.h"
#include "process/RemoteAddress.h"
#include "process/ToolFailure.h"
#include "records/TextDecoding.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace tillery::mercurial {

namespace {

bool isInside(const QString &path, const QString &folder)
{
    return path == folder || path.startsWith(folder + u'/');
}

// Where the text really goes: the file itself, or the target of a link that
// stays inside the repository.
QString writablePath(const QString &repositoryPath, const QString &configPath)
{
    const QFileInfo config(configPath);
    if (!config.isSymLink())
        return configPath;
    const QString root = QFileInfo(repositoryPath).canonicalFilePath();
    const QString target = QDir::cleanPath(QDir(config.absolutePath()).absoluteFilePath(config.symLinkTarget()));
    const QString resolvedTarget = QFileInfo(target).exists() ? QFileInfo(target).canonicalFilePath() : target;
    if (root.isEmpty() || !isInside(resolvedTarget, root))
        throw MercurialFailure::malformedOutput(
            u"the repository configuration file links to a file outside the repository"_s);
    return resolvedTarget;
}

QString readConfiguration(const QString &path)
{
    QFile file(path);
    if (!file.exists())
        return QString();
    if (!file.open(QIODevice::ReadOnly))
        throw MercurialFailure::malformedOutput(u"the repository configuration file could not be read"_s);
    const std::optional<QString> text = decodeUtf8(file.readAll());
    if (!text)
        throw MercurialFailure::malformedOutput(u"the repository configuration file is not UTF-8 text"_s);
    return *text;
}

void writeConfiguration(const QString &path, const QString &text)
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
        throw PlatformFailure(u"%1 could not be written: %2"_s.arg(path, file.errorString()));
}

} // namespace

void writeDefaultPath(const QString &repositoryPath, const QString &address)
{
    const QString path = writablePath(repositoryPath, repositoryPath + u"/.hg/hgrc"_s);
    const std::optional<QString> text = setIniValue(readConfiguration(path), u"paths"_s, u"default"_s, address);
    if (!text)
        throw MercurialFailure::malformedOutput(invalidAddressSentence());
    writeConfiguration(path, *text);
}

} // namespace tillery::mercurial
