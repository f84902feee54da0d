#include "process/NewFileDiff.h"

#include "process/Failure.h"
#include "process/WorkingFileRead.h"
#include "records/TextDecoding.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

QString unreadable()
{
    return QCoreApplication::translate("tillery::NewFileDiff", "Binary or unreadable file");
}

QString shownContents(const WorkingFileContents &contents)
{
    using Kind = WorkingFileContents::Kind;
    switch (contents.kind) {
    case Kind::regularFile:
    case Kind::symbolicLink:
        return decodeUtf8(contents.bytes).value_or(unreadable());
    case Kind::tooLarge:
        return QCoreApplication::translate("tillery::NewFileDiff", "File too large to show");
    case Kind::notARegularFile:
    case Kind::unreadable:
        return unreadable();
    }
    Q_UNREACHABLE();
    return QString();
}

} // namespace

QString newFileDiff(const QString &repositoryPath, const QString &relativePath, const CancellationCheck &isCancelled)
{
    const QString content =
        shownContents(readWorkingFile(repositoryPath, relativePath, workingFileShowLimit, isCancelled));
    if (isCancelled())
        throw CancellationFailure();

    return u"diff --git a/"_s + relativePath + u" b/"_s + relativePath + u"\nnew file\n--- /dev/null\n+++ b/"_s
           + relativePath + u"\n+"_s + QString(content).replace(u'\n', u"\n+"_s);
}

} // namespace tillery
