#pragma once

#include "model/Desktop.h"
#include "model/Prompts.h"

class QWidget;

namespace tillery {

// The model's questions as the platform's dialogs, over the main window.
class DialogPrompts final : public Prompts {
public:
    explicit DialogPrompts(QWidget *window = nullptr);
    void setWindow(QWidget *window) { m_window = window; }

    std::optional<int> alert(const AlertRequest &request) override;
    std::optional<int> choose(const ChoiceRequest &request) override;
    std::optional<QString> enterText(const TextRequest &request) override;
    std::optional<QString> chooseFolder(const FolderRequest &request) override;

private:
    QWidget *m_window;
};

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
