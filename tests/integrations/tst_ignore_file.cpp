#include "Checks.h"
#include "TestEnvironment.h"

#include "integrations/IgnoreFile.h"
#include "process/Failure.h"

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

namespace {

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

} // namespace

class IgnoreFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void addsEntries_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<QByteArray>("before"); // "(none)": no file
        QTest::addColumn<QStringList>("patterns");
        QTest::addColumn<QByteArray>("after");
        QTest::newRow("mercurial folder, no file") << RepositoryKind::mercurial << QByteArray("(none)")
                                                   << QStringList{u"/build/"_s} << QByteArray("syntax: glob\nbuild/**\n");
        QTest::newRow("git, no final line feed") << RepositoryKind::git << QByteArray("node_modules")
                                                 << QStringList{u"dist/"_s} << QByteArray("node_modules\ndist/\n");
        QTest::newRow("git twice") << RepositoryKind::git << QByteArray("(none)")
                                   << QStringList{u"*.log"_s, u"*.log"_s} << QByteArray("*.log\n");
        QTest::newRow("mercurial compares the normalised entry")
            << RepositoryKind::mercurial << QByteArray("syntax: glob\nbuild/**\n") << QStringList{u"/build/"_s}
            << QByteArray("syntax: glob\nbuild/**\n");
        QTest::newRow("mercurial header before every entry")
            << RepositoryKind::mercurial << QByteArray("syntax: regexp\n^out$\n") << QStringList{u"a.o"_s, u"docs/"_s}
            << QByteArray("syntax: regexp\n^out$\nsyntax: glob\na.o\nsyntax: glob\ndocs/**\n");
        QTest::newRow("no trimming in the duplicate test")
            << RepositoryKind::git << QByteArray(" x\n") << QStringList{u"x"_s} << QByteArray(" x\nx\n");
    }

    void addsEntries()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(QByteArray, before);
        QFETCH(QStringList, patterns);
        QFETCH(QByteArray, after);
        QTemporaryDir repository;
        const QString file = repository.filePath(ignoreFileName(kind));
        if (before != "(none)")
            writeFile(file, before);
        for (const QString &pattern : patterns)
            addIgnoreEntry(pattern, repository.path(), kind);
        QCOMPARE(readFile(file), after);
    }

    void keepsPermissions()
    {
        QTemporaryDir repository;
        const QString file = repository.filePath(u".gitignore"_s);
        writeFile(file, "a\n");
        QVERIFY(QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner));
        const QFile::Permissions permissions = QFile::permissions(file);
        addIgnoreEntry(u"b"_s, repository.path(), RepositoryKind::git);
        QCOMPARE(QFile::permissions(file), permissions);
    }

    // A cloned repository may bring an ignore file that is a link, into its
    // own metadata (where an appended line becomes configuration that runs a
    // program), or anywhere else. Nothing is written through any of them.
    void neverWritesThroughALink_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<QString>("target"); // relative to the repository
        QTest::newRow("git: into .git/config") << RepositoryKind::git << u".git/config"_s;
        QTest::newRow("hg: into .hg/hgrc") << RepositoryKind::mercurial << u".hg/hgrc"_s;
        QTest::newRow("git: to a file of the repository") << RepositoryKind::git << u"shared-ignore"_s;
        QTest::newRow("hg: out of the repository") << RepositoryKind::mercurial << u"../outside"_s;
    }

    void neverWritesThroughALink()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(QString, target);
        QTemporaryDir parent;
        const QString repository = parent.filePath(u"repository"_s);
        QVERIFY(QDir().mkpath(repository + u"/.git"_s) && QDir().mkpath(repository + u"/.hg"_s));
        const QByteArray original = "[core]\n\tbare = false\n";
        writeFile(repository + u'/' + target, original);
        const QString name = ignoreFileName(kind);
        QVERIFY(QFile::link(target, repository + u'/' + name));

        const QString failure =
            failureOf([&] { addIgnoreEntry(u"[core] fsmonitor = touch pwned #/"_s, repository, kind); });
        QCOMPARE(failure, name + u" is a symbolic link, which Tillery never writes through; it was left unchanged. "
                                 "Edit the file it leads to yourself."_s);
        QCOMPARE(readFile(repository + u'/' + target), original);
        QVERIFY(QFileInfo(repository + u'/' + name).isSymLink());
    }

    void refusesWhatWouldLoseOrInject_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("failure");
        QTest::newRow("line feed in the entry") << QByteArray("a\n") << u"x\n!important"_s
                                                << u"An ignore entry must be one line of text."_s;
        QTest::newRow("carriage return in the entry") << QByteArray("a\n") << u"x\rsyntax: regexp"_s
                                                      << u"An ignore entry must be one line of text."_s;
        QTest::newRow("file that is not UTF-8") << QByteArray("caf\xe9\n") << u"x"_s
                                                << u".hgignore is not UTF-8 text; it was left unchanged."_s;
    }

    void refusesWhatWouldLoseOrInject()
    {
        QFETCH(QByteArray, before);
        QFETCH(QString, pattern);
        QFETCH(QString, failure);
        QTemporaryDir repository;
        writeFile(repository.filePath(u".hgignore"_s), before);
        QCOMPARE(failureOf([&] { addIgnoreEntry(pattern, repository.path(), RepositoryKind::mercurial); }), failure);
        QCOMPARE(readFile(repository.filePath(u".hgignore"_s)), before);
    }
};

QTEST_GUILESS_MAIN(IgnoreFileTest)
#include "tst_ignore_file.moc"
