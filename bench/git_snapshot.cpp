// Loads large generated Git repositories with loadGitSnapshot and compares the
// wall time with the same git commands run directly: first a wide repository
// (~50,000 files, ~5,000 commits, a dirty working copy), then a deep one
// (200,000 commits), showing how the time splits across the commands as
// history grows. Prints its figures; asserts nothing.

#include "SnapshotBenchmark.h"

#include "git/CommitLogCache.h"
#include "git/GitSnapshot.h"
#include "process/Executables.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTextStream>

using namespace Qt::StringLiterals;
using namespace tillery;

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    const bench::BenchmarkOptions options =
        bench::parseBenchmarkOptions(application, u"Git snapshot loading benchmark."_s);

    if (!options.fixture.isEmpty()) {
        const std::optional<QString> git = findGitExecutable();
        if (!git) {
            out << "git was not found\n";
            return 1;
        }
        const bench::SnapshotLoader loader{u"loadGitSnapshot"_s, "GIT", *git, gitEnvironment(), loadGitSnapshot,
                                           git::forgetCommitLogs};
        return bench::measureSnapshotLoading(loader, options.fixture, options.runs);
    }

    const bool small = options.small;
    const QList<std::pair<QString, QStringList>> fixtures{
        {u"wide"_s, small
                        ? QStringList{u"--files"_s, u"5000"_s, u"--commits"_s, u"500"_s, u"--changes"_s, u"320"_s}
                        : QStringList{u"--files"_s, u"50000"_s, u"--commits"_s, u"5000"_s, u"--changes"_s, u"3200"_s}},
        {u"deep"_s, small
                        ? QStringList{u"--files"_s, u"500"_s, u"--commits"_s, u"20000"_s, u"--changes"_s, u"32"_s}
                        : QStringList{u"--files"_s, u"5000"_s, u"--commits"_s, u"200000"_s, u"--changes"_s, u"320"_s}},
    };
    QTemporaryDir folder(QDir::tempPath() + u"/tillery-bench-XXXXXX"_s);
    folder.setAutoRemove(!options.keep);
    int status = 0;
    for (const auto &[name, size] : fixtures) {
        const QString repository = folder.filePath(name);
        out << "\n== " << name << " repository: generating " << size.join(u' ') << " --remote in " << repository
            << "\n";
        out.flush();
        if (!bench::generateFixture(u"make_git_fixture.py"_s,
                                    QStringList{repository} + size + QStringList{u"--remote"_s})) {
            out << "the fixture generator failed\n";
            return 1;
        }
        status |= bench::measureInChild({u"--fixture"_s, repository, u"--runs"_s, QString::number(options.runs)});
    }
    if (options.keep)
        out << "kept " << folder.path() << "\n";
    return status;
}
