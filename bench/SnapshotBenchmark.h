#pragma once

// What the snapshot benchmarks share: generating a fixture in a child,
// finding out which tool commands a load runs, and timing the load against
// the same commands run directly.

#include "records/RepositorySnapshot.h"

#include <QCoreApplication>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace tillery::bench {

struct SnapshotLoader {
    QString title; // "loadGitSnapshot"
    const char *toolVariable; // "GIT": where the loader looks for the tool
    QString executable; // the real tool
    QProcessEnvironment environment;
    std::function<RepositorySnapshot(const QString &)> load;
    std::function<void()> forgetCaches = [] {}; // what a load keeps for the next one
};

// The options both snapshot benchmarks take.
struct BenchmarkOptions {
    QString fixture; // measure this repository instead of generating one
    bool small = false;
    bool keep = false;
    int runs = 5;
};
BenchmarkOptions parseBenchmarkOptions(const QCoreApplication &application, const QString &description);

// Times `runs` loads of the repository and, in the same rounds, the commands a
// load runs, each run directly; prints the medians, their ratio, the heap one
// snapshot holds and peak memory.
int measureSnapshotLoading(const SnapshotLoader &loader, const QString &repository, int runs);

// Runs a Python fixture generator from bench/ with /usr/bin/python3; true on success.
bool generateFixture(const QString &script, const QStringList &arguments);

// Runs a bash script from bench/, its standard error passed on: its
// standard output, or nothing when it fails.
std::optional<QByteArray> fixtureScriptOutput(const QString &script, const QStringList &arguments);

// Runs this benchmark again as a child with the arguments (so that the
// generator's memory does not count as a tool's); returns its exit status.
int measureInChild(const QStringList &arguments);

} // namespace tillery::bench
