#include "process/RepositoryDetection.h"

#include "process/ToolRunner.h"
#include "records/TextDecoding.h"

#include <QDir>
#include <QList>

#include <exception>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

// The standardized absolute form of a root printed by a tool, or empty.
QString rootFromOutput(const QByteArray &output, const QString &workingDirectory)
{
    const QString printed = decodeUtf8OrEmpty(output).trimmed();
    if (printed.isEmpty())
        return QString();
    return QDir::cleanPath(QDir(workingDirectory).absoluteFilePath(printed));
}

} // namespace

QString mercurialRoot(const QString &path)
{
    const CommandOutput output = runMercurial({u"root"_s}, path, {0});
    const QString root = rootFromOutput(output.standardOutput, path);
    if (root.isEmpty())
        throw MercurialFailure::invalidRepository(path);
    return root;
}

QString gitRoot(const QString &path)
{
    const CommandOutput output = runGit({u"rev-parse"_s, u"--show-toplevel"_s}, path, {0});
    const QString root = rootFromOutput(output.standardOutput, path);
    if (root.isEmpty())
        throw GitFailure::invalidRepository(path);
    return root;
}

Repository detectRepository(const QString &path)
{
    QList<Repository> candidates;
    const auto consider = [&](RepositoryKind kind, QString (*rootOf)(const QString &)) {
        try {
            candidates.append(Repository{rootOf(path), kind});
        } catch (const std::exception &) {
            // A tool that does not recognise the folder simply offers no candidate.
        }
    };
    consider(RepositoryKind::git, gitRoot);
    consider(RepositoryKind::mercurial, mercurialRoot);

    if (candidates.isEmpty())
        throw RepositoryFailure::invalidRepository(path);
    Repository innermost = candidates.first();
    for (const Repository &candidate : std::as_const(candidates)) {
        if (candidate.path.size() > innermost.path.size())
            innermost = candidate;
    }
    return innermost;
}

} // namespace tillery
