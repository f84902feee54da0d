#include "Checks.h"
#include "RecordPrinting.h"
#include "TestEnvironment.h"

#include "model/ModelSettings.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;

namespace {

void writeInfoPlist(const QString &bundle, const QString &identifier)
{
    test::writeFile(bundle + u"/Contents/Info.plist"_s,
                    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>\n"
                    "<key>CFBundleName</key><string>Editor</string>\n"
                    "<key>CFBundleIdentifier</key><string>"
                        + identifier.toUtf8() + "</string>\n</dict></plist>\n");
}

} // namespace

class ModelSettingsTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    std::unique_ptr<QSettings> m_store;

    ModelSettings settings() { return ModelSettings(*m_store); }

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void init()
    {
        m_store = std::make_unique<QSettings>(m_folder.filePath(u"settings.ini"_s), QSettings::IniFormat);
        m_store->clear();
    }

    void repositoryListRoundTrips()
    {
        const QList<Repository> repositories{{u"/r/a"_s, RepositoryKind::git}, {u"/r/b"_s, RepositoryKind::mercurial}};
        settings().setRepositories(repositories);
        QCOMPARE(m_store->value(u"repositories.v1"_s).toByteArray(),
                 QByteArray(R"([{"kind":"git","path":"/r/a"},{"kind":"mercurial","path":"/r/b"}])"));
        QCOMPARE(settings().repositories(), repositories);
    }

    void unreadableValuesFallBack_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QVariant>("stored");
        QTest::newRow("list not JSON") << u"repositories.v1"_s << QVariant(QByteArray("[{"));
        QTest::newRow("list with one bad entry")
            << u"repositories.v1"_s
            << QVariant(QByteArray(R"([{"path":"/r/a","kind":"git"},{"path":"/r/b","kind":"svn"}])"));
        QTest::newRow("list as text") << u"repositories.v1"_s << QVariant(u"[]"_s);
        QTest::newRow("files map as text") << u"selectedFilesByRepository.v1"_s << QVariant(u"x"_s);
        QTest::newRow("icon map with a number") << u"repositoryIconFiles.v1"_s << QVariant(QVariantMap{{u"/r/a"_s, 5}});
        QTest::newRow("user name as a list") << u"commitUsername.v1"_s << QVariant(QStringList{u"a"_s, u"b"_s});
        QTest::newRow("layout not JSON") << u"repositorySidebarLayout.v1"_s << QVariant(QByteArray("nope"));
    }

    void unreadableValuesFallBack()
    {
        QFETCH(QString, key);
        QFETCH(QVariant, stored);
        m_store->setValue(key, stored);
        m_store->sync();
        QSettings copy(m_store->fileName(), QSettings::IniFormat);
        ModelSettings fromDisk(copy);
        QCOMPARE(fromDisk.repositories(), QList<Repository>());
        QCOMPARE(fromDisk.selectedFilesByRepository(), (QMap<QString, QString>()));
        QCOMPARE(fromDisk.repositoryIconFiles(), (QMap<QString, QString>()));
        QCOMPARE(fromDisk.commitUsername(), QString());
        QCOMPARE(fromDisk.sidebarLayout().has_value(), false);
    }

    void editorMigration_data()
    {
        QTest::addColumn<QString>("legacy"); // "deleted", "known", "unknown", "selection set"
        QTest::addColumn<QString>("selection");
        QTest::addColumn<bool>("pathStored");
        QTest::newRow("deleted application") << u"deleted"_s << QString() << false;
        QTest::newRow("known editor") << u"known"_s << u"sublimeText"_s << false;
        QTest::newRow("other application") << u"unknown"_s << u"other"_s << true;
        QTest::newRow("already chosen") << u"selection set"_s << u"vsCode"_s << false;
    }

    void editorMigration()
    {
        QFETCH(QString, legacy);
        QFETCH(QString, selection);
        QFETCH(bool, pathStored);
        const QString bundle = m_folder.filePath(u"Editor.app"_s);
        QDir(bundle).removeRecursively();
        if (legacy == u"known")
            writeInfoPlist(bundle, u"com.sublimetext.3"_s);
        else if (legacy != u"deleted")
            writeInfoPlist(bundle, u"org.example.editor"_s);
        if (legacy == u"selection set")
            m_store->setValue(u"externalEditor.selection.v2"_s, u"vsCode"_s);
        m_store->setValue(u"externalEditor.v1"_s, bundle);

        settings().migrateEditorSetting();
        QCOMPARE(m_store->value(u"externalEditor.selection.v2"_s).toString(), selection);
        QCOMPARE(m_store->contains(u"externalEditor.path.v2"_s), pathStored);
        QCOMPARE(m_store->contains(u"externalEditor.arguments.v2"_s), pathStored);
        if (pathStored)
            QCOMPARE(settings().editorPath(), bundle);
        QVERIFY(m_store->contains(u"externalEditor.v1"_s));
    }
};

QTEST_GUILESS_MAIN(ModelSettingsTest)
#include "tst_model_settings.moc"
