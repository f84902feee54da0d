#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include "process/RepositoryDetection.h"
#include "process/ToolFailure.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;

class RepositoryDetectionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    // Layouts are built in one folder: repositories of each kind at the given
    // sub-folders ("." is the folder itself), and "link" leading to "linked".
    void detectsInnermostRepository_data()
    {
        QTest::addColumn<QStringList>("repositories"); // "kind folder"
        QTest::addColumn<QString>("asked");
        QTest::addColumn<QString>("expected"); // "kind root"; empty: not a repository
        QTest::newRow("mercurial sub-folder") << QStringList{u"hg ."_s} << u"a b/c"_s << u"hg ."_s;
        QTest::newRow("both at one root is git") << QStringList{u"git ."_s, u"hg ."_s} << u"."_s << u"git ."_s;
        QTest::newRow("mercurial inside git")
            << QStringList{u"git ."_s, u"hg vendor/lib"_s} << u"vendor/lib/src"_s << u"hg vendor/lib"_s;
        QTest::newRow("git inside mercurial")
            << QStringList{u"git tools/x"_s, u"hg ."_s} << u"tools/x"_s << u"git tools/x"_s;
        QTest::newRow("through a link, the repository it leads into")
            << QStringList{u"git outer"_s, u"hg linked"_s} << u"outer/link/src"_s << u"hg linked"_s;
        QTest::newRow("plain folder") << QStringList{} << u"."_s << QString();
        QTest::newRow("missing folder") << QStringList{} << u"not/there"_s << QString();
    }

    void detectsInnermostRepository()
    {
        QFETCH(QStringList, repositories);
        QFETCH(QString, asked);
        QFETCH(QString, expected);
        QTemporaryDir top;
        const QDir folder(top.path());
        std::vector<std::unique_ptr<test::RepositoryFixture>> fixtures;
        for (const QString &repository : repositories) {
            const QString at = QDir::cleanPath(folder.filePath(repository.section(u' ', 1)));
            if (repository.startsWith(u"git"_s))
                fixtures.push_back(std::make_unique<test::GitFixture>(at));
            else
                fixtures.push_back(std::make_unique<test::MercurialFixture>(at));
        }
        if (asked.contains(u"link"_s))
            QVERIFY(QFile::link(folder.filePath(u"linked"_s), folder.filePath(u"outer/link"_s)));
        const QString askedPath = QDir::cleanPath(folder.filePath(asked));
        if (asked != u"not/there")
            QVERIFY(QDir().mkpath(askedPath));

        QString detected;
        try {
            const Repository repository = detectRepository(askedPath);
            detected = (repository.kind == RepositoryKind::git ? u"git "_s : u"hg "_s)
                       + folder.relativeFilePath(repository.path);
        } catch (const RepositoryFailure &) {
        }
        QCOMPARE(detected, expected);
    }

    void rootQueriesReportTheirOwnFailure()
    {
        QTemporaryDir plain;
        QVERIFY_THROWS_EXCEPTION(MercurialFailure, mercurialRoot(plain.path()));
        QVERIFY_THROWS_EXCEPTION(GitFailure, gitRoot(plain.path()));
    }
};

QTEST_GUILESS_MAIN(RepositoryDetectionTest)
#include "tst_repository_detection.moc"
