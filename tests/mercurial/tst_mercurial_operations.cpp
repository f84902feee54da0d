#include "Checks.h"
#include "FakeTool.h"
#include "MercurialServer.h"
#include "RecordPrinting.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include "mercurial/MercurialOperations.h"
#include "mercurial/MercurialSnapshot.h"
#include "model/VersionControl.h"
#include "process/ToolFailure.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::failureOf;
using test::readFile;
using test::MercurialFixture;

namespace {

QString lastDescription(const MercurialFixture &repository)
{
    return QString::fromUtf8(repository.hg({u"log"_s, u"-l"_s, u"1"_s, u"-T"_s, u"{desc}"_s}));
}

const VersionControl &hg()
{
    return versionControl(RepositoryKind::mercurial);
}

} // namespace

using Operation = std::function<void(const QString &repositoryPath)>;
Q_DECLARE_METATYPE(Operation)

class MercurialOperationsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void commitsMarkedFilesOnly()
    {
        const MercurialFixture repository;
        repository.write(u"kept.txt"_s, "1\n");
        repository.write(u"changed.txt"_s, "1\n");
        repository.commitAll(u"base"_s);
        repository.write(u"kept.txt"_s, "2\n");
        repository.write(u"changed.txt"_s, "2\n");
        repository.write(u"new file.txt"_s, "new\n");
        repository.write(u"ignored new.txt"_s, "new\n");

        hg().commit(repository.path(),
                    {{u"changed.txt"_s, FileState::modified}, {u"new file.txt"_s, FileState::untracked}},
                    u"  Fix  "_s, u"\nDetails\n"_s, u"   "_s);
        QCOMPARE(lastDescription(repository), u"Fix\n\nDetails"_s);
        QCOMPARE(QString::fromUtf8(repository.hg({u"log"_s, u"-l"_s, u"1"_s, u"-T"_s, u"{user}"_s})),
                 u"Tillery Tester <tester@example.com>"_s);
        QCOMPARE(loadMercurialSnapshot(repository.path()).files,
                 (QList<WorkingFile>{{u"ignored new.txt"_s, FileState::untracked},
                                     {u"kept.txt"_s, FileState::modified}}));

        mercurial::commit({}, u"Everything"_s, QString(), u"Robot <robot@example.com>"_s, repository.path());
        QCOMPARE(QString::fromUtf8(repository.hg({u"log"_s, u"-l"_s, u"1"_s, u"-T"_s, u"{user}|{files}"_s})),
                 u"Robot <robot@example.com>|kept.txt"_s);
    }

    void discardLeavesNoBackupsAndNoUntrackedLoss()
    {
        const MercurialFixture repository;
        repository.write(u"a.txt"_s, "a\n");
        repository.write(u"b.txt"_s, "b\n");
        repository.commitAll(u"base"_s);
        repository.write(u"a.txt"_s, "changed\n");
        repository.write(u"b.txt"_s, "changed\n");
        repository.write(u"untracked.txt"_s, "precious\n");
        mercurial::discard({u"a.txt"_s}, repository.path());
        QCOMPARE(readFile(repository.filePath(u"a.txt"_s)), QByteArray("a\n"));
        QCOMPARE(readFile(repository.filePath(u"b.txt"_s)), QByteArray("changed\n"));
        mercurial::discardAll(repository.path());
        QCOMPARE(readFile(repository.filePath(u"b.txt"_s)), QByteArray("b\n"));
        QCOMPARE(readFile(repository.filePath(u"untracked.txt"_s)), QByteArray("precious\n"));
        QCOMPARE(QDir(repository.path()).entryList({u"*.orig"_s}), QStringList());
    }

    void discardNewFileWithoutCommits()
    {
        const MercurialFixture repository;
        repository.write(u"first.txt"_s, "first\n");
        repository.hg({u"add"_s, u"first.txt"_s});
        hg().discard(repository.path(), {u"first.txt"_s});
        QCOMPARE(loadMercurialSnapshot(repository.path()).files,
                 (QList<WorkingFile>{{u"first.txt"_s, FileState::untracked}}));
        QCOMPARE(readFile(repository.filePath(u"first.txt"_s)), QByteArray("first\n"));
    }

    void shelveTakesEveryChange()
    {
        const MercurialFixture repository;
        repository.write(u"a.txt"_s, "a\n");
        repository.commitAll(u"base"_s);
        repository.write(u"a.txt"_s, "changed\n");
        hg().stash(repository.path(), u"wharf-2026-11-21-101500"_s);
        QCOMPARE(loadMercurialSnapshot(repository.path()).files, QList<WorkingFile>());
        QVERIFY(repository.hg({u"--config"_s, u"extensions.shelve="_s, u"shelve"_s, u"--list"_s})
                    .startsWith("wharf-2026-11-21-101500"));
    }

    void bookmarksUpdateMergeAndRebase()
    {
        const MercurialFixture repository;
        repository.write(u"a.txt"_s, "a\n");
        const QString base = repository.commitAll(u"base"_s);
        mercurial::createBookmark(u"feature x"_s, repository.path());
        repository.write(u"f.txt"_s, "f\n");
        const QString feature = repository.commitAll(u"feature"_s);
        mercurial::renameBookmark(u"feature x"_s, u"feature y"_s, repository.path());
        repository.hg({u"update"_s, u"-r"_s, base});
        mercurial::createBookmark(u"main"_s, repository.path());
        repository.write(u"m.txt"_s, "m\n");
        repository.commitAll(u"main work"_s);

        RepositorySnapshot snapshot = loadMercurialSnapshot(repository.path());
        QCOMPARE(snapshot.activeBookmark, std::optional(u"main"_s));
        mercurial::merge(u"feature y"_s, repository.path());
        repository.commitAll(u"merged"_s);
        QVERIFY(QFile::exists(repository.filePath(u"f.txt"_s)));

        mercurial::update(u"feature y"_s, repository.path());
        QCOMPARE(repository.node(), feature);
        mercurial::deleteBookmark(u"feature y"_s, repository.path());
        snapshot = loadMercurialSnapshot(repository.path());
        QCOMPARE(snapshot.bookmarks.size(), 1);

        // Rebase a new line of work onto main.
        mercurial::createBookmark(u"topic"_s, repository.path());
        repository.write(u"t.txt"_s, "t\n");
        repository.commitAll(u"topic"_s);
        mercurial::rebase(u"main"_s, repository.path());
        QCOMPARE(QString::fromUtf8(repository.hg({u"log"_s, u"-r"_s, u"p1(topic)"_s, u"-T"_s, u"{bookmarks}"_s})),
                 u"main"_s);
        QCOMPARE(failureOf([&] { hg().squashMerge(repository.path(), u"main"_s); }),
                 u"Mercurial has no squash merge; merge the bookmark or rebase onto it instead."_s);
    }

    void conflictingMerge()
    {
        const MercurialFixture repository;
        repository.write(u"c.txt"_s, "base\n");
        const QString base = repository.commitAll(u"base"_s);
        repository.write(u"c.txt"_s, "theirs\n");
        repository.commitAll(u"theirs"_s);
        repository.bookmark(u"theirs"_s);
        repository.hg({u"bookmark"_s, u"--inactive"_s});
        repository.hg({u"update"_s, u"-r"_s, base});
        repository.write(u"c.txt"_s, "ours\n");
        repository.commitAll(u"ours"_s);

        const QString failure = failureOf([&] { mercurial::merge(u"theirs"_s, repository.path()); });
        QVERIFY2(failure.startsWith(u"hg merge --rev=theirs exited with status 1.\n\n"_s), qPrintable(failure));
        QVERIFY(loadMercurialSnapshot(repository.path()).files.contains(WorkingFile{u"c.txt"_s, FileState::unresolved}));
    }

    void remotesPullAndPush()
    {
        const MercurialFixture origin;
        origin.write(u"a.txt"_s, "a\n");
        origin.commitAll(u"first"_s);
        QTemporaryDir folder;
        const QString clonePath = folder.filePath(u"nested/clone"_s);
        QVERIFY(QDir().mkpath(folder.filePath(u"nested"_s)));
        hg().clone(origin.path(), clonePath);
        QCOMPARE(loadMercurialSnapshot(clonePath).history.size(), 1);

        origin.write(u"b.txt"_s, "b\n");
        origin.commitAll(u"second"_s);
        hg().fetch(clonePath);
        QCOMPARE(loadMercurialSnapshot(clonePath).history.size(), 2);
        QVERIFY(!QFile::exists(clonePath + u"/b.txt"_s));
        origin.write(u"c.txt"_s, "c\n");
        origin.commitAll(u"third"_s);
        hg().pull(clonePath);
        QVERIFY(QFile::exists(clonePath + u"/c.txt"_s));

        // Nothing to push is a failure of its own.
        QVERIFY2(failureOf([&] { hg().push(clonePath); }).startsWith(u"hg push exited with status 1."_s),
                 "nothing to push");
        QFile file(clonePath + u"/d.txt"_s);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("d\n");
        file.close();
        hg().commit(clonePath, {{u"d.txt"_s, FileState::untracked}}, u"from the clone"_s, QString(), QString());
        hg().push(clonePath);
        QCOMPARE(lastDescription(origin), u"from the clone"_s);
    }

    void createsRepositoryWithParents()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"a/b/new repo"_s);
        QCOMPARE(hg().createRepository(path), (Repository{path, RepositoryKind::mercurial}));
        QVERIFY(QFileInfo(path + u"/.hg"_s).isDir());
    }

    void defaultRemote()
    {
        const MercurialFixture repository;
        const QString hgrc = repository.filePath(u".hg/hgrc"_s);
        repository.write(u".hg/hgrc"_s, "[ui]\nusername = Keep Me\n");
        QVERIFY(QFile::setPermissions(hgrc, QFile::ReadOwner | QFile::WriteOwner));
        const QFile::Permissions permissions = QFile::permissions(hgrc);
        hg().setRemoteAddress(repository.path(), u"  /srv/repos/app \n"_s);
        QCOMPARE(readFile(hgrc), QByteArray("[ui]\nusername = Keep Me\n\n[paths]\ndefault = /srv/repos/app\n"));
        QCOMPARE(QFile::permissions(hgrc), permissions);

        QCOMPARE(failureOf([&] { hg().setRemoteAddress(repository.path(), u"https://h/x\n[hooks]"_s); }),
                 u"Enter a valid remote address: it cannot be empty, begin with “-” or hold a line break."_s);
        QCOMPARE(failureOf([&] { hg().setRemoteAddress(repository.path(), u"https://ann:***@h/x"_s); }),
                 u"The masked remote password could not be restored; enter the password again."_s);
        QCOMPARE(readFile(hgrc), QByteArray("[ui]\nusername = Keep Me\n\n[paths]\ndefault = /srv/repos/app\n"));
    }

    void configurationFileThatMustNotBeWritten_data()
    {
        QTest::addColumn<QString>("kind"); // "outside link", "inside link" or "not UTF-8"
        QTest::newRow("link out of the repository") << u"outside link"_s;
        QTest::newRow("link to a file of the repository") << u"inside link"_s;
        QTest::newRow("not UTF-8 text") << u"not UTF-8"_s;
    }

    void configurationFileThatMustNotBeWritten()
    {
        QFETCH(QString, kind);
        const MercurialFixture repository;
        QTemporaryDir outside;
        const QString target =
            kind == u"inside link" ? repository.filePath(u"shared-hgrc"_s) : outside.filePath(u"elsewhere"_s);
        const QByteArray original = kind == u"not UTF-8" ? QByteArray("[ui]\nusername = caf\xe9\n")
                                                         : QByteArray("[ui]\nx = 1\n");
        QFile file(kind == u"not UTF-8" ? repository.filePath(u".hg/hgrc"_s) : target);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(original);
        file.close();
        if (kind != u"not UTF-8")
            QVERIFY(QFile::link(target, repository.filePath(u".hg/hgrc"_s)));

        const QString failure = failureOf([&] { hg().setRemoteAddress(repository.path(), u"/srv/x"_s); });
        QVERIFY2(failure.startsWith(u"The repository configuration file .hg/hgrc "_s),
                 qPrintable(failure));
        QCOMPARE(readFile(file.fileName()), original);
    }

    // A password shown as "***" survives a round trip through the settings,
    // against a real server on 127.0.0.1.
    void maskedPasswordOverHttp()
    {
        const MercurialFixture served;
        served.write(u"a.txt"_s, "a\n");
        served.commitAll(u"served"_s);
        const test::MercurialServer server(served.path());

        const MercurialFixture repository;
        const QString stored = server.address(u"ann:s3cr%40t@"_s);
        repository.write(u".hg/hgrc"_s, "[paths]\ndefault = " + stored.toUtf8() + "\n");
        const QString shown = loadMercurialSnapshot(repository.path()).paths.value(u"default"_s);
        QCOMPARE(shown, server.address(u"ann:***@"_s));

        hg().setRemoteAddress(repository.path(), shown);
        QCOMPARE(readFile(repository.filePath(u".hg/hgrc"_s)), "[paths]\ndefault = " + stored.toUtf8() + "\n");
        hg().fetch(repository.path());
        QCOMPARE(loadMercurialSnapshot(repository.path()).history.size(), 1);
    }

    // Names and addresses that hg would read as options are refused before
    // anything runs; nothing changes in the repository.
    void hostileNames_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QString>("expected");
        const QString bookmark = u"A bookmark name cannot begin with “-”."_s;
        const QString evil = u"--config=hooks.pre-bookmark=touch PWNED"_s;
        QTest::newRow("create") << Operation([=](const QString &p) { hg().createBookmark(p, evil); }) << bookmark;
        QTest::newRow("rename from") << Operation([=](const QString &p) { hg().renameBookmark(p, evil, u"x"_s); })
                                     << bookmark;
        QTest::newRow("rename to") << Operation([=](const QString &p) { hg().renameBookmark(p, u"main"_s, u"-r"_s); })
                                   << bookmark;
        QTest::newRow("delete") << Operation([=](const QString &p) { hg().deleteBookmark(p, u"-f"_s); }) << bookmark;
        QTest::newRow("update") << Operation([=](const QString &p) { hg().switchTo(p, u"-C"_s); }) << bookmark;
        QTest::newRow("merge") << Operation([=](const QString &p) { hg().merge(p, u"--tool=internal:other"_s); })
                               << bookmark;
        QTest::newRow("rebase") << Operation([=](const QString &p) { hg().rebase(p, u"--keep"_s); }) << bookmark;
        QTest::newRow("clone source")
            << Operation([=](const QString &p) { hg().clone(u"--config=hooks.pre-clone=touch PWNED"_s, p + u"/c"_s); })
            << u"A clone source cannot begin with “-”."_s;
        QTest::newRow("clone destination") << Operation([=](const QString &p) { hg().clone(p, u"-U"_s); })
                                           << u"A clone destination cannot begin with “-”."_s;
        QTest::newRow("remote address") << Operation([=](const QString &p) { hg().setRemoteAddress(p, u"-e touch PWNED"_s); })
                                        << u"Enter a valid remote address: it cannot be empty, begin with “-” or "
                                           "hold a line break."_s;
    }

    void hostileNames()
    {
        QFETCH(Operation, operation);
        QFETCH(QString, expected);
        const MercurialFixture repository;
        repository.write(u"a.txt"_s, "a\n");
        repository.commitAll(u"base"_s);
        repository.bookmark(u"main"_s);
        repository.write(u"a.txt"_s, "work in progress\n");
        const RepositorySnapshot before = loadMercurialSnapshot(repository.path());

        const test::FakeTool watch({});
        {
            const test::ScopedEnvironmentVariable override("HG", watch.path().toUtf8());
            QCOMPARE(failureOf([&] { operation(repository.path()); }), expected);
        }
        QCOMPARE(watch.processId(), 0);
        QCOMPARE(loadMercurialSnapshot(repository.path()), before);
        QCOMPARE(readFile(repository.filePath(u"a.txt"_s)), QByteArray("work in progress\n"));
        QVERIFY(!QFile::exists(repository.filePath(u"PWNED"_s)));
    }
};

QTEST_GUILESS_MAIN(MercurialOperationsTest)
#include "tst_mercurial_operations.moc"
