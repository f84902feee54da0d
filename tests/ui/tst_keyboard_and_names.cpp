#include "RepositoryFixtures.h"
#include "TestEnvironment.h"
#include "WindowHarness.h"

#include "ui/SettingsWindow.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QAccessible>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::WindowHarness;

Q_DECLARE_METATYPE(tillery::RepositoryKind)

namespace {

// The controls a person works with: every one of them has to take keyboard focus and carry a name
// that a screen reader can say.
bool isControl(const QWidget *widget)
{
    return qobject_cast<const QAbstractButton *>(widget) || qobject_cast<const QLineEdit *>(widget)
           || qobject_cast<const QComboBox *>(widget) || qobject_cast<const QAbstractItemView *>(widget)
           || qobject_cast<const QPlainTextEdit *>(widget)
           || widget->inherits("tillery::DiffCanvas") || widget->inherits("tillery::IconWell");
}

QString spokenName(QWidget *widget)
{
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(widget);
    return accessible ? accessible->text(QAccessible::Name).trimmed() : QString();
}

QString describe(const QWidget *widget)
{
    return u"%1 \"%2\" in %3"_s.arg(QString::fromLatin1(widget->metaObject()->className()), widget->objectName(),
                                    QString::fromLatin1(widget->parentWidget()
                                                            ? widget->parentWidget()->metaObject()->className()
                                                            : "nothing"));
}

// The visible controls of the window that either cannot be reached with Tab or have no name.
QStringList faultsIn(QWidget &top, const QString &where)
{
    QStringList faults;
    for (QWidget *widget : top.findChildren<QWidget *>()) {
        const bool decoration = widget->testAttribute(Qt::WA_TransparentForMouseEvents);
        if (!widget->isVisibleTo(&top) || !isControl(widget) || !widget->isEnabled() || decoration)
            continue;
        if (!(widget->focusPolicy() & Qt::TabFocus))
            faults.append(where + u": not reachable with Tab: "_s + describe(widget));
        if (spokenName(widget).isEmpty())
            faults.append(where + u": no accessible name: "_s + describe(widget));
    }
    return faults;
}

} // namespace

class KeyboardAndNamesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void everyControlIsReachableAndNamed_data() { test::addKindColumn(); }

    void everyControlIsReachableAndNamed()
    {
        QFETCH(RepositoryKind, kind);
        const std::unique_ptr<test::RepositoryFixture> repository = test::makeFixture(kind);
        repository->write(u"chart.txt"_s, "harbour\n");
        repository->commitAll(u"Chart the harbour"_s);
        repository->write(u"chart.txt"_s, "harbour\nbuoy\n");

        WindowHarness harness;
        MainWindow &window = harness.open();
        AppModel &model = harness.model();
        QStringList faults = faultsIn(window, u"Start page"_s);
        harness.addThroughMenu(repository->path());
        QVERIFY(harness.settle());

        model.selectChangeFiles({model.workspace().snapshot().files.first()});
        QVERIFY(harness.settle());
        faults += faultsIn(window, u"Changes"_s);

        model.setTab(WorkspaceTab::history);
        model.selectChangeset(model.workspace().snapshot().history.first());
        QVERIFY(harness.settle());
        model.selectChangesetFile(model.diffSelection().changesetFiles().first());
        QVERIFY(harness.settle());
        faults += faultsIn(window, u"History"_s);

        for (const Workspace::Sheet sheet :
             {Workspace::Sheet::clone, Workspace::Sheet::bookmark, Workspace::Sheet::remote, Workspace::Sheet::about}) {
            model.setSheetShown(sheet, true);
            QDialog *dialog = window.sheet(sheet);
            QVERIFY(dialog);
            QTRY_VERIFY(dialog->isVisible());
            faults += faultsIn(*dialog, u"Sheet %1"_s.arg(int(sheet)));
            model.setSheetShown(sheet, false);
            QTRY_VERIFY(!window.sheet(sheet));
        }

        window.openSettings();
        SettingsWindow &settings = *window.settingsWindow();
        for (int tab = 0; tab < settings.tabs()->count(); ++tab) {
            settings.tabs()->setCurrentIndex(tab);
            faults += faultsIn(settings, settings.tabs()->tabText(tab));
        }
        settings.close();

        QVERIFY2(faults.isEmpty(), qPrintable(faults.join(u'\n')));
    }
};

QTEST_MAIN(KeyboardAndNamesTest)
#include "tst_keyboard_and_names.moc"
