// Amending and undoing the last commit on real repositories of both kinds:
// what the history, the committed files and the working files hold after.
#include "Checks.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include "model/VersionControl.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::addRowsForBothKinds;

namespace {

enum class Step { amendFile, amendMessage, amendChosen, undo };
enum class Setting { plain, published, nothingCommitted, rootOnly };

// "first" with a.txt, then "second" adding a line and b.txt; a.txt changed again and c.txt new in the
// working copy. Published: the working copy's parent is public or on a remote.
std::unique_ptr<test::RepositoryFixture> prepared(RepositoryKind kind, Setting setting,
                                                  std::unique_ptr<test::GitFixture> &remote)
{
    auto repository = test::makeFixture(kind);
    if (setting == Setting::nothingCommitted)
        return repository;
    repository->write(u"a.txt"_s, "1\n");
    repository->commitAll(u"first"_s);
    if (setting != Setting::rootOnly) {
        repository->write(u"a.txt"_s, "1\n2\n");
        repository->write(u"b.txt"_s, "b\n");
        repository->commitAll(u"second"_s);
    }
    repository->write(u"a.txt"_s, "1\n2\n3\n4\n");
    repository->write(u"c.txt"_s, "c\n");
    if (setting == Setting::published && !repository->isGit())
        repository->tool({u"phase"_s, u"--public"_s, u"--rev=."_s});
    if (setting == Setting::published && repository->isGit()) {
        remote = test::GitFixture::bare();
        repository->tool({u"remote"_s, u"add"_s, u"origin"_s, remote->path()});
        repository->tool({u"push"_s, u"--quiet"_s, u"--set-upstream"_s, u"origin"_s, u"HEAD"_s});
    }
    return repository;
}

void perform(const test::RepositoryFixture &repository, Step step)
{
    const CommitRequest amend{u"second, amended"_s, u"More."_s, {}, true};
    const VersionControl &backend = repository.backend();
    switch (step) {
    case Step::amendFile:
        return backend.commit(repository.path(), {{u"a.txt"_s, FileState::modified}}, amend);
    case Step::amendMessage:
        return backend.commit(repository.path(), {}, amend);
    case Step::amendChosen:
        // The first of a.txt's changed lines ("3").
        return backend.commitChosen(repository.path(), {}, {repository.choose(u"a.txt"_s, {0})}, amend);
    case Step::undo:
        return backend.undoLastCommit(repository.path());
    }
}

QStringList descriptions(const test::RepositoryFixture &repository)
{
    QStringList result;
    for (const Changeset &changeset : repository.snapshot().history)
        result.append(changeset.description);
    return result;
}

} // namespace

class LastCommitTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void rewrites_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<Step>("step");
        QTest::addColumn<QStringList>("history");
        QTest::addColumn<QByteArray>("committedA");
        // The working copy's changes after, each as the snapshot lists them.
        QTest::addColumn<QStringList>("changes");
        const QStringList amended{u"second, amended\n\nMore."_s, u"first"_s};
        const QStringList unchanged{u"a.txt M"_s, u"c.txt ?"_s};
        addRowsForBothKinds("amend with a file", [&](QTestData &row) {
            row << Step::amendFile << amended << "1\n2\n3\n4\n"_ba << QStringList{u"c.txt ?"_s};
        });
        addRowsForBothKinds("amend the message alone",
                            [&](QTestData &row) { row << Step::amendMessage << amended << "1\n2\n"_ba << unchanged; });
        addRowsForBothKinds("amend with a chosen line", [&](QTestData &row) {
            row << Step::amendChosen << amended << "1\n2\n3\n"_ba << unchanged;
        });
        addRowsForBothKinds("undo", [&](QTestData &row) {
            row << Step::undo << QStringList{u"first"_s} << "1\n"_ba
                << QStringList{u"a.txt M"_s, u"b.txt A"_s, u"c.txt ?"_s};
        });
    }

    void rewrites()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(Step, step);
        std::unique_ptr<test::GitFixture> remote;
        const auto repository = prepared(kind, Setting::plain, remote);
        if (repository->isGit() && step == Step::amendMessage) // something staged stays out of the amend
            repository->tool({u"add"_s, u"--"_s, u"a.txt"_s});

        perform(*repository, step);

        QTEST(descriptions(*repository), "history");
        QTEST(repository->committed(u"a.txt"_s), "committedA");
        QCOMPARE(repository->read(u"a.txt"_s), "1\n2\n3\n4\n"_ba);
        QStringList changes;
        for (const WorkingFile &file : repository->snapshot().files)
            changes.append(file.path + u' ' + fileStateLetter(file.state));
        changes.sort();
        QTEST(changes, "changes");
    }

    void refusals_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<Setting>("setting");
        QTest::addColumn<Step>("step");
        QTest::addColumn<QString>("reason");
        for (const Step step : {Step::amendFile, Step::undo}) {
            const bool amend = step == Step::amendFile;
            QTest::addRow("%s published, hg", amend ? "amend" : "undo")
                << RepositoryKind::mercurial << Setting::published << step << u"public"_s;
            QTest::addRow("%s published, git", amend ? "amend" : "undo")
                << RepositoryKind::git << Setting::published << step << u"already on “origin/"_s;
            QTest::addRow("%s before any commit, hg", amend ? "amend" : "undo")
                << RepositoryKind::mercurial << Setting::nothingCommitted << step << u"no changeset yet"_s;
            QTest::addRow("%s before any commit, git", amend ? "amend" : "undo")
                << RepositoryKind::git << Setting::nothingCommitted << step << u"no commit yet"_s;
        }
        QTest::newRow("undo the first commit, git")
            << RepositoryKind::git << Setting::rootOnly << Step::undo << u"first commit cannot be undone"_s;
    }

    // Nothing changes: not the history, not a working byte.
    void refusals()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(Setting, setting);
        QFETCH(Step, step);
        QFETCH(QString, reason);
        std::unique_ptr<test::GitFixture> remote;
        const auto repository = prepared(kind, setting, remote);
        if (setting == Setting::nothingCommitted)
            repository->write(u"a.txt"_s, "1\n");
        const QStringList history = descriptions(*repository);
        QCOMPARE(repository->backend().rewriteRefusal(repository->path()).has_value(), setting != Setting::rootOnly);
        const QByteArray working = repository->read(u"a.txt"_s);
        const QString failure = test::failureOf([&] { perform(*repository, step); });
        QVERIFY2(failure.contains(reason, Qt::CaseInsensitive), qPrintable(failure));
        QCOMPARE(descriptions(*repository), history);
        QCOMPARE(repository->read(u"a.txt"_s), working);
    }
};

QTEST_GUILESS_MAIN(LastCommitTest)
#include "tst_last_commit.moc"
