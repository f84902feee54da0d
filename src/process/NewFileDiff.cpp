#include "process/NewFileDiff.h"

#include "process/Failure.h"
#include "records/TextDecoding.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

std::optional<QString> readUtf8File(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return std::nullopt;
    return decodeUtf8(bytes);
}

} // namespace

QString newFileDiff(const QString &repositoryPath, const QString &relativePath,
                    const CancellationCheck &isCancelled)
{
    // Joined by hand: QDir would take a name that begins with ":" for a resource path.
    const QString content = readUtf8File(repositoryPath + u'/' + relativePath)
                                .value_or(u"Binary or unreadable file"_s);
    if (isCancelled())
        throw CancellationFailure();

    return u"diff --git a/"_s + relativePath + u" b/"_s + relativePath + u"\nnew file\n--- /dev/null\n+++ b/"_s
           + relativePath + u"\n+"_s + QString(content).replace(u'\n', u"\n+"_s);
}

} // namespace tillery
