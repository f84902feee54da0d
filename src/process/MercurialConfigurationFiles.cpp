#include "process/MercurialConfigurationFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

// A folder stands for itself (a file added to it changes its state) and its *.rc files.
void addPathOrFolder(const QString &path, QStringList &files)
{
    files.append(path);
    if (!QFileInfo(path).isDir())
        return;
    const QStringList names = QDir(path).entryList({u"*.rc"_s}, QDir::Files, QDir::Name);
    for (const QString &name : names)
        files.append(path + u'/' + name);
}

void addInstallation(const QString &root, QStringList &files)
{
    files.append(root + u"/hgrc"_s);
    addPathOrFolder(root + u"/hgrc.d"_s, files);
}

// The files a configuration file names with "%include", relative to its folder.
QStringList includedFiles(const QString &file, const QByteArray &contents)
{
    QStringList included;
    for (const QByteArray &line : contents.split('\n')) {
        if (!line.startsWith("%include"))
            continue;
        const QString target = QString::fromUtf8(line.sliced(8).trimmed());
        if (target.isEmpty())
            continue;
        const QString expanded = target.startsWith(u"~/"_s) ? QDir::homePath() + target.sliced(1) : target;
        included.append(QDir::cleanPath(QFileInfo(file).dir().filePath(expanded)));
    }
    return included;
}

} // namespace

QStringList mercurialConfigurationFiles(const QString &executable, const QProcessEnvironment &environment,
                                        const QString &repositoryRoot,
                                        const std::function<QByteArray(const QString &)> &readFile)
{
    QStringList files;
    if (environment.contains(u"HGRCPATH"_s)) {
        for (const QString &entry : environment.value(u"HGRCPATH"_s).split(u':', Qt::SkipEmptyParts))
            addPathOrFolder(QDir::cleanPath(entry), files);
    } else {
        const QString installation =
            QFileInfo(QFileInfo(executable).absolutePath()).absolutePath() + u"/etc/mercurial"_s;
        if (installation != u"//etc/mercurial"_s)
            addInstallation(QDir::cleanPath(installation), files);
        addInstallation(u"/etc/mercurial"_s, files);
        const QString home = environment.value(u"HOME"_s, QDir::homePath());
        files.append(home + u"/.hgrc"_s);
        QString configHome = environment.value(u"XDG_CONFIG_HOME"_s);
        if (!QDir::isAbsolutePath(configHome))
            configHome = home + u"/.config"_s;
        files.append(configHome + u"/hg/hgrc"_s);
    }
    const QString store = repositoryRoot + u"/.hg"_s;
    files.append(store + u"/hgrc"_s);
    files.append(store + u"/hgrc-not-shared"_s);
    files.append(store + u"/sharedpath"_s);
    const QByteArray shared = readFile(store + u"/sharedpath"_s).trimmed();
    if (!shared.isEmpty())
        files.append(QDir::cleanPath(QDir(store).filePath(QString::fromUtf8(shared))) + u"/hgrc"_s);

    QSet<QString> seen(files.cbegin(), files.cend());
    for (qsizetype index = 0; index < files.size(); ++index) {
        for (const QString &included : includedFiles(files.at(index), readFile(files.at(index)))) {
            if (!seen.contains(included)) {
                seen.insert(included);
                files.append(included);
            }
        }
    }
    return files;
}

QByteArray fileStateFingerprint(const QStringList &paths)
{
    QByteArray fingerprint;
    for (const QString &path : paths) {
        const QFileInfo info(path);
        fingerprint += QFile::encodeName(path);
        // The change time as well: replacing a file moves it even when the
        // replacement keeps the size and the modification time.
        if (info.exists()) {
            fingerprint += '|' + QByteArray::number(info.size()) + '|'
                           + QByteArray::number(info.lastModified().toMSecsSinceEpoch()) + '|'
                           + QByteArray::number(info.metadataChangeTime().toMSecsSinceEpoch());
        } else {
            fingerprint += "|-";
        }
        fingerprint += '\n';
    }
    return fingerprint;
}

QByteArray mercurialConfigurationFingerprint(const QString &executable, const QProcessEnvironment &environment,
                                             const QString &repositoryRoot)
{
    const auto readFile = [](const QString &path) {
        QFile file(path);
        return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) ? file.read(1024 * 1024) : QByteArray();
    };
    return fileStateFingerprint(mercurialConfigurationFiles(executable, environment, repositoryRoot, readFile));
}

} // namespace tillery
