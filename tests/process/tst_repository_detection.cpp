#include "RepositoryFixtures.h"
#include "RecordPrinting.h"
#include "TestEnvironment.h"

#include "process/RepositoryDetection.h"
#include "process/ToolFailure.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::GitFixture;
using test::MercurialFixture;

Q_DECLARE_METATYPE(std::optional<tillery::RepositoryKind>)

class RepositoryDetectionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    // Layouts are built in one folder: "git" and "hg" name the repository
    // kinds made at the given sub-folders ("." is the folder itself).
    void detectsInnermostRepository_data()
    {
        QTest::addColumn<QStringList>("gitFolders");
        QTest::addColumn<QStringList>("mercurialFolders");
        QTest::addColumn<QString>("asked");
        QTest::addColumn<QString>("expectedRoot"); // empty: not a repository
        QTest::addColumn<std::optional<RepositoryKind>>("expectedKind");

        QTest::newRow("git root") << QStringList{u"."_s} << QStringList{} << u"."_s << u"."_s
                                  << std::optional(RepositoryKind::git);
        QTest::newRow("mercurial root") << QStringList{} << QStringList{u"."_s} << u"."_s << u"."_s
                                        << std::optional(RepositoryKind::mercurial);
        QTest::newRow("git sub-folder") << QStringList{u"."_s} << QStringList{} << u"src/deep"_s << u"."_s
                                        << std::optional(RepositoryKind::git);
        QTest::newRow("mercurial sub-folder") << QStringList{} << QStringList{u"."_s} << u"a b/c"_s
                                              << u"."_s << std::optional(RepositoryKind::mercurial);
        QTest::newRow("both at one root is git") << QStringList{u"."_s} << QStringList{u"."_s} << u"."_s
                                                 << u"."_s << std::optional(RepositoryKind::git);
        QTest::newRow("mercurial inside git") << QStringList{u"."_s} << QStringList{u"vendor/lib"_s}
                                              << u"vendor/lib/src"_s << u"vendor/lib"_s
                                              << std::optional(RepositoryKind::mercurial);
        QTest::newRow("git inside mercurial") << QStringList{u"tools/x"_s} << QStringList{u"."_s}
                                              << u"tools/x"_s << u"tools/x"_s
                                              << std::optional(RepositoryKind::git);
        QTest::newRow("outer one from beside the inner")
            << QStringList{u"."_s} << QStringList{u"vendor/lib"_s} << u"docs"_s << u"."_s
            << std::optional(RepositoryKind::git);
        QTest::newRow("plain folder") << QStringList{} << QStringList{} << u"."_s << QString()
                                      << std::optional<RepositoryKind>();
        QTest::newRow("missing folder") << QStringList{} << QStringList{} << u"not/there"_s << QString()
                                        << std::optional<RepositoryKind>();
    }

    void detectsInnermostRepository()
    {
        QFETCH(QStringList, gitFolders);
        QFETCH(QStringList, mercurialFolders);
        QFETCH(QString, asked);
        QFETCH(QString, expectedRoot);
        QFETCH(std::optional<RepositoryKind>, expectedKind);

        QTemporaryDir top;
        const QDir folder(top.path());
        std::vector<std::unique_ptr<test::RepositoryFixture>> repositories;
        for (const QString &sub : gitFolders)
            repositories.push_back(std::make_unique<GitFixture>(QDir::cleanPath(folder.filePath(sub))));
        for (const QString &sub : mercurialFolders)
            repositories.push_back(std::make_unique<MercurialFixture>(QDir::cleanPath(folder.filePath(sub))));
        const QString askedPath = QDir::cleanPath(folder.filePath(asked));
        if (asked != u"not/there")
            QVERIFY(QDir().mkpath(askedPath));

        if (!expectedKind) {
            try {
                detectRepository(askedPath);
                QFAIL("the folder should not be a repository");
            } catch (const RepositoryFailure &failure) {
                QCOMPARE(failure.description(), askedPath + u" is not a Mercurial or Git repository."_s);
            }
            return;
        }
        QCOMPARE(detectRepository(askedPath),
                 (Repository{QDir::cleanPath(folder.filePath(expectedRoot)), *expectedKind}));
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
