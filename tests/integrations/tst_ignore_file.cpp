#include "Checks.h"
#include "TestEnvironment.h"

#include "integrations/IgnoreFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::failureOf;
using test::readFile;

Q_DECLARE_METATYPE(tillery::RepositoryKind)

class IgnoreFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    // A cloned repository may bring an ignore file that is a link into its own metadata, where an
    // appended line becomes configuration that runs a program: nothing is written through it.
    void addsEntries_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<QByteArray>("before"); // "(missing)": no file; "(link)": a link to .git/config
        QTest::addColumn<QStringList>("patterns");
        QTest::addColumn<QString>("after"); // or "refused: " and the start of the failure, the file unchanged
        const auto hg = RepositoryKind::mercurial;
        const auto git = RepositoryKind::git;
        const QString oneLine = u"refused: An ignore entry must be one line of text."_s;
        QTest::newRow("git: no final line feed")
            << git << QByteArray("node_modules") << QStringList{u"dist/"_s} << u"node_modules\ndist/\n"_s;
        QTest::newRow("git: twice") << git << QByteArray("(missing)") << QStringList{u"*.log"_s, u"*.log"_s}
                                    << u"*.log\n"_s;
        QTest::newRow("hg: compares the normalised entry")
            << hg << QByteArray("syntax: glob\nbuild/**\n") << QStringList{u"/build/"_s}
            << u"syntax: glob\nbuild/**\n"_s;
        QTest::newRow("hg: header before every entry")
            << hg << QByteArray("syntax: regexp\n^out$\n") << QStringList{u"a.o"_s, u"docs/"_s}
            << u"syntax: regexp\n^out$\nsyntax: glob\na.o\nsyntax: glob\ndocs/**\n"_s;
        QTest::newRow("git: no trimming in the duplicate test")
            << git << QByteArray(" x\n") << QStringList{u"x"_s} << u" x\nx\n"_s;
        QTest::newRow("line feed in the entry")
            << hg << QByteArray("a\n") << QStringList{u"x\n!important"_s} << oneLine;
        QTest::newRow("carriage return in the entry")
            << git << QByteArray("a\n") << QStringList{u"x\rsyntax: regexp"_s} << oneLine;
        QTest::newRow("file that is not UTF-8")
            << hg << QByteArray("caf\xe9\n") << QStringList{u"x"_s} << u"refused: .hgignore is not UTF-8 text"_s;
        QTest::newRow("git: a link into .git/config")
            << git << QByteArray("(link)") << QStringList{u"[core] fsmonitor = x #/"_s}
            << u"refused: .gitignore is a symbolic link"_s;
    }

    // What an edit leaves, and the failure it ends with; the file keeps its permissions.
    void addsEntries()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(QByteArray, before);
        QFETCH(QStringList, patterns);
        QFETCH(QString, after);
        QTemporaryDir repository;
        QVERIFY(QDir().mkpath(repository.filePath(u".git"_s)));
        const QString name = repository.filePath(ignoreFileName(kind));
        const bool linked = before == "(link)";
        const QString file = linked ? repository.filePath(u".git/config"_s) : name;
        if (linked)
            QVERIFY(QFile::link(u".git/config"_s, name));
        const QByteArray original = linked ? "[core]\n" : before;
        if (before != "(missing)") {
            QFile written(file);
            QVERIFY(written.open(QIODevice::WriteOnly) && written.write(original) == original.size());
            QVERIFY(written.setPermissions(QFile::ReadOwner | QFile::WriteOwner));
        }
        const QFile::Permissions permissions = QFile::permissions(file);
        QString failure;
        for (const QString &pattern : patterns)
            failure = failureOf([&] { addIgnoreEntry(pattern, repository.path(), kind); });
        const bool refused = after.startsWith(u"refused: "_s);
        QVERIFY2(failure.startsWith(refused ? after.sliced(9) : u"(no failure)"_s), qPrintable(failure));
        QCOMPARE(readFile(file), refused ? original : after.toUtf8());
        if (before != "(missing)")
            QCOMPARE(QFile::permissions(file), permissions);
        QCOMPARE(QFileInfo(name).isSymLink(), linked);
    }
};

QTEST_GUILESS_MAIN(IgnoreFileTest)
#include "tst_ignore_file.moc"
