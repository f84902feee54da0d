#include "TestEnvironment.h"

#include "process/CommitMessage.h"
#include "process/Failure.h"
#include "process/RemoteAddress.h"
#include "process/ToolFailure.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;

class RemoteAddressTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    // What is stored for an entered address, given the stored one: "invalid"
    // and "unrestorable" are the two refusals. (The operations tests of both
    // tools store trimmed addresses, carry an encoded password to a new host
    // and refuse line feeds and masks with nothing to restore.)
    void addressToStore_data()
    {
        QTest::addColumn<QString>("entered");
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("expected");
        const QString invalid = u"invalid"_s;
        const QString unrestorable = u"unrestorable"_s;
        QTest::newRow("empty") << u" \t\n"_s << QString() << invalid;
        QTest::newRow("carriage return inside") << u"https://h/x\rfoo"_s << QString() << invalid;
        QTest::newRow("option-like") << u"--upload-pack=touch x"_s << QString() << invalid;
        QTest::newRow("a real password stays")
            << u"https://b:new@h/x"_s << u"https://a:old@h/x"_s << u"https://b:new@h/x"_s;
        QTest::newRow("masked and encoded")
            << u"https://ann:%2A%2A%2A@h/repo"_s << u"https://ann:pw@h/repo"_s << u"https://ann:pw@h/repo"_s;
        QTest::newRow("stored is masked too")
            << u"https://ann:***@h/repo"_s << u"https://ann:***@h/repo"_s << unrestorable;
        QTest::newRow("scp form cannot carry it") << u"ann:***@h:repo"_s << u"https://ann:pw@h/repo"_s << unrestorable;
    }

    void addressToStore()
    {
        QFETCH(QString, entered);
        QFETCH(QString, stored);
        QFETCH(QString, expected);
        QString result;
        try {
            result = tillery::addressToStore(entered, [&] { return stored; });
        } catch (const RefusedInput &refusal) {
            result = refusal.description() == invalidAddressSentence()         ? u"invalid"_s
                     : refusal.description() == unrestorablePasswordSentence() ? u"unrestorable"_s
                                                                               : refusal.description();
        }
        QCOMPARE(result, expected);
    }

    void failureTextsHidePasswords()
    {
        const GitFailure failure = GitFailure::command({u"clone"_s, u"https://ann:s3cret@h/r.git"_s, u"/tmp/r"_s}, 128,
                                                       u"fatal: unable to access 'https://ann:s3cret@h/r.git/'"_s);
        QCOMPARE(failure.description(), u"git clone https://ann:***@h/r.git /tmp/r exited with status 128.\n\n"
                                        "fatal: unable to access 'https://ann:***@h/r.git/'"_s);
        QCOMPARE(failure.arguments()[1], u"https://ann:s3cret@h/r.git"_s);
    }

    // A blank description adds nothing; a description is trimmed as a whole, its inner lines kept.
    void commitMessage()
    {
        QCOMPARE(composeCommitMessage(u"Fix\n"_s, u" \n\t"_s), u"Fix"_s);
        QCOMPARE(composeCommitMessage(u"Fix"_s, u"\n  a\n\n  b  \n"_s), u"Fix\n\na\n\n  b"_s);
    }
};

QTEST_GUILESS_MAIN(RemoteAddressTest)
#include "tst_remote_address.moc"
