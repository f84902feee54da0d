// The window in German and in English: menus, the commit button's plural and
// the page texts come from the translation of the chosen language.
#include "WindowHarness.h"

#include "ui/ChangesView.h"
#include "ui/CommitBox.h"
#include "ui/Translations.h"

#include <QCheckBox>
#include <QLocale>
#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace tillery;

class TranslationsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // The window's own first install is the system locale's; it must not come after the chosen one.
    void initTestCase() { installTranslations(); }
    void cleanup() { useTranslation(QLocale(QLocale::English)); }

    void window_data()
    {
        QTest::addColumn<QLocale::Language>("language");
        QTest::addColumn<int>("files");
        QTest::addColumn<QString>("menu");
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("commit");
        QTest::addColumn<QString>("selectAll");
        QTest::newRow("German, one file") << QLocale::German << 1 << u"Ablage"_s << u"Alle Änderungen verwerfen…"_s
                                          << u"1 Datei committen"_s << u"Alle geänderten Dateien auswählen"_s;
        QTest::newRow("German, two files") << QLocale::German << 2 << u"Darstellung"_s << u"Befehlsprotokoll"_s
                                           << u"2 Dateien committen"_s << u"Alle geänderten Dateien auswählen"_s;
        QTest::newRow("English, one file") << QLocale::English << 1 << u"File"_s << u"Discard All Changes…"_s
                                           << u"Commit 1 File"_s << u"Select all changed files"_s;
        QTest::newRow("English, two files") << QLocale::English << 2 << u"View"_s << u"Command Log"_s
                                            << u"Commit 2 Files"_s << u"Select all changed files"_s;
    }

    void window()
    {
        QFETCH(QLocale::Language, language);
        QFETCH(int, files);
        QFETCH(QString, menu);
        QFETCH(QString, action);
        QFETCH(QString, commit);
        QFETCH(QString, selectAll);
        auto repository = test::makeFixture(RepositoryKind::git);
        repository->write(u"base.txt"_s, "base\n"_ba);
        repository->commitAll(u"base"_s);
        for (int file = 0; file < files; ++file)
            repository->write(u"new%1.txt"_s.arg(file), "new\n"_ba);

        useTranslation(QLocale(language));
        test::WindowHarness harness;
        MainWindow &window = harness.open();
        QVERIFY(harness.adopt(*repository));

        QStringList menus;
        for (QAction *title : window.menuBar()->actions())
            menus.append(title->text());
        QVERIFY2(menus.contains(menu), qPrintable(menus.join(u", "_s)));
        QVERIFY(test::menuAction(window, action));
        auto *all = test::child<QCheckBox>(harness.changes(), u"selectAllFiles"_s);
        QCOMPARE(all->accessibleName(), selectAll);
        all->click();
        QVERIFY(harness.settle());
        QCOMPARE(test::child<CommitBox>(harness.changes())->commitButton()->text(), commit);
    }
};

QTEST_MAIN(TranslationsTest)
#include "tst_translations.moc"
