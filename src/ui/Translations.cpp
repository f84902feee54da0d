#include "ui/Translations.h"

#include <QCoreApplication>
#include <QTranslator>

namespace tillery {

void installTranslations()
{
    static bool installed = false;
    if (installed)
        return;
    installed = true;
    auto *translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(QStringLiteral(":/i18n/tillery_en.qm")))
        QCoreApplication::installTranslator(translator);
}

} // namespace tillery
