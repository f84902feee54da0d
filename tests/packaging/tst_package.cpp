#include "TestEnvironment.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;

// The Debian package that cpack makes from the build, unpacked and run.
class PackageTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_folder;
    QString m_package;

    QString root() const { return m_folder.filePath(u"root"_s); }

    static QByteArray run(const QString &program, const QStringList &arguments, int &exitCode)
    {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(program, arguments);
        if (!process.waitForFinished(300000))
            return "did not start or finish";
        exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        return process.readAll();
    }

private Q_SLOTS:
    void initTestCase()
    {
        test::pinTestEnvironment();
        int exitCode = -1;
        const QByteArray made = run(QStringLiteral(CPACK), {u"--config"_s, QStringLiteral(CPACK_CONFIG), u"-G"_s,
                                                            u"DEB"_s, u"-B"_s, m_folder.path()},
                                    exitCode);
        QVERIFY2(exitCode == 0, made.constData());
        const QStringList packages = QDir(m_folder.path()).entryList({u"tillery_*.deb"_s});
        QCOMPARE(packages.size(), 1);
        m_package = m_folder.filePath(packages.first());
        const QByteArray unpacked = run(u"dpkg-deb"_s, {u"-x"_s, m_package, root()}, exitCode);
        QVERIFY2(exitCode == 0, unpacked.constData());
    }

    void installedFiles_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("said");
        QTest::addColumn<QString>("written");

        const QString tillery = u"{root}/usr/bin/tillery"_s;
        QTest::newRow("version") << tillery << QStringList{u"--version"_s}
                                 << u"Tillery " TILLERY_VERSION ""_s << QString();
        QTest::newRow("screenshot") << tillery << QStringList{u"--screenshot"_s, u"{folder}/shot.png"_s}
                                    << u"Wrote a screenshot"_s << u"shot.png"_s;
        // The metainfo, and that its launchable and binary are in the same tree.
        QTest::newRow("metainfo") << u"appstreamcli"_s << QStringList{u"validate-tree"_s, u"--no-net"_s, u"{root}"_s}
                                  << u"Validation was successful"_s << QString();
        QTest::newRow("desktop entry")
            << u"desktop-file-validate"_s
            << QStringList{u"{root}/usr/share/applications/org.tillery.Tillery.desktop"_s} << QString() << QString();
        // Where Tillery looks for its helpers when installed: ../lib/tillery from bin.
        QTest::newRow("password helper") << u"test"_s << QStringList{u"-x"_s, u"{root}/usr/lib/tillery/tillery-askpass"_s}
                                         << QString() << QString();
        QTest::newRow("Mercurial extension")
            << u"test"_s << QStringList{u"-f"_s, u"{root}/usr/lib/tillery/tillery_askpass.py"_s} << QString()
            << QString();
        QTest::newRow("libraries and a tool depended on")
            << u"dpkg-deb"_s << QStringList{u"--field"_s, u"{package}"_s, u"Depends"_s}
            << u"libqt6widgets6 (>= "_s << QString();
    }

    void installedFiles()
    {
        QFETCH(QString, program);
        QFETCH(QStringList, arguments);
        QFETCH(QString, said);
        QFETCH(QString, written);
        for (QString *text : {&program, &said})
            text->replace(u"{root}"_s, root());
        for (QString &argument : arguments)
            argument.replace(u"{root}"_s, root()).replace(u"{folder}"_s, m_folder.path()).replace(u"{package}"_s, m_package);
        int exitCode = -1;
        const QByteArray output = run(program, arguments, exitCode);
        QVERIFY2(exitCode == 0, output.constData());
        QVERIFY2(output.contains(said.toUtf8()), output.constData());
        if (!written.isEmpty())
            QVERIFY(!QImage(m_folder.filePath(written)).isNull());
    }

    // Every size of the theme icon is a picture of that size, drawn (not empty).
    void icons()
    {
        const QDir theme(root() + u"/usr/share/icons/hicolor"_s);
        const QStringList sizes = theme.entryList({u"*x*"_s}, QDir::Dirs);
        QVERIFY(sizes.size() >= 6);
        for (const QString &size : sizes) {
            const QImage icon(theme.filePath(size + u"/apps/org.tillery.Tillery.png"_s));
            QCOMPARE(u"%1x%2"_s.arg(icon.width()).arg(icon.height()), size);
            QVERIFY2(icon.pixel(icon.width() / 2, icon.height() / 3) != icon.pixel(0, 0), qPrintable(size));
        }
        QVERIFY(theme.exists(u"scalable/apps/org.tillery.Tillery.svg"_s));
    }
};

QTEST_GUILESS_MAIN(PackageTest)
#include "tst_package.moc"
