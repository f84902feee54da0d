// What the settings file holds: the stored values read back, values that cannot be read, the older
// editor setting moved on, and the sidebar's arrangement, stored and changed; the records read from it,
// and the file browser's order.
#include "Checks.h"
#include "RecordPrinting.h"
#include "TestEnvironment.h"

#include "model/ModelSettings.h"
#include "model/SidebarArrangement.h"
#include "records/LocalizedOrder.h"
#include "records/Repository.h"
#include "records/SidebarLayout.h"
#include "records/TextDecoding.h"

#include <QDir>
#include <QJsonDocument>
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

const QUuid folderA = QUuid::fromString(u"11111111-1111-1111-1111-111111111111"_s);
const QUuid folderB = QUuid::fromString(u"22222222-2222-2222-2222-222222222222"_s);

// The arrangement as text: "a", "[A: b c]" for a folder named A holding b and c.
QString describe(const RepositorySidebarLayout &layout)
{
    QStringList parts;
    for (const RepositorySidebarItem &item : layout.topLevelItems) {
        if (item.isRepository()) {
            parts.append(item.path);
            continue;
        }
        const RepositoryFolder *folder = sidebar::folderWithId(layout, item.folderId);
        parts.append(folder ? u"[%1: %2]"_s.arg(folder->name, folder->repositoryPaths.join(u' ')) : u"[?]"_s);
    }
    return parts.join(u' ').replace(u"  "_s, u" "_s).replace(u": ]"_s, u":]"_s);
}

RepositorySidebarLayout decoded(const QByteArray &json)
{
    const auto result = decodeSidebarLayout(json);
    if (const auto *layout = std::get_if<RepositorySidebarLayout>(&result))
        return *layout;
    qWarning("%s", qPrintable(std::get<QString>(result)));
    return {};
}

} // namespace

using Item = RepositorySidebarItem;

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

    // The form read back is the one the rows below read; the arrangement comes first.
    void writesItsJsonForm()
    {
        const RepositorySidebarLayout layout{{Item::folder(folderA), Item::repository(u"/r/x"_s)},
                                             {{folderA, u"Work"_s, {u"/r/y"_s}}}};
        QVERIFY(encodeSidebarLayout(layout).startsWith(
            R"({"topLevelItems":[{"folder":{"_0":"11111111-1111-1111-1111-111111111111"}},)"));
        QCOMPARE(decoded(encodeSidebarLayout(layout)), layout);
    }

    void readsOlderAndRefusesBadData_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("expected"); // the arrangement, or "error: <text>"
        QTest::newRow("legacy: folders first, then ungrouped") << QByteArray(
            R"({"ungroupedPaths":["/r/b","/r/a"],"folders":[{"id":"22222222-2222-2222-2222-222222222222","name":"F","repositoryPaths":["/r/c"]}]})")
                                                               << u"[F: /r/c] /r/b /r/a"_s;
        QTest::newRow("legacy without paths") << QByteArray(R"({})") << QString();
        QTest::newRow("item with two keys") << QByteArray(
            R"({"topLevelItems":[{"repository":{"_0":"/r/a"},"folder":{"_0":"11111111-1111-1111-1111-111111111111"}}]})")
                                            << u"error: Invalid number of keys found, expected one."_s;
        QTest::newRow("item with no key")
            << QByteArray(R"({"topLevelItems":[{}]})") << u"error: Invalid number of keys found, expected one."_s;
        QTest::newRow("path of the wrong type") << QByteArray(R"({"topLevelItems":[{"repository":{"_0":5}}]})")
                                                << u"error: Expected a string for the key \"_0\"."_s;
    }

    void readsOlderAndRefusesBadData()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, expected);
        const auto result = decodeSidebarLayout(json);
        if (expected.startsWith(u"error")) {
            QVERIFY(std::holds_alternative<QString>(result));
            QCOMPARE(u"error: "_s + std::get<QString>(result), expected);
            return;
        }
        QVERIFY(std::holds_alternative<RepositorySidebarLayout>(result));
        QCOMPARE(describe(std::get<RepositorySidebarLayout>(result)), expected);
    }

    void reconcile_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<QStringList>("repositories");
        QTest::addColumn<QString>("expected");
        const QByteArray twoFolders =
            R"({"topLevelItems":[{"folder":{"_0":"22222222-2222-2222-2222-222222222222"}},{"repository":{"_0":"a"}},)"
            R"({"repository":{"_0":"gone"}},{"repository":{"_0":"a"}},{"folder":{"_0":"22222222-2222-2222-2222-222222222222"}},)"
            R"({"repository":{"_0":"b"}}],"folders":[)"
            R"({"id":"11111111-1111-1111-1111-111111111111","name":"A","repositoryPaths":["b","c","c"]},)"
            R"({"id":"22222222-2222-2222-2222-222222222222","name":"B","repositoryPaths":["c","d","gone"]}]})";
        QTest::newRow("claims, duplicates, unknown and missing paths")
            << twoFolders << QStringList{u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s} << u"[B: d] a [A: b c] e"_s;
        QTest::newRow("nothing stored") << QByteArray() << QStringList{u"x"_s, u"y"_s} << u"x y"_s;
        QTest::newRow("empty folder survives") << QByteArray(
            R"({"topLevelItems":[],"folders":[{"id":"11111111-1111-1111-1111-111111111111","name":"Empty","repositoryPaths":[]}]})")
                                               << QStringList{u"x"_s} << u"[Empty:] x"_s;
    }

    void reconcile()
    {
        QFETCH(QByteArray, stored);
        QFETCH(QStringList, repositories);
        QFETCH(QString, expected);
        const RepositorySidebarLayout layout =
            sidebar::reconcile(stored.isEmpty() ? RepositorySidebarLayout{} : decoded(stored), repositories);
        QCOMPARE(describe(layout), expected);
    }

    void foldersAndMoves()
    {
        RepositorySidebarLayout layout{{Item::repository(u"a"_s), Item::folder(folderA), Item::repository(u"d"_s)},
                                       {{folderA, u"A"_s, {u"b"_s, u"c"_s}}}};
        QCOMPARE(sidebar::topLevelIndexOf(layout, u"c"_s), std::optional<qsizetype>(1));
        sidebar::insertFolder(layout, {folderB, u"New Folder"_s, {}}, *sidebar::topLevelIndexOf(layout, u"a"_s) + 1);
        QCOMPARE(describe(layout), u"a [New Folder:] [A: b c] d"_s);
        sidebar::moveIntoFolder(layout, u"d"_s, folderB);
        sidebar::moveIntoFolder(layout, u"b"_s, folderB);
        QCOMPARE(describe(layout), u"a [New Folder: d b] [A: c]"_s);
        sidebar::moveToTopLevel(layout, u"d"_s);
        QCOMPARE(describe(layout), u"a [New Folder: b] d [A: c]"_s);
        sidebar::moveBefore(layout, u"d"_s, 0);
        QCOMPARE(describe(layout), u"d a [New Folder: b] [A: c]"_s);
        sidebar::moveIntoFolder(layout, u"a"_s, folderB);
        sidebar::moveIntoFolder(layout, u"d"_s, folderB);
        sidebar::removeFolder(layout, folderB);
        QCOMPARE(describe(layout), u"b a d [A: c]"_s);
        QCOMPARE(layout.folders.size(), 1);
    }

    void sortsByName()
    {
        RepositorySidebarLayout layout{{Item::repository(u"/r/zeta"_s), Item::folder(folderA),
                                        Item::repository(u"/r/app10"_s), Item::repository(u"/r/App9"_s)},
                                       {{folderA, u"beta"_s, {u"/r/x2"_s, u"/r/X10"_s, u"/r/x1"_s}}}};
        sidebar::sortByName(layout, [](const QString &path) { return path.section(u'/', -1); });
        QCOMPARE(describe(layout), u"/r/App9 /r/app10 [beta: /r/x1 /r/x2 /r/X10] /r/zeta"_s);
    }

    // A stored repository without a kind is a Git one when it has a .git
    // entry; one whose kind or path cannot be read is dropped. (repositoryListRoundTrips writes
    // and reads the list back.)
    void decodeRepository_data()
    {
        QTest::addColumn<QByteArray>("json"); // FOLDER holds "plain", and "dir" and "file" with a .git of that type
        QTest::addColumn<QString>("expectedKind"); // empty: dropped
        QTest::newRow("git kind wins over missing .git")
            << QByteArray(R"({"path":"FOLDER/plain","kind":"git"})") << u"git"_s;
        QTest::newRow("kind is case-sensitive")
            << QByteArray(R"({"path":"FOLDER/plain","kind":"Mercurial"})") << QString();
        QTest::newRow("no kind, .git folder") << QByteArray(R"({"path":"FOLDER/dir"})") << u"git"_s;
        QTest::newRow("no kind, .git file (worktree)") << QByteArray(R"({"path":"FOLDER/file"})") << u"git"_s;
        QTest::newRow("no kind, no .git") << QByteArray(R"({"path":"FOLDER/plain"})") << u"mercurial"_s;
        QTest::newRow("no path") << QByteArray(R"({"kind":"git"})") << QString();
    }

    void decodeRepository()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, expectedKind);
        QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkpath(u"dir/.git"_s) && QDir(folder.path()).mkpath(u"file"_s));
        QVERIFY(QFile(folder.filePath(u"file/.git"_s)).open(QIODevice::WriteOnly));
        const QJsonObject object = QJsonDocument::fromJson(json.replace("FOLDER", folder.path().toUtf8())).object();
        const std::optional<Repository> repository = tillery::decodeRepository(object);
        QCOMPARE(repository ? rawValue(repository->kind) : QString(), expectedKind);
    }

    // The file browser's order, the same under the C locale and German: digit runs by value, letters
    // without regard to case or accents.
    void localizedOrder()
    {
        QStringList names{u"file10"_s, u"beta"_s,  u"\u00e9t\u00e9"_s, u"file9"_s, u"Alpha"_s,
                          u"zebra"_s,  u"file1"_s, u"alpha2"_s,        u"Gamma"_s};
        sortLocalized(names, [](const QString &text) { return text; });
        QCOMPARE(names, (QStringList{u"Alpha"_s, u"alpha2"_s, u"beta"_s, u"\u00e9t\u00e9"_s, u"file1"_s, u"file9"_s,
                                     u"file10"_s, u"Gamma"_s, u"zebra"_s}));
    }

    void decodeUtf8OrEmpty_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("expected");
        QTest::newRow("utf-8") << QByteArray("caf\xc3\xa9\n") << u"caf\u00e9\n"_s;
        QTest::newRow("latin-1 is not utf-8") << QByteArray("caf\xe9") << QString();
        QTest::newRow("truncated sequence") << QByteArray("ok\xc3") << QString();
        QTest::newRow("byte-order mark kept") << QByteArray("\xef\xbb\xbfx") << u"\ufeffx"_s;
    }

    void decodeUtf8OrEmpty()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, expected);
        QCOMPARE(tillery::decodeUtf8OrEmpty(bytes), expected);
    }
};

QTEST_GUILESS_MAIN(ModelSettingsTest)
#include "tst_model_settings.moc"
