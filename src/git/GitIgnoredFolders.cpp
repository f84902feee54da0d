#include "git/GitIgnoredFolders.h"

#include "process/ToolRunner.h"
#include "records/TextDecoding.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace tillery::git {

ToolCommand ignoredFoldersCommand()
{
    return {{u"check-ignore"_s, u"--stdin"_s, u"-z"_s}, {0, 1}};
}

QByteArray ignoredFoldersInput(const QStringList &folders)
{
    QByteArray input;
    for (const QString &folder : folders) {
        input += "./";
        input += folder.toUtf8();
        input += '\0';
    }
    return input;
}

QSet<QString> parseIgnoredFolders(const QByteArray &output)
{
    QSet<QString> ignored;
    for (const QByteArray &entry : output.split('\0')) {
        if (entry.startsWith("./") && entry.size() > 2)
            ignored.insert(decodeUtf8OrEmpty(entry.sliced(2)));
    }
    ignored.remove(QString());
    return ignored;
}

QSet<QString> ignoredFolders(const QString &repositoryPath, const QStringList &folders)
{
    if (folders.isEmpty())
        return {};
    RunControl control;
    control.input = ignoredFoldersInput(folders);
    return parseIgnoredFolders(runGit(ignoredFoldersCommand(), repositoryPath, control).standardOutput);
}

QString commonGitFolder(const QString &gitFolder)
{
    QFile file(gitFolder + u"/commondir"_s);
    if (!file.open(QIODevice::ReadOnly))
        return gitFolder;
    const QString target = decodeUtf8OrEmpty(file.readLine(4096).trimmed());
    return target.isEmpty() ? gitFolder : QDir::cleanPath(QDir(gitFolder).absoluteFilePath(target));
}

} // namespace tillery::git
