// The texts the model and the backends make come from the translation of the
// chosen language, as the window's do. The translation files themselves keep
// every placeholder, mnemonic and ellipsis of the English texts.
#include "WindowHarness.h"

#include "model/BranchNames.h"
#include "ui/ChangesView.h"
#include "ui/CommitBox.h"
#include "ui/Translations.h"

#include <QCheckBox>
#include <QFile>
#include <QLocale>
#include <QPushButton>
#include <QRegularExpression>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;
using namespace tillery;

namespace {

// One message of a .ts file: its source and each translation form.
struct TsMessage {
    QString context;
    QString source;
    bool numerus = false;
    bool unfinished = false;
    QStringList forms;
};

QList<TsMessage> readTs(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s cannot be read", qPrintable(path));
    QList<TsMessage> messages;
    QString context;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == u"name") {
            context = xml.readElementText();
        } else if (xml.name() == u"message") {
            messages.append({context, {}, xml.attributes().value(u"numerus"_s) == u"yes", false, {}});
        } else if (xml.name() == u"source") {
            messages.last().source = xml.readElementText();
        } else if (xml.name() == u"translation") {
            messages.last().unfinished = xml.attributes().value(u"type"_s) == u"unfinished";
            if (!messages.last().numerus)
                messages.last().forms.append(xml.readElementText());
        } else if (xml.name() == u"numerusform") {
            messages.last().forms.append(xml.readElementText());
        }
    }
    if (xml.hasError())
        qFatal("%s: %s", qPrintable(path), qPrintable(xml.errorString()));
    return messages;
}

// The parts of a text that must come through a translation unchanged, in order of their names.
QStringList placeholders(const QString &text)
{
    static const QRegularExpression pattern(u"%(?:L?[0-9]{1,2}|L?n|TARGET_PATH%)"_s);
    QStringList found;
    for (const QRegularExpressionMatch &match : pattern.globalMatch(text))
        found.append(match.captured());
    found.sort();
    return found;
}

// "&" that marks a mnemonic; "&&" shows an ampersand.
qsizetype mnemonics(const QString &text)
{
    return QString(text).remove(u"&&"_s).count(u'&');
}

} // namespace

class TranslationsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // The window's own first install is the system locale's; it must not come after the chosen one.
    void initTestCase()
    {
        test::pinTestEnvironment();
        installTranslations();
    }
    void cleanup() { useTranslation(QLocale(QLocale::English)); }

    void madeBelowTheViews_data()
    {
        QTest::addColumn<QLocale::Language>("language");
        QTest::addColumn<QString>("branchTaken");
        QTest::addColumn<QString>("bookmarkTaken");
        QTest::addColumn<QString>("discardQuestion");
        QTest::addColumn<QString>("refreshTitle");
        QTest::addColumn<QString>("refusalTitle");
        QTest::addColumn<QString>("refusal");
        QTest::newRow("German") << QLocale::German << u"Ein Branch namens „main“ existiert bereits."_s
                                << u"Ein Lesezeichen namens „main“ existiert bereits."_s
                                << u"Änderungen an 2 ausgewählten Dateien verwerfen?"_s << u"%1 wird aktualisiert"_s
                                << u"Branch wird erstellt"_s << u"Ein Branch-Name darf nicht mit „-“ beginnen."_s;
        QTest::newRow("English") << QLocale::English << u"A branch named “main” already exists."_s
                                 << u"A bookmark named “main” already exists."_s
                                 << u"Discard changes to 2 selected files?"_s << u"Refreshing %1"_s
                                 << u"Creating branch"_s << u"A branch name cannot begin with “-”."_s;
    }

    void madeBelowTheViews()
    {
        QFETCH(QLocale::Language, language);
        QFETCH(QString, branchTaken);
        QFETCH(QString, bookmarkTaken);
        QFETCH(QString, discardQuestion);
        QFETCH(QString, refreshTitle);
        QFETCH(QString, refusalTitle);
        QFETCH(QString, refusal);
        useTranslation(QLocale(language));

        Bookmark main;
        main.name = u"main"_s;
        const QList<Bookmark> existing{main};
        QCOMPARE(branchNameProblem(u"main"_s, RepositoryKind::git, existing).value_or(QString()), branchTaken);
        QCOMPARE(branchNameProblem(u"main"_s, RepositoryKind::mercurial, existing).value_or(QString()), bookmarkTaken);

        auto repository = test::makeFixture(RepositoryKind::git);
        repository->write(u"a.txt"_s, "a\n"_ba);
        repository->commitAll(u"base"_s);
        repository->write(u"a.txt"_s, "changed\n"_ba);
        repository->write(u"new.txt"_s, "new\n"_ba);
        test::ModelHarness harness;
        AppModel &model = harness.start();
        model.adoptRepository(Repository{repository->path(), RepositoryKind::git});
        QCOMPARE(model.activityState().activity(), refreshTitle.arg(QFileInfo(repository->path()).fileName()));
        QVERIFY(harness.settle());

        model.selectChangeFiles({test::workingFile(model, u"a.txt"_s), test::workingFile(model, u"new.txt"_s)});
        model.discardSelected();
        QCOMPARE(harness.prompts.alerts.size(), 1);
        QCOMPARE(harness.prompts.alerts.first().message, discardQuestion);

        model.createBookmark(u"-x"_s);
        QVERIFY(harness.settle());
        const std::optional<PresentedError> &error = model.activityState().presentedError();
        QVERIFY(error);
        QCOMPARE(error->title, refusalTitle);
        QCOMPARE(error->message, refusal);
    }

    // Every message of every translation: finished, with the English text's placeholders, its
    // mnemonic and its closing ellipsis. A numerus form other than the last may leave the count out.
    void translationFiles_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<bool>("numerus");
        QTest::addColumn<bool>("unfinished");
        QTest::addColumn<QStringList>("forms");
        for (const QString &language : {u"de"_s, u"en"_s}) {
            const QString path = QStringLiteral(TILLERY_TRANSLATIONS) + u"/tillery_"_s + language + u".ts"_s;
            const QList<TsMessage> messages = readTs(path);
            QVERIFY2(!messages.isEmpty(), qPrintable(path));
            for (const TsMessage &message : messages) {
                QTest::addRow("%s %s: %s", qPrintable(language), qPrintable(message.context),
                              qPrintable(message.source))
                    << message.source << message.numerus << message.unfinished << message.forms;
            }
        }
    }

    void translationFiles()
    {
        QFETCH(QString, source);
        QFETCH(bool, numerus);
        QFETCH(bool, unfinished);
        QFETCH(QStringList, forms);
        QVERIFY(!unfinished);
        QCOMPARE_GE(forms.size(), numerus ? 2 : 1);
        for (qsizetype index = 0; index < forms.size(); ++index) {
            const QString &form = forms[index];
            QVERIFY(!form.trimmed().isEmpty());
            QStringList expected = placeholders(source);
            QStringList found = placeholders(form);
            if (numerus && index + 1 < forms.size()) {
                found.removeAll(u"%n"_s);
                expected.removeAll(u"%n"_s);
            }
            QCOMPARE(found, expected);
            QCOMPARE(mnemonics(form), mnemonics(source));
            QCOMPARE(form.endsWith(u'…'), source.endsWith(u'…'));
        }
    }
};

QTEST_MAIN(TranslationsTest)
#include "tst_translations.moc"
