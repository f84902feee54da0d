#include "TestEnvironment.h"

#include "mercurial/IniText.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;

using OptionalString = std::optional<QString>;

class IniTextTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void setValue_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("value");
        QTest::addColumn<OptionalString>("expected");
        QTest::newRow("empty text") << QString() << u"/srv/a"_s << OptionalString(u"[paths]\ndefault = /srv/a\n"_s);
        QTest::newRow("other section without final line feed")
            << u"[ui]\nusername = Ann"_s << u"/srv/a"_s
            << OptionalString(u"[ui]\nusername = Ann\n\n[paths]\ndefault = /srv/a\n"_s);
        QTest::newRow("existing key, any case, before another section")
            << u"[Paths]\n  Default=old\nupstream = /u\n[ui]\nx = 1\n"_s << u"new"_s
            << OptionalString(u"[Paths]\ndefault = new\nupstream = /u\n[ui]\nx = 1\n"_s);
        QTest::newRow("missing key goes before the next section")
            << u"[paths]\nupstream = /u\n[ui]\nx = 1\n"_s << u"new"_s
            << OptionalString(u"[paths]\nupstream = /u\ndefault = new\n[ui]\nx = 1\n"_s);
        QTest::newRow("comments and lines without = are skipped")
            << u"[paths]\n# default = commented\n; default = too\nnot a pair\n"_s << u"new"_s
            << OptionalString(u"[paths]\n# default = commented\n; default = too\nnot a pair\ndefault = new\n"_s);
        QTest::newRow("only the first section of the name")
            << u"[paths]\na = 1\n[paths]\ndefault = later\n"_s << u"new"_s
            << OptionalString(u"[paths]\na = 1\ndefault = new\n[paths]\ndefault = later\n"_s);
        QTest::newRow("continuation lines of the old value go with it")
            << u"[paths]\ndefault = old\n  still old\n\tand more\nnext = 1\n"_s << u"new"_s
            << OptionalString(u"[paths]\ndefault = new\nnext = 1\n"_s);
        QTest::newRow("carriage returns of the file are understood")
            << u"[paths]\r\ndefault = old\r\n"_s << u"new"_s << OptionalString(u"[paths]\r\ndefault = new\n"_s);
        QTest::newRow("IPv6 address") << QString() << u"ssh://[::1]/repo"_s
                                      << OptionalString(u"[paths]\ndefault = ssh://[::1]/repo\n"_s);
        QTest::newRow("line feed would open a section") << QString() << u"x\n[hooks]"_s << OptionalString();
        QTest::newRow("carriage return would start a line")
            << QString() << u"x\r%include /etc/passwd"_s << OptionalString();
        QTest::newRow("line separator") << QString() << u"x\u2028%include y"_s << OptionalString();
    }

    void setValue()
    {
        QFETCH(QString, text);
        QFETCH(QString, value);
        QFETCH(OptionalString, expected);
        QCOMPARE(setIniValue(text, u"paths"_s, u"default"_s, value), expected);
    }
};

QTEST_GUILESS_MAIN(IniTextTest)
#include "tst_ini_text.moc"
