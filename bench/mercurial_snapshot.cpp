// Loads a large generated Mercurial repository with loadMercurialSnapshot and
// compares its wall time with the same hg commands run directly, then reports
// peak memory. Prints its figures; asserts nothing.

#include "SnapshotBenchmark.h"

#include "mercurial/MercurialSnapshot.h"
#include "process/Executables.h"

#include <QCommandLineParser>
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
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Mercurial snapshot loading benchmark."_s);
    parser.addHelpOption();
    const QCommandLineOption fixtureOption(u"fixture"_s, u"Measure an existing repository."_s, u"folder"_s);
    const QCommandLineOption smallOption(u"small"_s, u"Generate a smaller repository (a tenth)."_s);
    const QCommandLineOption keepOption(u"keep"_s, u"Keep the generated repository."_s);
    const QCommandLineOption runsOption(u"runs"_s, u"Timed runs (default 5)."_s, u"count"_s, u"5"_s);
    parser.addOptions({fixtureOption, smallOption, keepOption, runsOption});
    parser.process(application);
    const int runs = std::max(1, parser.value(runsOption).toInt());

    if (parser.isSet(fixtureOption)) {
        const std::optional<QString> hg = findMercurialExecutable();
        if (!hg) {
            out << "hg was not found\n";
            return 1;
        }
        const bench::SnapshotLoader loader{u"loadMercurialSnapshot"_s, "HG", *hg, mercurialLeadingArgument(),
                                           mercurialEnvironment(), loadMercurialSnapshot};
        return bench::measureSnapshotLoading(loader, QDir(parser.value(fixtureOption)).absolutePath(), runs);
    }

    const bool small = parser.isSet(smallOption);
    const QStringList size = small ? QStringList{u"--files"_s, u"5000"_s, u"--changesets"_s, u"500"_s,
                                                 u"--bookmarks"_s, u"12"_s, u"--changes"_s, u"320"_s}
                                   : QStringList{u"--files"_s, u"50000"_s, u"--changesets"_s, u"5000"_s,
                                                 u"--bookmarks"_s, u"36"_s, u"--changes"_s, u"3200"_s};
    QTemporaryDir folder(QDir::tempPath() + u"/tillery-bench-XXXXXX"_s);
    folder.setAutoRemove(!parser.isSet(keepOption));
    const QString repository = folder.filePath(u"repository"_s);
    out << "generating " << size.join(u' ') << " in " << repository << "\n";
    out.flush();
    if (!bench::generateFixture(u"make_mercurial_fixture.py"_s, QStringList{repository} + size)) {
        out << "the fixture generator failed\n";
        return 1;
    }
    const int status = bench::measureInChild({u"--fixture"_s, repository, u"--runs"_s, QString::number(runs)});
    if (parser.isSet(keepOption))
        out << "kept " << repository << "\n";
    return status;
}
