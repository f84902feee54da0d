#include "DiffText.h"
#include "RecordPrinting.h"
#include "TestEnvironment.h"

#include "git/GitParsers.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::bytes;
using namespace tillery::git;

namespace {

QDateTime at(qint64 seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC);
}

Bookmark branchNamed(const QString &name)
{
    return Bookmark{name, 0, u"h"_s, false, std::nullopt, false};
}

} // namespace

using OptionalString = std::optional<QString>;
using OptionalIdentity = std::optional<tillery::git::GitIdentity>;

class GitParsersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void status_data()
    {
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<QList<WorkingFile>>("expected");
        QTest::newRow("rename keeps the new name, skips the source")
            << bytes("R  new.txt\0old.txt\0 M after.txt\0")
            << QList<WorkingFile>{{u"after.txt"_s, FileState::modified}, {u"new.txt"_s, FileState::modified}};
        QTest::newRow("D wins over A") << bytes("AD file\0") << QList<WorkingFile>{{u"file"_s, FileState::removed}};
        QTest::newRow("other codes are modifications")
            << bytes("MM a\0!! b\0T  c\0")
            << QList<WorkingFile>{
                   {u"a"_s, FileState::modified}, {u"b"_s, FileState::modified}, {u"c"_s, FileState::modified}};
        QTest::newRow("untracked, added, conflicts")
            << bytes("?? u\0A  a\0UU c1\0AA c2\0DU c3\0 D gone\0")
            << QList<WorkingFile>{{u"a"_s, FileState::added},       {u"c1"_s, FileState::unresolved},
                                  {u"c2"_s, FileState::unresolved}, {u"c3"_s, FileState::unresolved},
                                  {u"gone"_s, FileState::removed},  {u"u"_s, FileState::untracked}};
        QTest::newRow("short and undecodable records skipped, also as rename sources")
            << bytes("M \0?? caf\xe9\0R  caf\xe9.txt\0source.txt\0?? ok\0")
            << QList<WorkingFile>{{u"ok"_s, FileState::untracked}};
        QTest::newRow("names as they stand") << bytes("?? -dash\0?? tab\there\0?? \"quoted\"\0?? caf\xc3\xa9 au lait\0")
                                             << QList<WorkingFile>{{u"-dash"_s, FileState::untracked},
                                                                   {u"\"quoted\""_s, FileState::untracked},
                                                                   {u"caf\u00e9 au lait"_s, FileState::untracked},
                                                                   {u"tab\there"_s, FileState::untracked}};
    }

    void status()
    {
        QFETCH(QByteArray, output);
        QFETCH(QList<WorkingFile>, expected);
        QCOMPARE(parseStatus(output), expected);
    }

    void localBranches()
    {
        const QList<LocalBranchRecord> branches =
            parseLocalBranches("main\taaa\t*\t1700000000\torigin/main\t[ahead 2, behind 1]\n"
                               "topic\tbbb\t \t 1700000000\t\t\n"
                               "short\tccc\t*\t1\n"
                               "\n"
                               "caf\xe9\tddd\t \t1\t\t\n"
                               "odd\teee\t \tnot a number\t\t\textra\n");
        QCOMPARE(branches.size(), 3);
        QCOMPARE(branches[0], (LocalBranchRecord{u"main"_s, u"aaa"_s, true, at(1700000000), u"origin/main"_s,
                                                 u"[ahead 2, behind 1]"_s}));
        QCOMPARE(branches[1], (LocalBranchRecord{u"topic"_s, u"bbb"_s, false, std::nullopt, QString(), QString()}));
        QCOMPARE(branches[2].name, u"odd"_s);
        QCOMPARE(branches[2].date, std::nullopt);
    }

    void remoteCounterpart_data()
    {
        QTest::addColumn<QString>("branch");
        QTest::addColumn<QStringList>("remoteBranches");
        QTest::addColumn<OptionalString>("expected");
        const auto refs = [](const QStringList &names) {
            QStringList full;
            for (const QString &name : names)
                full.append(u"refs/remotes/"_s + name);
            return full;
        };
        QTest::newRow("origin preferred") << u"feature"_s << refs({u"upstream/feature"_s, u"origin/feature"_s})
                                          << OptionalString(u"refs/remotes/origin/feature"_s);
        QTest::newRow("first otherwise") << u"feature"_s << refs({u"b/feature"_s, u"a/feature"_s, u"origin/other"_s})
                                         << OptionalString(u"refs/remotes/b/feature"_s);
        QTest::newRow("whole last component only")
            << u"x"_s << refs({u"origin/xx"_s, u"origin/ax"_s}) << OptionalString();
        QTest::newRow("nested names") << u"fix/a"_s << refs({u"origin/fix/a"_s})
                                      << OptionalString(u"refs/remotes/origin/fix/a"_s);
    }

    void remoteCounterpart()
    {
        QFETCH(QString, branch);
        QFETCH(QStringList, remoteBranches);
        QFETCH(OptionalString, expected);
        QCOMPARE(git::remoteCounterpart(branch, remoteBranches), expected);
    }

    void history()
    {
        // Pieces end in NUL; a record starts with "/" and a hash, then the
        // parents; files follow the message, the first after a line feed.
        const QByteArray output = bytes("/c3\0c2 t1\0Ann <ann@example.com>\0"
                                        "1700000300\0Merge topic\n\nDetails\n\n\0"
                                        "\na.txt\0src/b c.txt\0\nodd\0"
                                        "/c2\0c1\0Bob <bob@example.com>\0"
                                        "1700000200\0caf\xe9\0"
                                        "/c1\0\0Bob <bob@example.com>\0"
                                        "1700000100\0  one line  \n\0"
                                        "/   \0\0X <x>\0"
                                        "1\0no hash\0"
                                        "/cz\0\0 Dee <d@example.com>\0nope\0\0"
                                        "/cut\0\0short\0");
        const QHash<QString, QStringList> branches{{u"c3"_s, {u"main"_s, u"topic"_s}}};
        const QHash<QString, QStringList> tags{{u"c1"_s, {u"v1.0"_s}}};
        const QList<Changeset> history = parseHistory(output, 7, branches, tags);

        QCOMPARE(history.size(), 3);
        QCOMPARE(history[0], (Changeset{6,
                                        u"c3"_s,
                                        u"Merge topic"_s,
                                        u"Merge topic\n\nDetails"_s,
                                        u"Ann <ann@example.com>"_s,
                                        at(1700000300),
                                        u"main"_s,
                                        {u"main"_s, u"topic"_s},
                                        {},
                                        {u"a.txt"_s, u"src/b c.txt"_s, u"\nodd"_s},
                                        {u"c2"_s, u"t1"_s}}));
        // The unreadable record still counts: c1 is the third record.
        QCOMPARE(history[1], (Changeset{4,
                                        u"c1"_s,
                                        u"one line"_s,
                                        u"one line"_s,
                                        u"Bob <bob@example.com>"_s,
                                        at(1700000100),
                                        u"Git"_s,
                                        {},
                                        {u"v1.0"_s},
                                        {},
                                        {}}));
        QCOMPARE(history[2].node, u"cz"_s);
        QCOMPARE(history[2].revision, 2);
        QCOMPARE(history[2].author, u" Dee <d@example.com>"_s);
        QCOMPARE(history[2].date, at(0));
        // Numbers never go below zero.
        QCOMPARE(parseHistory(output, 3, {}, {}).last().revision, 0);
    }

    void refTargets()
    {
        const QHash<QString, QStringList> targets = parseRefTargets("c1\t\tmain\n"
                                                                    "t9\tc1\tv1.0\n"
                                                                    "c1\t\tlight\n"
                                                                    "c2\t\n"
                                                                    "c3\t\tname\textra\n");
        QCOMPARE(targets, (QHash<QString, QStringList>{{u"c1"_s, {u"main"_s, u"v1.0"_s, u"light"_s}}}));
    }

    void defaultBranch_data()
    {
        QTest::addColumn<QByteArray>("originHead");
        QTest::addColumn<QStringList>("branches");
        QTest::addColumn<OptionalString>("current");
        QTest::addColumn<QString>("expected");
        QTest::newRow("origin's HEAD") << QByteArray("origin/develop\n") << QStringList{u"main"_s}
                                       << OptionalString(u"main"_s) << u"develop"_s;
        QTest::newRow("last component of origin's HEAD")
            << QByteArray("origin/release/2.0\n") << QStringList{} << OptionalString(u"x"_s) << u"2.0"_s;
        QTest::newRow("main") << QByteArray() << QStringList{u"master"_s, u"main"_s} << OptionalString(u"topic"_s)
                              << u"main"_s;
        QTest::newRow("master") << QByteArray() << QStringList{u"master"_s, u"zeta"_s} << OptionalString(u"zeta"_s)
                                << u"master"_s;
        QTest::newRow("detached: first sorted")
            << QByteArray() << QStringList{u"alpha"_s, u"zeta"_s} << OptionalString() << u"alpha"_s;
        QTest::newRow("detached, no branches") << QByteArray() << QStringList{} << OptionalString() << u"main"_s;
        QTest::newRow("current branch") << QByteArray() << QStringList{u"trunk"_s} << OptionalString(u"trunk"_s)
                                        << u"trunk"_s;
        // A branch with the name of the snapshot's word for a detached head is a branch.
        QTest::newRow("branch named detached")
            << QByteArray() << QStringList{u"alpha"_s, u"detached"_s} << OptionalString(u"detached"_s) << u"detached"_s;
    }

    void defaultBranch()
    {
        QFETCH(QByteArray, originHead);
        QFETCH(QStringList, branches);
        QFETCH(OptionalString, current);
        QFETCH(QString, expected);
        QList<Bookmark> branchList;
        for (const QString &name : branches)
            branchList.append(branchNamed(name));
        QCOMPARE(chooseDefaultBranch(parseOriginHead(originHead), branchList, current), expected);
    }

    void commitFiles_data()
    {
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<QList<WorkingFile>>("expected");
        QTest::newRow("rename then modification")
            << bytes("R087\0old.c\0new.c\0M\0x.h\0")
            << QList<WorkingFile>{{u"new.c"_s, FileState::modified}, {u"x.h"_s, FileState::modified}};
        QTest::newRow("copy is an addition")
            << bytes("C100\0a.c\0b.c\0") << QList<WorkingFile>{{u"b.c"_s, FileState::added}};
        QTest::newRow("added, deleted, type change")
            << bytes("A\0file10\0D\0file9\0T\0link\0")
            << QList<WorkingFile>{
                   {u"file9"_s, FileState::removed}, {u"file10"_s, FileState::added}, {u"link"_s, FileState::modified}};
        QTest::newRow("path after a tab in the status token")
            << bytes("M\tinline.c\0A\0next.c\0")
            << QList<WorkingFile>{{u"inline.c"_s, FileState::modified}, {u"next.c"_s, FileState::added}};
        QTest::newRow("tokens run out") << bytes("R100\0only-old.c\0")
                                        << QList<WorkingFile>{{u"only-old.c"_s, FileState::modified}};
        QTest::newRow("undecodable names dropped in step")
            << bytes("M\0caf\xe9\0R100\0caf\xe9\0x\xff\0M\0ok\0") << QList<WorkingFile>{{u"ok"_s, FileState::modified}};
    }

    void commitFiles()
    {
        QFETCH(QByteArray, output);
        QFETCH(QList<WorkingFile>, expected);
        QCOMPARE(parseCommitFiles(output), expected);
    }

    void identity_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<OptionalIdentity>("expected");
        QTest::newRow("name and address")
            << u" Build Robot <robot> \n"_s << OptionalIdentity(GitIdentity{u"Build Robot"_s, u"robot"_s});
        QTest::newRow("last brackets win")
            << u"A <x> B <y@z>"_s << OptionalIdentity(GitIdentity{u"A <x> B"_s, u"y@z"_s});
        QTest::newRow("empty address") << u"Robot <>"_s << OptionalIdentity();
        QTest::newRow("no address") << u"nobody"_s << OptionalIdentity();
        QTest::newRow("no name") << u"<a@b>"_s << OptionalIdentity();
        QTest::newRow("reversed") << u"Name >a@b<"_s << OptionalIdentity();
    }

    void identity()
    {
        QFETCH(QString, text);
        QFETCH(OptionalIdentity, expected);
        QCOMPARE(parseIdentity(text), expected);
    }

    // A commit's author is named at its first line only; the text after the tab is the line, whatever
    // it holds. A NUL anywhere makes the file binary, a line that is not UTF-8 makes it not text.
    void blame_data()
    {
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<FileAnnotation>("expected");
        const QByteArray first = "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa 1 1 2\n"
                                 "author Ann Harbour\nauthor-mail <ann@example.com>\nauthor-time 1000\n"
                                 "author-tz +0100\ncommitter Cy\ncommitter-mail <cy@example.com>\n"
                                 "committer-time 3000\nsummary bbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbb 9 9\n"
                                 "boundary\nfilename old name.txt\n\tcaf\xc3\xa9\r\n";
        const QByteArray second = "bbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbb 2 2 1\nauthor Bob\nauthor-mail <>\n"
                                  "author-time 2000\nsummary two\nprevious aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa "
                                  "old name.txt\nfilename new.txt\n\tauthor Mallory\n";
        const QByteArray third = "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa 2 3\n\t\tindented\n";
        const QString a = u"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa"_s;
        QTest::newRow("lines") << first + second + third
                               << FileAnnotation{FileAnnotation::Content::text,
                                                 {{a, u"Ann Harbour <ann@example.com>"_s, 1000, u"caf\u00e9"_s},
                                                  {u"bbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbb"_s, u"Bob <>"_s, 2000,
                                                   u"author Mallory"_s},
                                                  {a, u"Ann Harbour <ann@example.com>"_s, 1000, u"\tindented"_s}}};
        QTest::newRow("not UTF-8") << first + "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa 2 2\n\tcaf\xe9\n"
                                   << FileAnnotation{FileAnnotation::Content::notUtf8, {}};
        QTest::newRow("a NUL after a line that is not UTF-8")
            << first + "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa 2 2\n\tcaf\xe9\n" + third
                   + bytes("aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa 4 4\n\tx\0y\n")
            << FileAnnotation{FileAnnotation::Content::binary, {}};
    }

    void blame()
    {
        QFETCH(QByteArray, output);
        QFETCH(FileAnnotation, expected);
        QCOMPARE(parseBlame(output), expected);
    }
};

QTEST_GUILESS_MAIN(GitParsersTest)
#include "tst_git_parsers.moc"
