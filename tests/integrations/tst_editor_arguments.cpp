#include "TestEnvironment.h"

#include "integrations/EditorArguments.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;
namespace Arguments = tillery::ExternalEditorArguments;

class EditorArgumentsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void parse_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("arguments"); // {"error: ..."} for a failure
        QTest::newRow("word and quoted word with suffix")
            << u"--wait \"%TARGET_PATH%:1\""_s << QStringList{u"--wait"_s, u"%TARGET_PATH%:1"_s};
        QTest::newRow("escaped blank") << u"a\\ b"_s << QStringList{u"a b"_s};
        QTest::newRow("backslash kept in single quotes") << u"'a\\b'"_s << QStringList{u"a\\b"_s};
        QTest::newRow("escape in double quotes") << u"\"a\\\"b\""_s << QStringList{u"a\"b"_s};
        QTest::newRow("adjacent quotes give an empty argument") << u"''"_s << QStringList{QString()};
        QTest::newRow("quotes join a word") << u"pre'mid dle'post x"_s << QStringList{u"premid dlepost"_s, u"x"_s};
        QTest::newRow("tabs and runs of blanks") << u"  a\t\tb  "_s << QStringList{u"a"_s, u"b"_s};
        QTest::newRow("only blanks") << u"   "_s << QStringList{};
        QTest::newRow("unclosed double quote") << u"\"open"_s
                                               << QStringList{u"error: The arguments contain an unterminated quote."_s};
        QTest::newRow("lone backslash at the end") << u"a\\"_s
                                                   << QStringList{u"error: The arguments end with an incomplete escape."_s};
        QTest::newRow("escape checked before the open quote")
            << u"\"a\\"_s << QStringList{u"error: The arguments end with an incomplete escape."_s};
    }

    void parse()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, arguments);
        const auto parsed = Arguments::parse(text);
        if (!arguments.isEmpty() && arguments.first().startsWith(u"error: "_s)) {
            QVERIFY(std::holds_alternative<Arguments::ParseError>(parsed));
            QCOMPARE(u"error: "_s + Arguments::errorText(std::get<Arguments::ParseError>(parsed)), arguments.first());
            return;
        }
        QCOMPARE(std::get<QStringList>(parsed), arguments);
    }

    void validate_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("message"); // empty: valid
        QTest::newRow("placeholder alone") << u"%TARGET_PATH%"_s << QString();
        QTest::newRow("placeholder inside an argument") << u"--goto \"%TARGET_PATH%:1\""_s << QString();
        QTest::newRow("no placeholder") << u"--new-window"_s << u"Arguments must include %TARGET_PATH%."_s;
        QTest::newRow("only blanks") << u"  "_s << u"Arguments must include %TARGET_PATH%."_s;
        QTest::newRow("parse error wins") << u"'%TARGET_PATH%"_s << u"The arguments contain an unterminated quote."_s;
    }

    void validate()
    {
        QFETCH(QString, text);
        QFETCH(QString, message);
        QCOMPARE(Arguments::validate(text).value_or(QString()), message);
    }

    void substitutionIsLiteral()
    {
        const QString path = u"/r/it's $(rm -rf ~); %TARGET_PATH%"_s;
        QCOMPARE(Arguments::substituted({u"-g"_s, u"%TARGET_PATH%:%TARGET_PATH%"_s}, path),
                 (QStringList{u"-g"_s, path + u':' + path}));
    }
};

QTEST_GUILESS_MAIN(EditorArgumentsTest)
#include "tst_editor_arguments.moc"
