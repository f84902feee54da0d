#include "RecordPrinting.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include "model/VersionControl.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;

Q_DECLARE_METATYPE(tillery::RepositoryKind)

// Both backends answer through the one interface with the same records.
class VersionControlTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void reachesTheBackendOfItsKind_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<QString>("changesetWord");
        QTest::newRow("mercurial") << RepositoryKind::mercurial << u"changeset"_s;
        QTest::newRow("git") << RepositoryKind::git << u"commit"_s;
    }

    void reachesTheBackendOfItsKind()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(QString, changesetWord);
        std::unique_ptr<test::RepositoryFixture> repository;
        if (kind == RepositoryKind::git)
            repository = std::make_unique<test::GitFixture>();
        else
            repository = std::make_unique<test::MercurialFixture>();
        repository->write(u"a.txt"_s, "one\n");
        repository->write(u"gone.txt"_s, "bye\n");
        repository->commitAll(u"first"_s);
        repository->write(u"a.txt"_s, "two\n");

        const VersionControl &backend = versionControl(kind);
        QCOMPARE(backend.kind(), kind);
        QCOMPARE(backend.wording().changeset, changesetWord);
        const RepositorySnapshot snapshot = backend.loadSnapshot(repository->path());
        QCOMPARE(snapshot.files, (QList<WorkingFile>{{u"a.txt"_s, FileState::modified}}));
        QCOMPARE(snapshot.history.size(), 1);
        const Changeset &first = snapshot.history.first();

        const QString diff = backend.workingDiff(repository->path(), snapshot.files.first(), [] { return false; });
        QVERIFY2(diff.contains(u"\n-one\n+two\n"_s), qPrintable(diff));
        QCOMPARE(backend.changesetFiles(repository->path(), first),
                 (QList<WorkingFile>{{u"a.txt"_s, FileState::added}, {u"gone.txt"_s, FileState::added}}));
        QVERIFY(backend.changesetDiff(repository->path(), first, u"gone.txt"_s).contains(u"\n+bye"_s));
        QCOMPARE(backend.fileContents(repository->path(), first, {u"a.txt"_s, FileState::added}), QByteArray("one\n"));
    }
};

QTEST_GUILESS_MAIN(VersionControlTest)
#include "tst_version_control.moc"
