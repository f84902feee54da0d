#include "model/CloneRequest.h"

#include "process/RemoteAddress.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

bool isGitHost(const QString &host)
{
    static const QStringList hosts{u"github.com"_s, u"gitlab.com"_s, u"codeberg.org"_s, u"git.sr.ht"_s};
    return hosts.contains(host.toLower());
}

// A local folder that holds a Git repository, bare or with a working copy.
bool isLocalGitRepository(const QString &path)
{
    const QDir folder(path);
    return folder.exists(u".git"_s) || (QFileInfo(folder.filePath(u"HEAD"_s)).isFile() && folder.exists(u"objects"_s));
}

} // namespace

RepositoryKind guessCloneKind(const QString &address)
{
    const QString trimmed = address.trimmed();
    if (trimmed.endsWith(u".git"_s) || trimmed.endsWith(u".git/"_s) || trimmed.startsWith(u"git@"_s)
        || trimmed.startsWith(u"git://"_s))
        return RepositoryKind::git;
    const QUrl url(trimmed);
    if (url.isValid() && !url.isLocalFile() && !url.host().isEmpty())
        return isGitHost(url.host()) ? RepositoryKind::git : RepositoryKind::mercurial;
    return isLocalGitRepository(url.isLocalFile() ? url.toLocalFile() : trimmed) ? RepositoryKind::git
                                                                                 : RepositoryKind::mercurial;
}

QString cloneFolderName(const QString &address)
{
    QString name = address.trimmed();
    while (name.endsWith(u'/'))
        name.chop(1);
    // Only the path and the host may name the folder, never the user or password.
    const QUrl url(name);
    if (name.contains(u"://"_s) && url.isValid()) {
        const QString last = url.path().section(u'/', -1, -1, QString::SectionSkipEmpty);
        name = last.isEmpty() ? url.host() : last;
    } else {
        QString afterColon = name.section(u'/', -1).section(u':', -1);
        name = afterColon.isEmpty() ? name.section(u':', 0, 0) : afterColon;
        name = name.section(u'@', -1);
    }
    if (name.endsWith(u".git"_s))
        name.chop(4);
    return name;
}

QString cloneProblem(const QString &address, const QString &parentFolder, const QString &name)
{
    if (address.trimmed().isEmpty())
        return QCoreApplication::translate("tillery::CloneRequest", "Enter the address of the repository to clone.");
    if (!validRemoteAddress(address))
        return QCoreApplication::translate("tillery::CloneRequest",
                                           "The address cannot begin with “-” or hold a line break.");
    if (!QFileInfo(parentFolder).isDir())
        return QCoreApplication::translate("tillery::CloneRequest", "Choose an existing folder to clone into.");
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty())
        return QCoreApplication::translate("tillery::CloneRequest", "Enter a name for the new folder.");
    if (trimmed.contains(u'/') || trimmed == u"." || trimmed == u"..")
        return QCoreApplication::translate("tillery::CloneRequest",
                                           "The folder name cannot contain “/” or be “.” or “..”.");
    if (QFileInfo::exists(QDir(parentFolder).filePath(trimmed)))
        return QCoreApplication::translate("tillery::CloneRequest", "“%1” already exists in that folder.").arg(trimmed);
    return QString();
}

} // namespace tillery
