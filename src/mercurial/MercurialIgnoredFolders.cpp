#include "mercurial/MercurialIgnoredFolders.h"

#include "process/ToolRunner.h"
#include "records/TextDecoding.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace tillery::mercurial {

namespace {

// Keeps each command line well below the system's limit on argument length.
constexpr qsizetype foldersPerRun = 1000;

} // namespace

ToolCommand ignoredFoldersCommand(const QStringList &folders)
{
    QStringList arguments{u"debugignore"_s, u"--"_s};
    for (const QString &folder : folders)
        arguments << u"path:"_s + folder;
    return {arguments, {0}};
}

QSet<QString> parseIgnoredFolders(const QByteArray &output, const QStringList &folders)
{
    QSet<QString> ignored;
    const QList<QByteArray> lines = output.split('\n');
    qsizetype line = 0;
    for (const QString &folder : folders) {
        // Skip the rule that explained the previous verdict.
        while (line < lines.size() && lines[line].startsWith("(ignore rule in "))
            ++line;
        if (line >= lines.size())
            break;
        const QByteArray name = folder.toUtf8();
        const QByteArray &verdict = lines[line];
        if (verdict == name + " is not ignored") {
            ++line;
            continue;
        }
        if (verdict == name + " is ignored"
            || verdict.startsWith(name + " is ignored because of containing directory ")) {
            ignored.insert(folder);
            ++line;
            continue;
        }
        break;
    }
    return ignored;
}

QSet<QString> ignoredFolders(const QString &repositoryPath, const QStringList &folders)
{
    QSet<QString> ignored;
    for (qsizetype first = 0; first < folders.size(); first += foldersPerRun) {
        const QStringList some = folders.mid(first, foldersPerRun);
        ignored += parseIgnoredFolders(runMercurial(ignoredFoldersCommand(some), repositoryPath).standardOutput, some);
    }
    return ignored;
}

QString storeFolder(const QString &repositoryPath)
{
    const QString ownFolder = repositoryPath + u"/.hg"_s;
    QFile shared(ownFolder + u"/sharedpath"_s);
    if (shared.open(QIODevice::ReadOnly)) {
        const QString target = decodeUtf8OrEmpty(shared.readAll().trimmed());
        if (!target.isEmpty())
            return QDir::cleanPath(QDir(ownFolder).absoluteFilePath(target)) + u"/store"_s;
    }
    return ownFolder + u"/store"_s;
}

} // namespace tillery::mercurial
