#include "ui/Translations.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

namespace tillery {

namespace {

QTranslator *localTranslator = nullptr;

void installEnglish()
{
    static bool installed = false;
    if (installed)
        return;
    installed = true;
    auto *translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(QStringLiteral(":/i18n/tillery_en.qm")))
        QCoreApplication::installTranslator(translator);
}

} // namespace

void installTranslations()
{
    static bool installed = false;
    if (installed)
        return;
    installed = true;
    useTranslation(QLocale());
}

void useTranslation(const QLocale &locale)
{
    installEnglish();
    if (localTranslator) {
        QCoreApplication::removeTranslator(localTranslator);
        delete localTranslator;
        localTranslator = nullptr;
    }
    auto *translator = new QTranslator(QCoreApplication::instance());
    if (!translator->load(locale, QStringLiteral("tillery"), QStringLiteral("_"), QStringLiteral(":/i18n"))) {
        delete translator;
        return;
    }
    // Installed last, so it is asked first.
    QCoreApplication::installTranslator(translator);
    localTranslator = translator;
}

} // namespace tillery
