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

    // How a custom editor's argument string is split, and whether it can be
    // used: only when it parses and one argument holds the placeholder.
    // (tst_launch_plans puts a path in place of the placeholders.)
    void argumentString_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("arguments"); // {"!quote"} or {"!escape"} for a failure
        QTest::addColumn<bool>("valid");
        QTest::newRow("word and quoted word with suffix")
            << u"--wait \"%TARGET_PATH%:1\""_s << QStringList{u"--wait"_s, u"%TARGET_PATH%:1"_s} << true;
        QTest::newRow("escaped blank") << u"a\\ b"_s << QStringList{u"a b"_s} << false;
        QTest::newRow("backslash kept in single quotes")
            << u"'%TARGET_PATH%\\b'"_s << QStringList{u"%TARGET_PATH%\\b"_s} << true;
        QTest::newRow("escape in double quotes") << u"\"a\\\"b\""_s << QStringList{u"a\"b"_s} << false;
        QTest::newRow("adjacent quotes give an empty argument") << u"''"_s << QStringList{QString()} << false;
        QTest::newRow("quotes join a word")
            << u"pre'mid dle'post x"_s << QStringList{u"premid dlepost"_s, u"x"_s} << false;
        QTest::newRow("tabs and runs of blanks")
            << u"  a\t\t%TARGET_PATH%  "_s << QStringList{u"a"_s, u"%TARGET_PATH%"_s} << true;
        QTest::newRow("only blanks") << u"   "_s << QStringList{} << false;
        QTest::newRow("unclosed double quote") << u"\"%TARGET_PATH%"_s << QStringList{u"!quote"_s} << false;
        QTest::newRow("lone backslash at the end") << u"%TARGET_PATH%\\"_s << QStringList{u"!escape"_s} << false;
        QTest::newRow("escape checked before the open quote") << u"\"a\\"_s << QStringList{u"!escape"_s} << false;
    }

    void argumentString()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, arguments);
        QFETCH(bool, valid);
        const auto parsed = Arguments::parse(text);
        const auto *error = std::get_if<Arguments::ParseError>(&parsed);
        if (error)
            QCOMPARE(*error == Arguments::ParseError::trailingEscape ? u"!escape"_s : u"!quote"_s, arguments.value(0));
        else
            QCOMPARE(std::get<QStringList>(parsed), arguments);
        // A string that does not parse is refused for that reason first.
        const std::optional<QString> problem = Arguments::validate(text);
        QCOMPARE(!problem, valid);
        if (error)
            QCOMPARE(problem, Arguments::errorText(*error));
    }
};

QTEST_GUILESS_MAIN(EditorArgumentsTest)
#include "tst_editor_arguments.moc"
