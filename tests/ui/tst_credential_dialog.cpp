// The dialog of a remote's question, and what it answers.
#include "WindowHarness.h"

#include "model/SecretStore.h"
#include "ui/CredentialDialog.h"
#include "ui/DesktopServices.h"

#include <QDialogButtonBox>

using namespace Qt::StringLiterals;
using namespace tillery;

Q_DECLARE_METATYPE(CredentialRequest::Kind)
Q_DECLARE_METATYPE(std::optional<CredentialAnswer>)

class CredentialDialogTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        test::pinTestEnvironment();
        // No session bus, so no secret store.
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        qunsetenv("DISPLAY");
    }

    // The title names the host; a secret is masked and may be remembered
    // unless no store runs; a host key is a yes-or-no question; only OK (or
    // Yes) gives an answer.
    void answers_data()
    {
        QTest::addColumn<CredentialRequest::Kind>("kind");
        QTest::addColumn<QString>("rememberUnavailable");
        QTest::addColumn<bool>("tickRemember");
        QTest::addColumn<QDialogButtonBox::StandardButton>("button");
        QTest::addColumn<QString>("title");
        QTest::addColumn<std::optional<CredentialAnswer>>("answer");
        const auto secret = CredentialRequest::Kind::secret;
        QTest::newRow("password remembered")
            << secret << QString() << true << QDialogButtonBox::Ok << u"Sign In to hg.example.org"_s
            << std::optional(CredentialAnswer{u"typed"_s, true});
        QTest::newRow("password, no secret store")
            << secret << u"No store."_s << true << QDialogButtonBox::Ok << u"Sign In to hg.example.org"_s
            << std::optional(CredentialAnswer{u"typed"_s, false});
        QTest::newRow("password cancelled") << secret << QString() << true << QDialogButtonBox::Cancel
                                            << u"Sign In to hg.example.org"_s << std::optional<CredentialAnswer>();
        QTest::newRow("user name") << CredentialRequest::Kind::userName << QString() << false << QDialogButtonBox::Ok
                                   << u"Sign In to hg.example.org"_s
                                   << std::optional(CredentialAnswer{u"typed"_s, false});
        QTest::newRow("host key trusted")
            << CredentialRequest::Kind::hostKey << QString() << false << QDialogButtonBox::Yes
            << u"Unknown Host hg.example.org"_s << std::optional(CredentialAnswer{});
        QTest::newRow("host key refused")
            << CredentialRequest::Kind::hostKey << QString() << false << QDialogButtonBox::No
            << u"Unknown Host hg.example.org"_s << std::optional<CredentialAnswer>();
    }
    void answers()
    {
        QFETCH(CredentialRequest::Kind, kind);
        QFETCH(QString, rememberUnavailable);
        QFETCH(bool, tickRemember);
        QFETCH(QDialogButtonBox::StandardButton, button);
        QFETCH(QString, title);
        QFETCH(std::optional<CredentialAnswer>, answer);
        const QString prompt = u"Password for 'https://alice@hg.example.org/<b>tides</b>':"_s;
        CredentialDialog dialog(nullptr, {kind, u"hg.example.org"_s, prompt, rememberUnavailable});
        dialog.show();
        QCOMPARE(dialog.windowTitle(), title);
        // The tool's words are shown as they are, never as markup.
        QCOMPARE(test::child<QLabel>(dialog, u"credentialPrompt"_s)->text(), prompt);
        auto *field = dialog.findChild<QLineEdit *>(u"credentialField"_s);
        auto *remember = dialog.findChild<QCheckBox *>(u"rememberCheckBox"_s);
        QCOMPARE(field != nullptr, kind != CredentialRequest::Kind::hostKey);
        QCOMPARE(remember != nullptr, kind == CredentialRequest::Kind::secret);
        if (field) {
            QCOMPARE(field->echoMode() == QLineEdit::Password, kind == CredentialRequest::Kind::secret);
            QTest::keyClicks(field, u"typed"_s);
        }
        if (remember) {
            QCOMPARE(remember->isEnabled(), rememberUnavailable.isEmpty());
            QCOMPARE(remember->toolTip(), rememberUnavailable);
            if (tickRemember && remember->isEnabled())
                remember->click();
        }
        dialog.findChild<QDialogButtonBox *>()->button(button)->click();
        const std::optional<CredentialAnswer> given = dialog.answer();
        QCOMPARE(given.has_value(), answer.has_value());
        if (given) {
            QCOMPARE(given->text, answer->text);
            QCOMPARE(given->remember, answer->remember);
        }
    }

    // A withdrawn question closes its dialog, unanswered, typed text and all.
    void withdrawnQuestionCloses()
    {
        DialogPrompts prompts;
        QTimer::singleShot(0, [&] {
            QTRY_VERIFY(QApplication::activeModalWidget());
            QTest::keyClicks(QApplication::activeModalWidget()->findChild<QLineEdit *>(), u"typed"_s);
            prompts.withdrawCredentialQuestion();
        });
        // Should it stay, it is answered.
        QTimer::singleShot(5000, [] {
            if (QWidget *dialog = QApplication::activeModalWidget())
                dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->click();
        });
        QVERIFY(!prompts.askCredential({CredentialRequest::Kind::secret, u"h"_s, u"Password:"_s, QString()}));
        prompts.withdrawCredentialQuestion();
    }

    // Without a secret service on the session bus nothing can be kept, and
    // the reason says so.
    void noSecretStore()
    {
        DesktopSecretStore store;
        QVERIFY(store.unavailableReason().has_value());
        QVERIFY(!store.read(u"Password for 'https://alice@hg.example.org':"_s));
    }
};

QTEST_MAIN(CredentialDialogTest)
#include "tst_credential_dialog.moc"
