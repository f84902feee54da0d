#pragma once

namespace tillery {

// Installs the texts the window shows where they differ from the source
// texts (English plural forms), once the application object exists; later
// calls do nothing.
void installTranslations();

} // namespace tillery
