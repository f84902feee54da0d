// Commits chosen lines: 1,000 of them, ten in each of 100 files of a
// generated repository of each kind, against committing the same 100 whole
// files. Each run starts from a fresh copy of the repository. Prints its
// figures; asserts nothing.

#include "Measuring.h"

#include "diff/FilePatch.h"
#include "model/VersionControl.h"
#include "process/ToolRunner.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;
using namespace tillery;
using namespace tillery::bench;

namespace {

constexpr int fileCount = 100;
constexpr int linesPerFile = 100;
// Every fifth line changes; the first five changed lines of each file are chosen (a removed and an added line each).
constexpr int chosenReplacements = 5;
const QString identity = u"Bench <bench@example.com>"_s;

QString fileName(int index)
{
    return u"src/file%1.txt"_s.arg(index, 3, 10, QLatin1Char('0'));
}

void writeFiles(const QString &repository, bool changed)
{
    QDir().mkpath(repository + u"/src"_s);
    for (int file = 0; file < fileCount; ++file) {
        QByteArray text;
        for (int line = 0; line < linesPerFile; ++line)
            text += (changed && line % 5 == 2 ? "changed line " : "line ") + QByteArray::number(line)
                    + " of a file that goes on for a while\n";
        QFile out(QDir(repository).filePath(fileName(file)));
        if (out.open(QIODevice::WriteOnly))
            out.write(text);
    }
}

void run(RepositoryKind kind, const QStringList &arguments, const QString &directory)
{
    const ToolCommand command{arguments, {0}};
    if (kind == RepositoryKind::git)
        runGit(command, directory);
    else
        runMercurial(command, directory, RunControl{{}, {}, true});
}

// A repository with the files committed, then changed.
void makeTemplate(RepositoryKind kind, const QString &repository)
{
    QDir().mkpath(repository);
    run(kind, {u"init"_s}, repository);
    writeFiles(repository, false);
    if (kind == RepositoryKind::git) {
        run(kind, {u"add"_s, u"-A"_s}, repository);
        run(kind,
            {u"-c"_s, u"user.name=Bench"_s, u"-c"_s, u"user.email=bench@example.com"_s, u"commit"_s, u"-qm"_s,
             u"base"_s},
            repository);
    } else {
        run(kind, {u"commit"_s, u"-A"_s, u"-u"_s, identity, u"-m"_s, u"base"_s}, repository);
    }
    writeFiles(repository, true);
}

QString copyOf(const QString &repository, const QString &destination)
{
    QProcess::execute(u"cp"_s, {u"-a"_s, repository, destination});
    return destination;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    const int runs = argc > 1 ? std::max(1, QString::fromLocal8Bit(argv[1]).toInt()) : 5;
    for (const RepositoryKind kind : {RepositoryKind::mercurial, RepositoryKind::git}) {
        const VersionControl &backend = versionControl(kind);
        QTemporaryDir folder;
        const QString original = folder.filePath(u"template"_s);
        makeTemplate(kind, original);
        QList<WorkingFile> files;
        for (int file = 0; file < fileCount; ++file)
            files.append(WorkingFile{fileName(file), FileState::modified});
        QList<double> whole;
        QList<double> chosen;
        qsizetype chosenLines = 0;
        QList<double> ratios;
        for (int round = 0; round < runs; ++round) {
            // Both copies and the choices are made first, so that the two
            // commits run back to back, in turns first, under the same load.
            const QString plain = copyOf(original, folder.filePath(u"plain%1"_s.arg(round)));
            const QString partial = copyOf(original, folder.filePath(u"partial%1"_s.arg(round)));
            QList<ChosenChanges> choices;
            chosenLines = 0;
            for (const WorkingFile &file : files) {
                ChosenChanges choice{file, backend.workingDiff(partial, file, [] { return false; }), {}};
                // The first changed lines of the file: each a removed line and the added one after it.
                const std::optional<FilePatch> patch = parseFilePatch(choice.shownDiff);
                for (const PatchHunk &hunk : patch->hunks) {
                    for (const PatchLine &line : hunk.lines) {
                        if (line.kind != PatchLineKind::context && choice.lines.size() < 2 * chosenReplacements)
                            choice.lines.insert(line.offset);
                    }
                }
                chosenLines += choice.lines.size();
                choices.append(choice);
            }
            const auto timed = [](const std::function<void()> &commit) {
                QElapsedTimer timer;
                timer.start();
                commit();
                return milliseconds(timer.nsecsElapsed());
            };
            const auto commitWhole = [&] {
                whole.append(timed([&] { backend.commit(plain, files, {u"Whole files"_s, QString(), identity}); }));
            };
            const auto commitChosen = [&] {
                chosen.append(timed([&] {
                    backend.commitChosen(partial, {}, choices, {u"Chosen lines"_s, QString(), identity});
                }));
            };
            if (round % 2 == 0) {
                commitWhole();
                commitChosen();
            } else {
                commitChosen();
                commitWhole();
            }
            ratios.append(chosen.last() / whole.last());
        }
        out << (kind == RepositoryKind::git ? "git" : "mercurial") << ": " << chosenLines << " chosen lines in "
            << fileCount << " files committed in " << QString::asprintf("%.0f", median(chosen))
            << " ms; the same files committed whole in " << QString::asprintf("%.0f", median(whole))
            << QString::asprintf(" ms; ratio %.2f (target: at most 1.5; the median of each round's ratio, the two "
                                 "commits back to back); medians of %d",
                                 median(ratios), runs)
            << Qt::endl;
    }
    return 0;
}
