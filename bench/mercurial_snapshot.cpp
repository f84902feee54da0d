// Loads a large generated Mercurial repository with loadMercurialSnapshot and
// compares its wall time with the same hg commands run directly, then reports
// peak memory. Prints its figures; asserts nothing.

#include "SnapshotBenchmark.h"

#include "mercurial/MercurialSnapshot.h"
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
        bench::parseBenchmarkOptions(application, u"Mercurial snapshot loading benchmark."_s);

    if (!options.fixture.isEmpty()) {
        const std::optional<QString> hg = findMercurialExecutable();
        if (!hg) {
            out << "hg was not found\n";
            return 1;
        }
        const bench::SnapshotLoader loader{u"loadMercurialSnapshot"_s, "HG", *hg, mercurialEnvironment(),
                                           loadMercurialSnapshot};
        return bench::measureSnapshotLoading(loader, options.fixture, options.runs);
    }

    const bool small = options.small;
    const QStringList size = small ? QStringList{u"--files"_s,     u"5000"_s, u"--changesets"_s, u"500"_s,
                                                 u"--bookmarks"_s, u"12"_s,   u"--changes"_s,    u"320"_s}
                                   : QStringList{u"--files"_s,     u"50000"_s, u"--changesets"_s, u"5000"_s,
                                                 u"--bookmarks"_s, u"36"_s,    u"--changes"_s,    u"3200"_s};
    QTemporaryDir folder(QDir::tempPath() + u"/tillery-bench-XXXXXX"_s);
    folder.setAutoRemove(!options.keep);
    const QString repository = folder.filePath(u"repository"_s);
    out << "generating " << size.join(u' ') << " in " << repository << "\n";
    out.flush();
    if (!bench::generateFixture(u"make_mercurial_fixture.py"_s, QStringList{repository} + size)) {
        out << "the fixture generator failed\n";
        return 1;
    }
    const int status = bench::measureInChild({u"--fixture"_s, repository, u"--runs"_s, QString::number(options.runs)});
    if (options.keep)
        out << "kept " << repository << "\n";
    return status;
}
