#pragma once

#include "model/Desktop.h"

namespace tillery {

// The platform's desktop: default applications, the file manager, the
// Trash and the clipboard.
class PlatformDesktop final : public Desktop {
public:
    void open(const QString &path) override;
    void reveal(const QString &path) override;
    std::optional<QString> moveToTrash(const QString &path) override;
    void copyToClipboard(const QString &text) override;
};

} // namespace tillery
