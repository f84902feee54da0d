#pragma once

class QLocale;

namespace tillery {

// Installs the texts the window shows in the system locale's language, with
// the English plural forms beneath them, once the application object exists;
// later calls do nothing.
void installTranslations();

// Shows the texts in `locale`'s language from now on, where a translation
// for it exists; the English plural forms stay beneath.
void useTranslation(const QLocale &locale);

} // namespace tillery
